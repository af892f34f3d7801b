#pragma once

#include <optional>
#include <string_view>

#include <absl/time/civil_time.h>
#include <absl/time/time.h>

#include "UsageModel/Date.h"

namespace UsageModel {

/// The Gregorian calendar in one time zone. A value; cheap to copy; safe on any thread.
/// Instants beyond the year 100,000 either way are held there, and one that is not a number counts as 1970-01-01.
class Calendar {
public:
    /// The calendar of an IANA zone such as "Europe/Berlin", read from the system's zone files. Absent for any other
    /// name, also for paths and for fixed offsets that the time library would take.
    [[nodiscard]] static std::optional<Calendar> inZone(std::string_view name);
    [[nodiscard]] static Calendar utc();
    /// The zone that the environment or the system names; UTC where it names none that is known.
    [[nodiscard]] static Calendar local();

    [[nodiscard]] std::string zoneName() const { return zone_.name(); }

    /// The first instant of the date's day, which is not midnight where a clock change skips it.
    [[nodiscard]] Date startOfDay(Date date) const;
    /// The same clock time `days` later (or earlier). A clock time that is skipped there moves forward by the gap, one
    /// that is repeated takes the first. Keeps the fraction of the second.
    [[nodiscard]] Date addDays(Date date, int days) const;
    /// `hours` times 3600 seconds later.
    [[nodiscard]] Date addHours(Date date, int hours) const;
    /// Local hour, 0 to 23.
    [[nodiscard]] int hour(Date date) const;
    /// Local day of the week, 1 (Sunday) to 7.
    [[nodiscard]] int weekday(Date date) const;
    /// The date as it is where its local minute is 0, seconds included; else the next full local hour.
    [[nodiscard]] Date settingMinuteToZero(Date date) const;
    /// Whether both lie in the same second.
    [[nodiscard]] static bool isSameSecond(Date a, Date b);

    /// The local clock and calendar at an instant, without the fraction of the second.
    [[nodiscard]] absl::CivilSecond civil(Date date) const;
    /// The instant of a local clock time; skipped and repeated times as in `addDays`.
    [[nodiscard]] Date instant(absl::CivilSecond civil) const;

private:
    explicit Calendar(absl::TimeZone zone) : zone_(zone) {}

    absl::TimeZone zone_;
};

} // namespace UsageModel
