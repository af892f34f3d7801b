#pragma once

#include <span>
#include <string>

#include "HarrowlaneApp/Copy/Plot.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/WeekSeries.h"

/// What the week chart shows and where, as values: two panels over one time axis, the running total above and one bar
/// a session below.
namespace HarrowlaneApp::WeekChart {

inline constexpr double padL = 42.0;
inline constexpr double padR = 58.0;
inline constexpr double padT = 16.0;
inline constexpr double padB = 24.0;
inline constexpr double panelGap = 14.0;
inline constexpr double bottomPanelHeight = 72.0;
inline constexpr double leastTopPanelHeight = 80.0;
/// In the dashboard.
inline constexpr double chartHeight = 300.0;

/// Where everything stands in a view of one size.
struct Geometry {
    Plot top;
    Plot bottom;

    /// The place of a date, in both panels.
    [[nodiscard]] double x(UsageModel::Date date) const { return top.x(date); }
    [[nodiscard]] double topY(double level) const { return top.y(level); }
    /// The place of a fill in the bottom panel, held to the panel.
    [[nodiscard]] double botY(double fill) const;

    friend bool operator==(const Geometry&, const Geometry&) = default;
};
/// Of a view in points. In one that is too low the panels keep their least heights, and reach beyond it.
[[nodiscard]] Geometry geometry(const UsageModel::WeekSeries& series, const Size& size);

/// The fill at the top of the bars' axis: a little above a full cap where any bar is measured by one, else a little
/// above the fullest.
[[nodiscard]] double barAxisTop(std::span<const UsageModel::SessionBar> sessions);
/// Whether any bar tells its share of a cap.
[[nodiscard]] bool anyCalibrated(std::span<const UsageModel::SessionBar> sessions);

/// The chart in words, for those who do not see it.
[[nodiscard]] std::string accessibilitySummary(const UsageModel::WeekSeries& series,
                                               const UsageModel::Calendar& calendar);

} // namespace HarrowlaneApp::WeekChart
