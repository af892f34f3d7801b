#pragma once

#include <optional>
#include <string>

#include "UsageModel/Calendar.h"
#include "UsageModel/Date.h"

/// Spans and instants in words, the same everywhere: in the verdict, in notifications and on charts.
namespace UsageEngine::TimeText {

/// A span in at most two units, coarser as it grows: "45m", "2h 5m", "6h", "1d 4h". Whole seconds, halves away from
/// zero; below a minute, and for a negative span, "1m".
[[nodiscard]] std::string duration(double seconds);

/// The span from `now` to a date; "—" where there is none.
[[nodiscard]] std::string until(UsageModel::Date now, std::optional<UsageModel::Date> date);

/// "Tue 3:05 PM"
[[nodiscard]] std::string shortStamp(UsageModel::Date date, const UsageModel::Calendar& calendar);
/// "Tue 3 PM": the hour that has begun
[[nodiscard]] std::string hourStamp(UsageModel::Date date, const UsageModel::Calendar& calendar);
/// "Tue"
[[nodiscard]] std::string shortWeekday(UsageModel::Date date, const UsageModel::Calendar& calendar);
/// "Tuesday at 3:05 PM"
[[nodiscard]] std::string dayAndTime(UsageModel::Date date, const UsageModel::Calendar& calendar);
/// "3:05 PM"
[[nodiscard]] std::string clock(UsageModel::Date date, const UsageModel::Calendar& calendar);

} // namespace UsageEngine::TimeText
