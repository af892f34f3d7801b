#pragma once

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Calendar.h"

namespace UsageEngine {

/// The local hour of one instant after another. Instants of the same hour, as turns by time are, cost no look into the
/// calendar.
class LocalHours {
public:
    struct Hour {
        /// The first instant of the local day.
        UsageModel::Date day;
        /// 0 to 23.
        int hour = 0;
        /// 1 (Sunday) to 7.
        int weekday = 1;
    };

    explicit LocalHours(const UsageModel::Calendar& calendar) : calendar_(calendar) {}

    /// Valid until the next call.
    [[nodiscard]] const Hour& at(UsageModel::Date date);

private:
    [[nodiscard]] TimeSpan around(UsageModel::Date date) const;

    UsageModel::Calendar calendar_;
    /// Where `known_` holds.
    TimeSpan span_;
    Hour known_;
};

} // namespace UsageEngine
