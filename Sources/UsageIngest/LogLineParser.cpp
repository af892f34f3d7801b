#include "UsageIngest/LogLineParser.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include <simdjson.h>

#include "UsageIngest/LimitMessage.h"
#include "UsageIngest/OversizedNumbers.h"
#include "UsageIngest/TimeParsing.h"

namespace UsageIngest {

namespace {

using UsageModel::Anchor;
using UsageModel::UsageEvent;
namespace dom = simdjson::dom;

constexpr std::size_t shortestLine = 3;
constexpr std::string_view assistant = "assistant";
constexpr std::string_view quotedAssistant = "\"assistant\"";
constexpr std::size_t blockSize = 64; // bytes looked at in one go
constexpr std::string_view syntheticModel = "<synthetic>";

/// A member that is present with the wrong type: the whole line is ignored.
class WrongType {};

/// `"assistant"` as a whole string, or an escape that stands for one of its letters (each is U+006x or U+007x).
bool opensAssistant(std::string_view text) {
    return text.starts_with(quotedAssistant) || text.starts_with("\\u006") || text.starts_with("\\u007");
}

/// Whether one of `blockSize` places in a row may open `"assistant"`, judged by a few bytes of each: a loop without
/// branches, which compilers turn into vector code.
bool mayOpenAssistant(const char* place) {
    unsigned char hits = 0;
    for (std::size_t i = 0; i < blockSize; ++i) {
        const bool quoted = (place[i] == '"') & (place[i + 2] == 's') & (place[i + 10] == '"');
        const bool escaped = (place[i] == '\\') & (place[i + 1] == 'u') & ((place[i + 4] & ~1) == '6');
        hits |= static_cast<unsigned char>(quoted | escaped);
    }
    return hits != 0;
}

bool opensAssistantWithin(std::string_view text, std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) {
        if (opensAssistant(text.substr(i))) return true;
    }
    return false;
}

// Whether the line can be an assistant's at all, without reading it as JSON: most bytes of a log belong to other lines.
bool mayBeAssistant(std::string_view line) {
    std::size_t place = 0;
    for (; place + blockSize + quotedAssistant.size() <= line.size(); place += blockSize) {
        if (mayOpenAssistant(line.data() + place) && opensAssistantWithin(line, place, place + blockSize)) return true;
    }
    return opensAssistantWithin(line, place, line.size());
}

template <typename T>
std::optional<T> optionalMember(const dom::object& object, std::string_view key) {
    const auto member = object.at_key(key);
    if (member.error() != simdjson::SUCCESS || member.is_null()) return std::nullopt;
    T value;
    if (member.get(value) != simdjson::SUCCESS) throw WrongType();
    return value;
}

constexpr double twoTo63 = 9223372036854775808.0;

std::int64_t toCount(const dom::element& element) {
    std::int64_t count = 0;
    if (element.get(count) == simdjson::SUCCESS) return count;
    double number = 0.0;
    if (!element.is_double() || element.get(number) != simdjson::SUCCESS) throw WrongType();
    // "1000.0" is the integer 1000.
    if (!(number >= -twoTo63 && number < twoTo63) || number != std::trunc(number)) throw WrongType();
    return static_cast<std::int64_t>(number);
}

std::int64_t countOrZero(const dom::object& usage, std::string_view key) {
    const auto count = optionalMember<dom::element>(usage, key);
    return count ? toCount(*count) : 0;
}

struct RawUsage {
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheCreation = 0;
    std::int64_t cacheRead = 0;
};

RawUsage readUsage(const dom::object& usage) {
    return {
        .input = countOrZero(usage, "input_tokens"),
        .output = countOrZero(usage, "output_tokens"),
        .cacheCreation = countOrZero(usage, "cache_creation_input_tokens"),
        .cacheRead = countOrZero(usage, "cache_read_input_tokens"),
    };
}

struct RawMessage {
    std::optional<std::string_view> model;
    std::optional<RawUsage> usage;
    std::optional<dom::element> content;
};

RawMessage readMessage(const dom::object& message) {
    const auto usage = optionalMember<dom::object>(message, "usage");
    return {
        .model = optionalMember<std::string_view>(message, "model"),
        .usage = usage ? std::optional(readUsage(*usage)) : std::nullopt,
        .content = optionalMember<dom::element>(message, "content"),
    };
}

struct RawLine {
    std::optional<std::string_view> timestamp;
    std::optional<std::string_view> sessionId;
    std::optional<std::string_view> effort;
    std::optional<RawMessage> message;
};

RawLine readLine(const dom::object& line) {
    const auto message = optionalMember<dom::object>(line, "message");
    return {
        .timestamp = optionalMember<std::string_view>(line, "timestamp"),
        .sessionId = optionalMember<std::string_view>(line, "sessionId"),
        .effort = optionalMember<std::string_view>(line, "effort"),
        .message = message ? std::optional(readMessage(*message)) : std::nullopt,
    };
}

// The texts of the blocks, joined by blanks. Absent where `element` is no array of blocks.
std::optional<std::string> textOfBlocks(const dom::element& element) try {
    dom::array blocks;
    if (element.get(blocks) != simdjson::SUCCESS) return std::nullopt;
    std::string joined;
    bool first = true;
    for (const dom::element block : blocks) {
        dom::object members;
        if (block.get(members) != simdjson::SUCCESS) return std::nullopt;
        const auto text = optionalMember<std::string_view>(members, "text");
        if (!text) continue;
        if (!first) joined += ' ';
        joined += *text;
        first = false;
    }
    return joined;
} catch (const WrongType&) {
    return std::nullopt;
}

// The text of a message: a string as it stands, unless it is itself the JSON of blocks; else its blocks' texts.
std::optional<std::string> contentText(const dom::element& content) {
    std::string_view string;
    if (content.get(string) != simdjson::SUCCESS) return textOfBlocks(content);
    dom::parser parser; // the shared one still holds the line that the string lies in
    dom::element inner;
    if (parser.parse(string.data(), string.size()).get(inner) != simdjson::SUCCESS) return std::string(string);
    const auto blocks = textOfBlocks(inner);
    return blocks ? blocks : std::string(string);
}

ParsedLine toEvent(const RawLine& line) {
    const RawMessage& message = *line.message;
    if (!message.usage || !line.timestamp) return Ignored{};
    const auto ts = TimeParsing::iso8601UTC(*line.timestamp);
    if (!ts) return Ignored{};

    const std::string_view model = message.model.value_or("");
    const RawUsage& usage = *message.usage;
    UsageEvent event{
        .ts = *ts,
        .sessionId = line.sessionId.value_or(""),
        .model = model,
        .modelClass = UsageModel::modelClass(model),
        .input = usage.input,
        .output = usage.output,
        .cacheCreation = usage.cacheCreation,
        .cacheRead = usage.cacheRead,
        .effort = line.effort ? UsageModel::fromText<UsageModel::EffortLevel>(*line.effort) : std::nullopt,
    };
    if (UsageModel::rawTokens(event) < 1) return Ignored{};
    return event;
}

} // namespace

