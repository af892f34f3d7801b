#include "UsageModel/Calendar.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>

namespace UsageModel {

namespace {

constexpr double secondsPerHour = 3600.0;
constexpr double furthest = 3.1e12; // about the year 100,000: civil years stay far from any overflow

double held(Date date) {
    if (std::isnan(date.secondsSince1970)) return 0.0;
    return std::clamp(date.secondsSince1970, -furthest, furthest);
}

absl::Time wholeSecond(Date date) {
    return absl::FromUnixSeconds(static_cast<std::int64_t>(std::floor(held(date))));
}

double fractionOfSecond(Date date) {
    return held(date) - std::floor(held(date));
}

Date toDate(absl::Time time) {
    return Date{static_cast<double>(absl::ToUnixSeconds(time))};
}

// The loader would also open absolute paths and climb out of the zone folder; a log line must not choose a file.
bool isPlainZoneName(std::string_view name) {
    const auto allowed = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '+' ||
               c == '-' || c == '/';
    };
    return !name.empty() && name.front() != '/' && !name.starts_with("Fixed/") && name != "localtime" &&
           std::ranges::all_of(name, allowed);
}

} // namespace

std::optional<Calendar> Calendar::inZone(std::string_view name) {
    absl::TimeZone zone;
    if (!isPlainZoneName(name)) return std::nullopt;
    if (!absl::LoadTimeZone(std::string(name), &zone)) return std::nullopt;
    return Calendar(zone);
}

Calendar Calendar::utc() {
    return Calendar(absl::UTCTimeZone());
}

Calendar Calendar::local() {
    const Calendar local(absl::LocalTimeZone());
    // The library knows the system's own zone by the link that leads to its rules; people know it by its name.
    constexpr std::string_view zoneFolder = "/zoneinfo/";
    std::error_code error;
    const std::string rules = std::filesystem::canonical(local.zoneName(), error).native();
    const std::size_t place = rules.rfind(zoneFolder);
    if (error || !local.zoneName().starts_with('/') || place == std::string::npos) return local;
    return inZone(rules.substr(place + zoneFolder.size())).value_or(local);
}

Date Calendar::startOfDay(Date date) const {
    const absl::TimeZone::TimeInfo midnight = zone_.At(absl::CivilSecond(absl::CivilDay(civil(date))));
    const bool skipped = midnight.kind == absl::TimeZone::TimeInfo::SKIPPED;
    return toDate(skipped ? midnight.trans : midnight.pre);
}

Date Calendar::addDays(Date date, int days) const {
    const absl::CivilSecond clock = civil(date);
    const absl::CivilDay day = absl::CivilDay(clock) + days;
    const absl::CivilSecond moved(day.year(), day.month(), day.day(), clock.hour(), clock.minute(), clock.second());
    return instant(moved) + fractionOfSecond(date);
}

Date Calendar::addHours(Date date, int hours) const {
    return date + hours * secondsPerHour;
}

int Calendar::hour(Date date) const {
    return civil(date).hour();
}

int Calendar::weekday(Date date) const {
    // The library counts from Monday (0), this calendar from Sunday (1).
    return (static_cast<int>(absl::GetWeekday(civil(date))) + 1) % 7 + 1;
}

Date Calendar::settingMinuteToZero(Date date) const {
    const absl::CivilSecond clock = civil(date);
    if (clock.minute() == 0) return date;
    // In whole seconds, so that nothing rounds; once more where a clock change of half an hour shifted the hours.
    const double intoHour = clock.minute() * 60 + clock.second();
    const Date next = toDate(wholeSecond(date)) + (secondsPerHour - intoHour);
    // Where dates are held the clock stands still, and no full hour comes.
    return wholeSecond(next) == wholeSecond(date) ? date : settingMinuteToZero(next);
}

bool Calendar::isSameSecond(Date a, Date b) {
    return std::floor(a.secondsSince1970) == std::floor(b.secondsSince1970);
}

absl::CivilSecond Calendar::civil(Date date) const {
    return absl::ToCivilSecond(wholeSecond(date), zone_);
}

Date Calendar::instant(absl::CivilSecond civil) const {
    return toDate(zone_.At(civil).pre);
}

} // namespace UsageModel
