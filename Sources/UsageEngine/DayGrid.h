#pragma once

#include <vector>

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/Fields.h"

/// A window cut into calendar days.
namespace UsageEngine::DayGrid {

struct Column {
    UsageModel::Date start;
    UsageModel::Date end;
    /// It begins with its day and lasts 23 hours or more, as a day does whose clock is set forward.
    bool isFullDay = false;

    friend bool operator==(const Column&, const Column&) = default;
};

template <UsageModel::FieldsOf<Column> Self>
void visitFields(Self& self, auto&& visit) {
    visit("start", self.start);
    visit("end", self.end);
    visit("isFullDay", self.isFullDay);
}

/// The columns side by side, from the beginning of the window to its end. None where it is empty.
[[nodiscard]] std::vector<Column> columns(const TimeSpan& window, const UsageModel::Calendar& calendar);

} // namespace UsageEngine::DayGrid
