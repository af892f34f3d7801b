// Any bytes as a timestamp: read or not exactly as a slow reader by regular expression and civil calendar says.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <regex>
#include <string>

#include <absl/time/civil_time.h>

#include "FuzzCheck.h"
#include "UsageIngest/TimeParsing.h"

namespace {

std::optional<double> slowReading(const std::string& text) {
    static const std::regex form(R"((\d{4})-(\d\d)-(\d\d)[T ](\d\d):(\d\d):(\d\d)(?:\.(\d{0,3}))?)");
    std::smatch match;
    const std::string head = text.substr(0, 23);
    if (!std::regex_search(head, match, form, std::regex_constants::match_continuous)) return std::nullopt;
    const auto field = [&](std::size_t i) { return std::stoll(match[i].str()); };
    const std::int64_t month = field(2);
    if (month < 1 || month > 12) return std::nullopt; // the era method counts on in its own way: not compared
    const auto days = absl::CivilDay(field(1), static_cast<int>(month), 1) - absl::CivilDay(1970, 1, 1) + field(3) - 1;
    std::string fraction = match[7].str();
    fraction.resize(3, '0');
    const auto seconds = days * 86400 + field(4) * 3600 + field(5) * 60 + field(6);
    return static_cast<double>(std::stoll(fraction)) / 1000.0 + static_cast<double>(seconds);
}

bool monthIsInRange(const std::string& text) {
    const std::string month = text.size() >= 7 ? text.substr(5, 2) : "";
    return month >= "01" && month <= "12";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto fast = UsageIngest::TimeParsing::iso8601UTC(text);
    if (!monthIsInRange(text)) return 0;
    const auto slow = slowReading(text);
    fuzzCheck(fast.has_value() == slow.has_value(), "both read it, or neither");
    if (fast) fuzzCheck(fast->secondsSince1970 == *slow, "both read the same instant");
    return 0;
}
