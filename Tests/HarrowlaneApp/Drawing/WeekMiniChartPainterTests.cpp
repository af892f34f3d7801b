#include "HarrowlaneApp/Drawing/WeekMiniChartPainter.h"

#include <limits>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Copy/WeekMiniChart.h"
#include "HarrowlaneApp/Drawing/Canvas.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;
using DrawingTests::near;
using DrawingTests::over;
using UsageModel::Date;
using UsageModel::WeekSeries;

const Palette& dark = Palette::resolved(Appearance::dark);
constexpr Look darkLook{.appearance = Appearance::dark};
constexpr double width = 288.0;
constexpr double height = 76.0;
/// The panel's lower edge: everything stands on it.
constexpr double floorY = height - WeekMiniChart::padB;
constexpr double panelRight = width - WeekMiniChart::padR;

/// Half of a week is over and half of the limit used, evenly; it lands at the limit's four fifths.
WeekSeries evenWeek() {
    WeekSeries week{.windowStart = Date{0}, .windowEnd = Date{1000}, .now = Date{500}, .usedNow = 0.5};
    week.limitLevel = 1.0;
    week.actual = {{.t = Date{0}, .used = 0.0}, {.t = Date{500}, .used = 0.5}};
    week.forecastLikely = {{.t = Date{500}, .used = 0.5}, {.t = Date{1000}, .used = 0.8}};
    week.forecastHigh = {{.t = Date{500}, .used = 0.5}, {.t = Date{1000}, .used = 1.1}};
    week.forecastLow = {{.t = Date{500}, .used = 0.5}, {.t = Date{1000}, .used = 0.6}};
    week.coneLikelyEnd = {.t = Date{1000}, .used = 0.8};
    return week;
}

Canvas drawn(const WeekSeries& week, double scale = 4.0) {
    Canvas canvas(width, height, scale, dark.card);
    return canvas.draw([&](QPainter& painter) {
        WeekMiniChart::paint(painter, {.series = week, .tint = dark.crit, .place = {0, 0, width, height}}, darkLook);
    });
}

double levelY(const WeekSeries& week, double level) {
    return WeekMiniChart::layOut(week, {.width = width, .height = height}).plot.y(level);
}

/// How many pixels of that colour there are in a rectangle.
int count(const Canvas& canvas, const QRectF& place, const QColor& color) {
    int found = 0;
    for (double y = place.top(); y < place.bottom(); y += 0.25) {
        for (double x = place.left(); x < place.right(); x += 0.25) {
            if (near(canvas.at(x, y), color, 4)) ++found;
        }
    }
    return found;
}

TEST(WeekMiniChartPainter, DrawsWhatWasBurnedAsASolidLineOverAFadingArea) {
    const WeekSeries week = evenWeek();
    const Canvas canvas = drawn(week);
    for (const double share : {0.25, 0.5, 0.75}) {
        EXPECT_TRUE(near(canvas.at(share * panelRight / 2.0, levelY(week, share / 2.0)), dark.crit)) << share;
    }
    const double x = panelRight * 0.45;
    const double high = canvas.at(x, levelY(week, 0.40)).redF();
    const double low = canvas.at(x, levelY(week, 0.05)).redF();
    EXPECT_GT(high, low);
    EXPECT_GT(low, dark.card.redF());
}

TEST(WeekMiniChartPainter, DrawsTheForecastInDashes) {
    const WeekSeries week = evenWeek();
    const Canvas canvas = drawn(week);
    int onLine = 0;
    int off = 0;
    for (double x = panelRight / 2.0 + 6.0; x < panelRight; x += 0.25) {
        const double level = 0.5 + 0.3 * (x / panelRight - 0.5) / 0.5;
        (near(canvas.at(x, levelY(week, level)), dark.crit, 12) ? onLine : off) += 1;
    }
    EXPECT_GT(onLine, 150);
    EXPECT_GT(off, 100);
}

TEST(WeekMiniChartPainter, WashesTheConeMoreAtItsTop) {
    const WeekSeries week = evenWeek();
    const Canvas canvas = drawn(week);
    const double x = panelRight - 3.0;
    const QColor high = canvas.at(x, levelY(week, 1.05));
    const QColor low = canvas.at(x, levelY(week, 0.65));
    EXPECT_GT(high.red(), low.red());
    EXPECT_GT(low.red(), canvas.at(x, levelY(week, 0.3)).red());
}

