#pragma once

#include "HarrowlaneApp/Copy/Plane.h"
#include "UsageModel/Date.h"

namespace HarrowlaneApp {

/// A panel with a window of time across it and levels from 0 at its bottom edge to `axisTop` at its top edge.
struct Plot {
    Rect panel;
    UsageModel::Date windowStart;
    UsageModel::Date windowEnd;
    double axisTop = 1.0;

    /// The place of a date, held to the panel; its left edge where the window has no length, and for
    /// a date that is no number.
    [[nodiscard]] double x(UsageModel::Date date) const;
    /// The place of a level; what is above the axis lies on the top edge, what is below zero below the panel.
    [[nodiscard]] double y(double level) const;
    /// The same held to the panel at its bottom edge too, where a level that is no number lies as well: a line that
    /// leaves the panel by miles takes as long to draw as it is long.
    [[nodiscard]] double heldY(double level) const;

    friend bool operator==(const Plot&, const Plot&) = default;
};

} // namespace HarrowlaneApp
