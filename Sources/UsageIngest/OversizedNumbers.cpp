#include "UsageIngest/OversizedNumbers.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

#include "UsageModel/JsonNumbers.h"

namespace UsageIngest {

namespace {

// A double that no count can be; every number it stands in for has at least as many characters.
constexpr std::string_view standIn = "1e99";

bool isOversized(std::string_view number) {
    const char* first = number.data();
    const char* last = first + number.size();
    if (number.find_first_of(".eE") != std::string_view::npos) {
        double value = 0.0;
        return std::from_chars(first, last, value).ec == std::errc::result_out_of_range;
    }
    std::int64_t value = 0;
    return std::from_chars(first, last, value).ec == std::errc::result_out_of_range;
}

} // namespace

bool maskOversizedNumbers(std::span<char> json) {
    bool any = false;
    UsageModel::forEachNumber({json.data(), json.size()}, [&](std::string_view number) {
        if (!isOversized(number)) return;
        const auto place = json.begin() + (number.data() - json.data());
        const auto end = place + static_cast<std::ptrdiff_t>(number.size());
        std::fill(std::copy(standIn.begin(), standIn.end(), place), end, ' ');
        any = true;
    });
    return any;
}

} // namespace UsageIngest
