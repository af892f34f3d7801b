#include "Report/WeekPlot.h"

#include <gmock/gmock.h>

#include "Report/SampleSnapshot.h"

namespace Report {
namespace {

using UsageModel::Date;
using UsageModel::SeriesPoint;
using UsageModel::WeekSeries;

using Curve = std::vector<SeriesPoint>;

/// A window from 0 to 100 with a limit of 1 and nothing in it, at 50.
WeekSeries emptySeries() {
    return {.windowStart = Date{0}, .windowEnd = Date{100}, .now = Date{50}, .limitLevel = 1.0};
}

char sign(const WeekPlot::Cell& cell) {
    switch (cell.mark) {
    case WeekPlot::Mark::none: return ' ';
    case WeekPlot::Mark::used: return static_cast<char>('0' + cell.pattern);
    case WeekPlot::Mark::usedPastTypical: return 't';
    case WeekPlot::Mark::forecast: return 'f';
    case WeekPlot::Mark::typical: return '.';
    case WeekPlot::Mark::limit: return '-';
    }
    return '?';
}

std::string drawing(const WeekSeries& series, WeekPlot::Size size = {.columns = 10, .rows = 4}) {
    std::string text;
    for (const auto& row : WeekPlot::of(series, size).rows) {
        for (const WeekPlot::Cell& cell : row) text += sign(cell);
        text += '\n';
    }
    return text;
}

TEST(WeekPlot, AnEmptyWeekHasItsLimitAlone) {
    EXPECT_EQ(drawing(emptySeries()), "----------\n"
                                      "          \n"
                                      "          \n"
                                      "          \n");
}

TEST(WeekPlot, WhatWasUsedIsFilledUpToNow) {
    WeekSeries series = emptySeries();
    series.usedNow = 0.9;
    series.actual = {{Date{0}, 0}, {Date{50}, 0.9}};
    EXPECT_EQ(drawing(series), "----------\n"
                               "   27     \n"
                               "  588     \n"
                               "38888     \n");
}

TEST(WeekPlot, ATraceOfUseShows) {
    WeekSeries series = emptySeries();
    series.actual = {{Date{0}, 1e-6}, {Date{50}, 1e-6}};
    EXPECT_EQ(drawing(series).substr(33), "11111     \n");
}

TEST(WeekPlot, TheForecastGoesOnFromNow) {
    WeekSeries series = emptySeries();
    series.forecastLikely = {{Date{50}, 0.4}, {Date{100}, 0.4}};
    EXPECT_EQ(drawing(series), "----------\n"
                               "          \n"
                               "     fffff\n"
                               "          \n");
}

TEST(WeekPlot, ASteepForecastStaysOneLine) {
    WeekSeries series = emptySeries();
    series.forecastLikely = {{Date{50}, 0.1}, {Date{70}, 0.1}, {Date{71}, 0.9}, {Date{100}, 0.9}};
    EXPECT_EQ(drawing(series), "-------fff\n"
                               "       f  \n"
                               "       f  \n"
                               "     fff  \n");
}

TEST(WeekPlot, AboveTheLimitThereIsRoomForMore) {
    WeekSeries series = emptySeries();
    series.forecastLikely = {{Date{50}, 1.3}, {Date{100}, 1.3}};
    const WeekPlot plot = WeekPlot::of(series, {.columns = 10, .rows = 4});
    EXPECT_EQ(plot.referenceRow, 1U);
    EXPECT_EQ(drawing(series), "     fffff\n"
                               "----------\n"
                               "          \n"
                               "          \n");
}

TEST(WeekPlot, TheTypicalWeekRunsThroughWhatWasUsed) {
    WeekSeries series = emptySeries();
    series.actual = {{Date{0}, 0.6}, {Date{50}, 0.6}};
    series.baseline = {{Date{0}, 0.1}, {Date{100}, 0.1}};
    EXPECT_EQ(drawing(series).substr(33), "ttttt.....\n");
}

TEST(WeekPlot, TheEdgeOfWhatWasUsedIsKept) {
    WeekSeries series = emptySeries();
    series.actual = {{Date{0}, 0.1}, {Date{50}, 0.1}};
    series.baseline = {{Date{0}, 0.1}, {Date{100}, 0.1}};
    EXPECT_EQ(drawing(series).substr(33), "33333.....\n");
}

TEST(WeekPlot, WithoutALimitATypicalWeekIsTheMeasure) {
    WeekSeries series = emptySeries();
    series.limitLevel.reset();
    series.baseline = {{Date{0}, 40}, {Date{100}, 40}};
    series.forecastLikely = {{Date{50}, 100}, {Date{100}, 100}};
    const WeekPlot plot = WeekPlot::of(series, {.columns = 10, .rows = 4});
    EXPECT_EQ(plot.referenceRow, 2U);
    EXPECT_EQ(drawing(series), "     fffff\n"
                               "          \n"
                               "..........\n"
                               "          \n");
}

TEST(WeekPlot, WithoutAnyMeasureTheHighestFillsIt) {
    WeekSeries series = emptySeries();
    series.limitLevel.reset();
    series.actual = {{Date{0}, 7}, {Date{50}, 7}};
    const WeekPlot plot = WeekPlot::of(series, {.columns = 10, .rows = 4});
    EXPECT_EQ(plot.referenceRow, std::nullopt);
    EXPECT_EQ(drawing(series).substr(0, 11), "88888     \n");
}

TEST(WeekPlot, IsEmptyWhereThereIsNoRoomOrNoTime) {
    EXPECT_TRUE(WeekPlot::of(emptySeries(), {.columns = 0, .rows = 4}).rows.empty());
    EXPECT_TRUE(WeekPlot::of(emptySeries(), {.columns = 4, .rows = 0}).rows.empty());
    WeekSeries series = emptySeries();
    series.windowEnd = series.windowStart;
    EXPECT_TRUE(WeekPlot::of(series, {.columns = 4, .rows = 4}).rows.empty());
}

TEST(WeekPlot, HoldsWhatHasNoPlaceOnIt) {
    WeekSeries series = emptySeries();
    series.actual = {{Date{0}, -5}, {Date{50}, 1e300}};
    series.baseline = {{Date{0}, -1e300}, {Date{100}, 1e300}};
    EXPECT_EQ(WeekPlot::of(series, {.columns = 10, .rows = 4}).rows.size(), 4U);
    EXPECT_EQ(WeekPlot::of(series, {.columns = 1, .rows = 1}).rows.size(), 1U);
}

TEST(ValueAt, FollowsTheLine) {
    const Curve curve{{Date{10}, 1}, {Date{20}, 3}};
    EXPECT_EQ(valueAt(curve, Date{9}), 0);
    EXPECT_EQ(valueAt(curve, Date{10}), 1);
    EXPECT_EQ(valueAt(curve, Date{15}), 2);
    EXPECT_EQ(valueAt(curve, Date{99}), 3);
    EXPECT_EQ(valueAt({}, Date{15}), 0);
}

TEST(ValueAt, OfTwoPointsAtOneInstantTakesTheLater) {
    EXPECT_EQ(valueAt({{Date{10}, 1}, {Date{10}, 3}, {Date{20}, 3}}, Date{10}), 3);
}

} // namespace
} // namespace Report
