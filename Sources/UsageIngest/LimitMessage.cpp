#include "UsageIngest/LimitMessage.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include "UsageModel/Calendar.h"

namespace UsageIngest {

namespace {

using UsageModel::Date;
using UsageModel::WindowKind;

constexpr std::string_view pattern = "(session|weekly|opus)[^\u00B7]*limit[^\u00B7]*\u00B7[^0-9]*resets\\s+"
                                     "(\\d{1,2}):?(\\d{2})?\\s*([ap]m)?\\s*\\(([^)]+)\\)";
// A true message takes some hundred steps, and a place where none begins takes one; a contrived text must not hold up
// the import of everything else.
constexpr std::int64_t mostSteps = 5'000'000;
enum Group { keyword = 1, hourDigits, minuteDigits, meridiem, zoneName };

struct CodeFree {
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
};
struct ContextFree {
    void operator()(pcre2_match_context* context) const { pcre2_match_context_free(context); }
};
struct MatchFree {
    void operator()(pcre2_match_data* match) const { pcre2_match_data_free(match); }
};
using Code = std::unique_ptr<pcre2_code, CodeFree>;
using Context = std::unique_ptr<pcre2_match_context, ContextFree>;
using Match = std::unique_ptr<pcre2_match_data, MatchFree>;

PCRE2_SPTR bytes(std::string_view text) {
    return reinterpret_cast<PCRE2_SPTR>(text.data());
}

Code compilePattern() {
    int error = 0;
    PCRE2_SIZE where = 0;
    constexpr std::uint32_t options = PCRE2_UTF | PCRE2_UCP | PCRE2_CASELESS | PCRE2_AUTO_CALLOUT;
    Code code(pcre2_compile(bytes(pattern), pattern.size(), options, &error, &where, nullptr));
    if (!code) throw std::logic_error("the pattern of limit messages does not compile");
    // Not compiled further to machine code: these messages are rare and short.
    return code;
}

/// Called before each step of a search, which the library's own limit bounds only from one place to begin to the next.
int countStep(pcre2_callout_block* /*step*/, void* stepsLeft) {
    return --*static_cast<std::int64_t*>(stepsLeft) < 0 ? PCRE2_ERROR_MATCHLIMIT : 0;
}

/// Whether the pattern stands in the text, and found where.
bool search(std::string_view text, pcre2_match_data* match) {
    static const Code code = compilePattern();
    const Context context(pcre2_match_context_create(nullptr));
    if (!context) throw std::bad_alloc();
    std::int64_t stepsLeft = mostSteps;
    pcre2_set_callout(context.get(), countStep, &stepsLeft);
    return pcre2_match(code.get(), bytes(text), text.size(), 0, 0, match, context.get()) >= 0;
}

std::optional<std::string_view> group(std::string_view text, pcre2_match_data* match, Group number) {
    if (pcre2_substring_length_bynumber(match, number, nullptr) < 0) return std::nullopt;
    const PCRE2_SIZE* bounds = pcre2_get_ovector_pointer(match);
    return text.substr(bounds[2 * number], bounds[2 * number + 1] - bounds[2 * number]);
}

std::string asciiLower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lower;
}

WindowKind windowOf(std::string_view word) {
    const std::string lower = asciiLower(word);
    if (lower == "opus") return WindowKind::weeklyOpus;
    return lower == "weekly" ? WindowKind::weeklyAll : WindowKind::session5h;
}

// The pattern's digits are those of any script; a clock time is read of ASCII ones only.
std::optional<int> decimal(std::string_view digits) {
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return value;
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

int hourOfDay(int hour, std::optional<std::string_view> half) {
    if (!half) return hour;
    const bool afternoon = asciiLower(*half) == "pm";
    if (afternoon && hour < 12) return hour + 12;
    return !afternoon && hour == 12 ? 0 : hour;
}

struct ClockTime {
    int hour = 0;
    int minute = 0;
};

std::optional<ClockTime> clockTime(std::string_view text, pcre2_match_data* match) {
    const std::optional<int> hour = decimal(group(text, match, hourDigits).value_or(""));
    const std::optional<int> minute = decimal(group(text, match, minuteDigits).value_or("0"));
    if (!hour || !minute) return std::nullopt;
    return ClockTime{.hour = hourOfDay(*hour, group(text, match, meridiem)), .minute = *minute};
}

// An hour or minute out of range counts on into the next hours or days.
Date nextOccurrence(ClockTime time, const UsageModel::Calendar& calendar, Date after) {
    const absl::CivilDay today(calendar.civil(after));
    const Date reset =
        calendar.instant(absl::CivilSecond(today.year(), today.month(), today.day(), time.hour, time.minute, 0));
    return reset > after ? reset : calendar.addDays(reset, 1);
}

std::optional<Date> resetTime(std::string_view text, pcre2_match_data* match, Date ts) {
    const std::optional<ClockTime> time = clockTime(text, match);
    if (!time) return std::nullopt;
    const auto calendar = UsageModel::Calendar::inZone(trimmed(group(text, match, zoneName).value_or("")));
    if (!calendar) return std::nullopt;
    return nextOccurrence(*time, *calendar, ts);
}

} // namespace

std::optional<LimitMessage> readLimitMessage(std::string_view text, Date ts) {
    constexpr std::uint32_t groups = zoneName + 1; // and the whole
    const Match match(pcre2_match_data_create(groups, nullptr));
    if (!match) throw std::bad_alloc();
    if (!search(text, match.get())) return std::nullopt;

    return LimitMessage{
        .window = windowOf(group(text, match.get(), keyword).value_or("")),
        .resetsAt = resetTime(text, match.get(), ts),
    };
}

} // namespace UsageIngest
