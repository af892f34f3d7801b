#include "UsageGauge/SettingsDocument.h"

#include "UsageModel/Json.h"
#include "UsageModel/JsonNumbers.h"

namespace UsageGauge {

namespace {

using nlohmann::json;
using UsageModel::Json::Error;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr char lastMark = '\x07'; // those behind it have a second spelling
constexpr int indent = 2;

// A control character has this one spelling in JSON.
std::string spelling(char mark) {
    std::string text = "\\u000";
    return text += static_cast<char>('0' + mark);
}

char unusedMark(std::string_view text) {
    for (char mark = '\x01'; mark <= lastMark; ++mark) {
        if (text.find(spelling(mark)) == std::string_view::npos) return mark;
    }
    throw Error("the text holds too many kinds of control characters");
}

json parsed(const std::string& text) {
    // The library takes a NUL for the end of the text.
    if (text.find('\0') != std::string::npos) throw Error("NUL");
    const auto limitDepth = [](int depth, json::parse_event_t, const json&) {
        if (depth > SettingsDocument::greatestDepth) throw Error("nested too deeply");
        return true;
    };
    try {
        return json::parse(text, limitDepth);
    } catch (const json::exception& error) {
        throw Error(error.what());
    }
}

} // namespace

SettingsDocument SettingsDocument::parse(std::string_view text) {
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    SettingsDocument document;
    if (text.empty()) return document;
    document.mark_ = unusedMark(text);
    json read = document.masked(text);
    if (read.is_object()) document.members_ = std::move(read);
    return document;
}

std::optional<std::string> SettingsDocument::member(const std::string& name) const {
    const auto found = members_.find(name);
    if (found == members_.end()) return std::nullopt;
    return unmasked(found->dump());
}

void SettingsDocument::setMember(const std::string& name, std::string_view json) {
    if (json.find(spelling(mark_)) != std::string_view::npos) throw Error("an unexpected control character");
    members_[name] = masked(json);
}

std::string SettingsDocument::text() const try {
    return unmasked(members_.dump(indent)) + "\n";
} catch (const json::exception& error) {
    throw Error(error.what());
}

json SettingsDocument::masked(std::string_view text) const {
    std::string withStrings;
    const char* copied = text.data();
    UsageModel::forEachNumber(text, [&](std::string_view number) {
        withStrings.append(copied, number.data());
        withStrings.append("\"").append(spelling(mark_)).append(number).append("\"");
        copied = number.data() + number.size();
    });
    withStrings.append(copied, text.data() + text.size());
    return parsed(withStrings);
}

std::string SettingsDocument::unmasked(const std::string& text) const {
    const std::string opening = std::string(1, '"').append(spelling(mark_));
    std::string plain;
    std::size_t copied = 0;
    for (std::size_t at = text.find(opening); at != std::string::npos; at = text.find(opening, copied)) {
        plain.append(text, copied, at - copied);
        const std::size_t digits = at + opening.size();
        const std::size_t closing = text.find('"', digits);
        plain.append(text, digits, closing - digits);
        copied = closing + 1;
    }
    return plain.append(text, copied);
}

} // namespace UsageGauge
