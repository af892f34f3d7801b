#include "HarrowlaneApp/Copy/DashboardTexts.h"

#include "HarrowlaneApp/Copy/WeekChartBars.h"

namespace HarrowlaneApp::DashboardTexts {

using UsageModel::SeriesScale;

std::optional<std::string_view> weekChip(const WeekState& state) {
    if (state.isSample) return "Sample data";
    if (state.scale == SeriesScale::typicalWeeks) return "Estimated · no gauge";
    return std::nullopt;
}

bool showsBanner(SeriesScale scale) {
    return scale == SeriesScale::typicalWeeks;
}

std::string_view emptyWeekText(Readiness readiness) {
    if (readiness == Readiness::warmingUp) return "Reading your usage history";
    return "The week view needs at least a little history to draw from.";
}

Legend legend(const UsageModel::WeekSeries& series, std::optional<double> ghostFactor) {
    using Line = LineKey::Line;
    Legend legend{.lines = {{Line::burned, "burned so far"}}, .families = WeekChart::drawnBuckets(series.sessions)};
    if (!series.forecastLikely.empty()) legend.lines.push_back({Line::forecast, "forecast"});
    const std::string_view typical = curveLabel(series.norm.basis);
    if (!series.baseline.empty() && !typical.empty()) legend.lines.push_back({Line::typical, typical});
    if (ghostFactor) legend.lines.push_back({Line::ghost, ghostName});
    return legend;
}

} // namespace HarrowlaneApp::DashboardTexts
