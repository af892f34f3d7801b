#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HarrowlaneApp/Copy/ChartBucket.h"
#include "HarrowlaneApp/Copy/Readiness.h"
#include "UsageModel/WeekSeries.h"

/// What the dashboard says around the chart and the tabs.
namespace HarrowlaneApp::DashboardTexts {

/// The titles of the tabs, in their order: the week, the models, the history.
inline constexpr std::array<std::string_view, 3> tabs{"This Week", "Models", "History"};
inline constexpr std::string_view bannerText =
    "Connect the usage helper to see this against your account's real limits — the ceiling, the reset time, and how "
    "close you actually are.";
inline constexpr std::string_view bannerButton = "Open Settings";

struct WeekState {
    bool isSample = false;
    UsageModel::SeriesScale scale = UsageModel::SeriesScale::capFraction;
};

/// The chip at the right of the week's headline, if any.
[[nodiscard]] std::optional<std::string_view> weekChip(const WeekState& state);
/// Whether the banner that asks for the helper is shown.
[[nodiscard]] bool showsBanner(UsageModel::SeriesScale scale);
/// What stands in the place of a week that cannot be drawn.
[[nodiscard]] std::string_view emptyWeekText(Readiness readiness);

/// A line of the chart, with its name.
struct LineKey {
    enum class Line { burned, forecast, typical, ghost };

    Line line = Line::burned;
    std::string_view name;

    friend bool operator==(const LineKey&, const LineKey&) = default;
};

/// The name of the line that a what-if choice draws.
inline constexpr std::string_view ghostName = "if you change something";

/// The keys for what the chart draws of a week: its lines, and the families of its bars.
struct Legend {
    std::vector<LineKey> lines;
    std::vector<ChartBucket> families;

    friend bool operator==(const Legend&, const Legend&) = default;
};

/// `ghostFactor` as the what-if panel has it.
[[nodiscard]] Legend legend(const UsageModel::WeekSeries& series, std::optional<double> ghostFactor);

} // namespace HarrowlaneApp::DashboardTexts
