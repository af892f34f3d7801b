#include "HarrowlaneApp/Copy/WeekChartForecast.h"

#include <algorithm>

#include "HarrowlaneApp/Copy/ChartTooltip.h"
#include "HarrowlaneApp/Copy/Figures.h"
#include "HarrowlaneApp/Copy/Spread.h"
#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "UsageEngine/TimeText.h"

namespace HarrowlaneApp::WeekChart {

namespace {

using UsageModel::SeriesScale;
using UsageModel::WeekSeries;

bool hasLimit(const WeekSeries& series) {
    return series.scale == SeriesScale::capFraction;
}

std::optional<Wash::Kind> washKind(const WeekSeries& series) {
    if (!hasLimit(series)) return std::nullopt;
    if (series.coneLikelyEnd.used > WeekCopy::limit(series)) return Wash::Kind::over;
    if (WeekCopy::hasRoomToSpare(series)) return Wash::Kind::unspent;
    return std::nullopt;
}

} // namespace

std::optional<Wash> wash(const WeekSeries& series, const Geometry& geometry) {
    constexpr double leastBandForExcess = 18.0;
    constexpr double excessFromRight = 60.0;
    const auto kind = washKind(series);
    if (!kind) return std::nullopt;
    const double unspent = WeekCopy::limit(series) - series.coneLikelyEnd.used;
    Wash wash{
        .kind = *kind,
        .limitY = geometry.top.heldY(WeekCopy::limit(series)),
        .landingY = geometry.top.heldY(series.coneLikelyEnd.used),
    };
    wash.textPlace = {.x = geometry.top.panel.right() - excessFromRight, .y = (wash.limitY + wash.landingY) / 2};
    if (wash.kind == Wash::Kind::unspent)
        wash.text = Figures::percent(unspent) + " unspent";
    else if (wash.limitY - wash.landingY >= leastBandForExcess)
        wash.text = Figures::percent(-unspent) + " over";
    return wash;
}

std::optional<CrossingMark> crossingMark(const WeekSeries& series, const Geometry& geometry,
                                         const UsageModel::Calendar& calendar) {
    if (!series.crossing || !hasLimit(series)) return std::nullopt;
    return CrossingMark{
        .centre = {.x = geometry.x(*series.crossing), .y = geometry.top.heldY(WeekCopy::limit(series))},
        .caption = "runs out " + UsageEngine::TimeText::shortStamp(*series.crossing, calendar),
    };
}

Rect captionPlate(const CrossingMark& mark, const Size& text, const Geometry& geometry) {
    constexpr double sideMargins = 14.0;
    constexpr double heightMargins = 3.0;
    constexpr double leftOfMark = 9.0;
    constexpr double aboveMark = 8.0;
    const Rect& panel = geometry.top.panel;
    const double width = text.width + sideMargins;
    const double height = text.height + heightMargins;
    // A panel narrower than the plate lets it go on at the right, not at the left: texts are read from there.
    return {
        .x = std::max(std::min(mark.centre.x - leftOfMark, panel.right()) - width, panel.x),
        .y = std::max(std::min(mark.centre.y - aboveMark, panel.bottom()) - height, panel.y),
        .width = width,
        .height = height,
    };
}

std::vector<Readout> readouts(const WeekSeries& series, const Geometry& geometry, std::optional<double> ghostFactor) {
    constexpr double distance = 15.0;
    std::vector<Readout> all;
    const auto add = [&](Readout::Role role, double value) {
        all.push_back({.role = role, .text = ChartTooltip::format(value, series), .trueY = geometry.top.heldY(value)});
    };
    add(Readout::Role::landing, series.coneLikelyEnd.used);
    if (!series.baseline.empty()) add(Readout::Role::typical, series.baseline.back().used);
    if (ghostFactor) add(Readout::Role::ghost, series.ghostLanding(*ghostFactor));

    std::vector<double> wanted(all.size());
    std::ranges::transform(all, wanted.begin(), &Readout::trueY);
    const Rect& panel = geometry.top.panel;
    const auto places = spread(wanted, {.least = panel.y, .most = panel.bottom(), .distance = distance});
    for (std::size_t i = 0; i < all.size(); ++i) all[i].y = places[i];
    return all;
}

} // namespace HarrowlaneApp::WeekChart
