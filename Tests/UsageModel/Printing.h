#pragma once

#include <ostream>

#include <absl/time/time.h>

#include "UsageModel/Date.h"

namespace UsageModel {

/// Lets a failed comparison tell a clock time in UTC and not a row of bytes. To be included wherever dates are
/// compared: two files of one program must not print them in two ways.
inline void PrintTo(Date date, std::ostream* out) {
    *out << absl::FormatTime("%Y-%m-%dT%H:%M:%E6SZ", absl::FromUnixSeconds(0) + absl::Seconds(date.secondsSince1970),
                             absl::UTCTimeZone());
}

} // namespace UsageModel