TEST(WeekMiniChartPainter, DrawsTheLimitInDashesWhereItIsKnown) {
    WeekSeries week = evenWeek();
    const QRectF line(0.0, levelY(week, 1.0) - 1.0, panelRight / 2.0, 2.0);
    const QColor limit = over(withOpacity(dark.dim, 0.90), dark.card);
    EXPECT_GT(count(drawn(week), line, limit), 100);
    week.limitLevel.reset();
    EXPECT_EQ(count(drawn(week), line, limit), 0);
}

TEST(WeekMiniChartPainter, StandsOnABaseLine) {
    const Canvas canvas = drawn(evenWeek());
    EXPECT_TRUE(near(canvas.at(panelRight - 5.0, floorY), over(withOpacity(dark.ink, 0.14), dark.card), 3));
    EXPECT_TRUE(near(canvas.at(panelRight + 5.0, floorY), dark.card));
}

TEST(WeekMiniChartPainter, MarksThePresentWithADotInAFreeRing) {
    const WeekSeries week = evenWeek();
    const Canvas canvas = drawn(week);
    const double y = levelY(week, 0.5);
    EXPECT_TRUE(near(canvas.at(panelRight / 2.0, y), dark.ink));
    EXPECT_TRUE(near(canvas.at(panelRight / 2.0 + 2.2, y), dark.ink));
    EXPECT_TRUE(near(canvas.at(panelRight / 2.0 + 3.2, y), dark.card));
}

TEST(WeekMiniChartPainter, TellsTheLandingBesideItsEnd) {
    const WeekSeries week = evenWeek();
    const QRectF beside(panelRight + 6.0, levelY(week, 0.8) - 6.0, WeekMiniChart::padR - 6.0, 12.0);
    EXPECT_GT(count(drawn(week), beside, dark.crit), 60);
    EXPECT_EQ(count(drawn(week), beside.translated(0.0, 20.0), dark.crit), 0);
}

WeekSeries leaving(double level) {
    WeekSeries week = evenWeek();
    week.usedNow = level;
    week.coneLikelyEnd.used = level; // more digits than there is room
    for (auto* curve : {&week.actual, &week.forecastLikely, &week.forecastHigh, &week.forecastLow}) {
        curve->back().used = level;
    }
    return week;
}

TEST(WeekMiniChartPainter, StaysInItsPlaceAndEndsSoon) {
    for (const double level : {1e9, 1e300, -1e9, -1e300}) {
        SCOPED_TRACE(level);
        const WeekSeries week = leaving(level);
        Canvas canvas(width + 40.0, height + 40.0, 2.0, dark.card);
        canvas.draw([&](QPainter& painter) {
            WeekMiniChart::paint(painter, {.series = week, .tint = dark.crit, .place = {20, 20, width, height}},
                                 darkLook);
        });
        for (double x = 0.0; x < width + 40.0; x += 0.5) {
            ASSERT_TRUE(near(canvas.at(x, 18.0), dark.card)) << x;
            ASSERT_TRUE(near(canvas.at(x, height + 23.0), dark.card)) << x;
        }
        for (double y = 0.0; y < height + 40.0; y += 0.5) {
            ASSERT_TRUE(near(canvas.at(15.0, y), dark.card)) << y;
            ASSERT_TRUE(near(canvas.at(width + 21.0, y), dark.card)) << y;
        }
    }
}

TEST(WeekMiniChartPainter, PutsOnTheFloorWhatHasNoLevel) {
    WeekSeries week = evenWeek();
    week.usedNow = std::numeric_limits<double>::quiet_NaN();
    const Canvas canvas = drawn(week);
    EXPECT_EQ(count(canvas, {0.0, 0.0, width, floorY - 5.0}, dark.ink), 0);
    EXPECT_GT(count(canvas, {0.0, floorY - 5.0, width, 5.0}, dark.ink), 0) << "the dot";
    EXPECT_TRUE(near(canvas.at(panelRight / 4.0, levelY(week, 0.25)), dark.crit)) << "the curve";
}

TEST(WeekMiniChartPainter, DrawsAWeekWithoutAnyCurve) {
    const WeekSeries week{.windowStart = Date{0}, .windowEnd = Date{0}, .now = Date{0}};
    const Canvas canvas = drawn(week);
    EXPECT_TRUE(near(canvas.at(panelRight - 5.0, floorY), over(withOpacity(dark.ink, 0.14), dark.card), 3));
    EXPECT_TRUE(near(canvas.at(0.5, floorY - 1.0), dark.ink)) << "the dot at its corner";
}

} // namespace