/// simdjson with buffers that serve line after line.
class LogLineParser::Decoder {
public:
    ParsedLine parse(std::string_view line) {
        const auto object = decode(line);
        if (!object) return Ignored{};
        try {
            if (optionalMember<std::string_view>(*object, "type") != assistant) return Ignored{};
            const RawLine raw = readLine(*object);
            if (!raw.message) return Ignored{};
            return raw.message->model == syntheticModel ? toAnchor(raw) : toEvent(raw);
        } catch (const WrongType&) {
            return Ignored{};
        }
    }

    /// Gives back what a line of unusual length needed: the program runs for weeks.
    void trim() {
        if (bytes_.size() <= largestKept) return;
        bytes_ = {};
        parser_ = dom::parser();
    }

private:
    static constexpr std::size_t largestKept = std::size_t{2} << 20;

    /// The line's object; absent where the line is not one whole JSON object. Valid until the next call.
    std::optional<dom::object> decode(std::string_view line) {
        dom::element element;
        simdjson::error_code error = parseCopy(line, element);
        if (error == simdjson::NUMBER_ERROR && maskOversizedNumbers({bytes_.data(), line.size()})) {
            error = parser_.parse(bytes_.data(), line.size(), false).get(element);
        }
        dom::object object;
        if (error != simdjson::SUCCESS || element.get(object) != simdjson::SUCCESS) return std::nullopt;
        return object;
    }

    simdjson::error_code parseCopy(std::string_view line, dom::element& element) {
        // simdjson reads a little beyond the end of what it parses.
        const std::size_t needed = line.size() + simdjson::SIMDJSON_PADDING;
        if (bytes_.size() < needed) bytes_.resize(std::max(needed, 2 * bytes_.size()));
        std::memcpy(bytes_.data(), line.data(), line.size());
        return parser_.parse(bytes_.data(), line.size(), false).get(element);
    }

    static ParsedLine toAnchor(const RawLine& line) {
        const std::optional<std::string> text =
            line.message->content ? contentText(*line.message->content) : std::nullopt;
        const auto anchor = LogLineParser::anchor(text, line.timestamp);
        return anchor ? ParsedLine(*anchor) : Ignored{};
    }

    std::vector<char> bytes_;
    dom::parser parser_;
};

LogLineParser::LogLineParser() : decoder_(std::make_unique<Decoder>()) {}
LogLineParser::LogLineParser(LogLineParser&&) noexcept = default;
LogLineParser& LogLineParser::operator=(LogLineParser&&) noexcept = default;
LogLineParser::~LogLineParser() = default;

ParsedLine LogLineParser::parse(std::string_view line) {
    if (line.size() < shortestLine || !mayBeAssistant(line)) return Ignored{};
    ParsedLine parsed = decoder_->parse(line);
    decoder_->trim();
    return parsed;
}

std::optional<Anchor> LogLineParser::anchor(std::optional<std::string_view> text,
                                            std::optional<std::string_view> timestamp) {
    if (!text || !timestamp) return std::nullopt;
    const auto ts = TimeParsing::iso8601UTC(*timestamp);
    if (!ts) return std::nullopt;
    const auto message = readLimitMessage(*text, *ts);
    if (!message) return std::nullopt;
    return Anchor{
        .ts = *ts,
        .source = UsageModel::AnchorSource::syntheticLog,
        .window = message->window,
        .kind = UsageModel::AnchorKind::ceiling,
        .usedFraction = 1.0,
        .resetsAt = message->resetsAt,
    };
}

} // namespace UsageIngest
