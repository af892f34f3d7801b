#pragma once

#include <cstddef>
#include <string_view>

#include "Report/Line.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/UsageSnapshot.h"

namespace Report {

/// What a section of the report is drawn from and for. Refers to a snapshot that outlives it.
struct View {
    const UsageModel::UsageSnapshot& snapshot;
    const UsageModel::Calendar& calendar;
    /// The columns there are.
    std::size_t width = 80;
    /// Whether drawings may use characters beyond ASCII; texts may at any time.
    bool unicode = true;
};

[[nodiscard]] Ink inkOf(UsageModel::Severity severity);

/// Whether a meter's `used` is a share of the limit. It is not where neither an official reading nor a learnt session
/// cap tells the limit: then it counts log units, which must not be quoted as percent.
[[nodiscard]] bool isGauged(const UsageModel::UsageSnapshot& snapshot, const UsageModel::WindowState& meter);

/// A window's name, in the columns that all of them take.
[[nodiscard]] Line nameColumn(UsageModel::WindowKind kind);

/// Below this many columns a name gets a line of its own.
inline constexpr std::size_t narrowBelow = 54;

/// The text under the name in narrow views, beside it in others.
[[nodiscard]] Lines named(const Line& name, const std::vector<Line>& items, const View& view);

} // namespace Report
