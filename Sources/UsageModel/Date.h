#pragma once

#include <compare>

namespace UsageModel {

/// An instant: seconds since 1970-01-01 00:00:00 UTC, fractions allowed, before 1970 negative.
/// `Date - Date` is a span in seconds, `Date + seconds` a Date. Not-a-number compares unordered, as doubles do.
struct Date {
    double secondsSince1970 = 0.0;

    friend constexpr auto operator<=>(const Date&, const Date&) = default;
    friend constexpr double operator-(Date later, Date earlier) {
        return later.secondsSince1970 - earlier.secondsSince1970;
    }
    friend constexpr Date operator+(Date date, double seconds) { return Date{date.secondsSince1970 + seconds}; }
    friend constexpr Date operator-(Date date, double seconds) { return Date{date.secondsSince1970 - seconds}; }
};

} // namespace UsageModel
