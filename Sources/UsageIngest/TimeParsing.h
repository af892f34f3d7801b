#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "UsageModel/Date.h"

/// A reader of the logs' timestamps by fixed columns: it runs once for every turn of every log.
namespace UsageIngest::TimeParsing {

/// The instant of a text that begins with `YYYY-MM-DDTHH:MM:SS` (or a space for the T), with up to three digits of a
/// fraction behind a dot; further digits are dropped. Always taken as UTC: a zone or offset behind that is ignored.
/// No range is tested, so month 13 and hour 25 count on. Absent when the text has another form.
[[nodiscard]] std::optional<UsageModel::Date> iso8601UTC(std::string_view text);

struct CivilDay {
    std::int64_t year = 1970;
    std::int64_t month = 1;
    std::int64_t day = 1;
};

/// Days from 1970-01-01 in the proleptic Gregorian calendar, by counting eras of 400 years
/// (Howard Hinnant, "chrono-compatible low-level date algorithms", days_from_civil).
[[nodiscard]] std::int64_t civilToEpochDays(const CivilDay& civil);

} // namespace UsageIngest::TimeParsing
