#include "UsageModel/Json.h"

namespace UsageModel::Json {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr double twoTo63 = 9223372036854775808.0;

} // namespace

nlohmann::json parse(std::string_view text) {
    // The library would skip the mark; a file of ours never has one, so such a file is somebody else's.
    if (text.starts_with(byteOrderMark)) throw Error("byte order mark");
    // The library takes a NUL for the end of the text and would pass over whatever follows it; JSON has no raw NUL.
    if (text.find('\0') != std::string_view::npos) throw Error("NUL");
    try {
        return nlohmann::json::parse(text);
    } catch (const nlohmann::json::exception& error) {
        throw Error(error.what());
    }
}

std::string toText(const nlohmann::json& json) {
    return json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::int64_t toInteger(const nlohmann::json& json) {
    if (json.is_number_unsigned()) {
        const auto value = json.get<std::uint64_t>();
        detail::require(value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()), "too large");
        return static_cast<std::int64_t>(value);
    }
    if (json.is_number_integer()) return json.get<std::int64_t>();

    detail::require(json.is_number_float(), "not a number");
    const double value = json.get<double>();
    // Exactly -2^63 is out too: the integers just below it round to it.
    detail::require(value > -twoTo63 && value < twoTo63 && std::trunc(value) == value, "not an integer");
    return static_cast<std::int64_t>(value);
}

} // namespace UsageModel::Json
