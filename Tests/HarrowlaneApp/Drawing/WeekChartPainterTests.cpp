#include "HarrowlaneApp/Drawing/WeekChartPainter.h"

#include <cmath>

#include <gmock/gmock.h>

#include "Canvas.h"
#include "ChartWeeks.h"
#include "HarrowlaneApp/Drawing/BucketColors.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/WeekChartCanvas.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;
using DrawingTests::near;
using DrawingTests::over;
using DrawingTests::Straight;
using DrawingTests::straightWeek;
using TestSupport::utc;
using UsageModel::SeriesScale;

constexpr double width = 656.0;
constexpr double height = 300.0;

/// A chart on its card, to be probed.
class Chart {
public:
    explicit Chart(UsageModel::WeekSeries series, Appearance appearance = Appearance::dark, double scale = 2.0,
                   std::optional<double> factor = std::nullopt)
        : series_(std::move(series)),
          look_{.appearance = appearance},
          layout_(WeekChart::layOut({.series = series_,
                                     .calendar = utc(),
                                     .size = {.width = width, .height = height},
                                     .pixelsPerPoint = scale,
                                     .whatIfFactor = factor})),
          canvas_(width, height, scale, card()) {
        canvas_.draw([&](QPainter& painter) { WeekChart::paint(painter, layout_, look_); });
    }

    [[nodiscard]] QColor card() const { return HUDPanel{}.surface(look_).fill; }
    [[nodiscard]] const Palette& colors() const { return look_.palette(); }
    [[nodiscard]] const Look& look() const { return look_; }
    [[nodiscard]] const WeekChart::Layout& layout() const { return layout_; }
    [[nodiscard]] const UsageModel::WeekSeries& series() const { return series_; }
    [[nodiscard]] Canvas& canvas() { return canvas_; }
    [[nodiscard]] QColor at(double x, double y) const { return canvas_.at(x, y); }
    /// The place of a share of the week and a level.
    [[nodiscard]] QColor atLevel(double share, double level) const {
        return at(layout_.geometry.top.panel.x + share * layout_.geometry.top.panel.width,
                  layout_.geometry.topY(level));
    }

private:
    UsageModel::WeekSeries series_;
    Look look_;
    WeekChart::Layout layout_;
    Canvas canvas_;
};

class Painted : public testing::TestWithParam<Appearance> {};
INSTANTIATE_TEST_SUITE_P(Appearances, Painted, testing::Values(Appearance::dark, Appearance::light));

TEST_P(Painted, ShowsWhatIsBurnedAsASolidLineOverAnArea) {
    const Chart chart(straightWeek({.landing = 0.9}), GetParam());
    EXPECT_TRUE(near(chart.atLevel(0.23, 0.9 * 0.23), chart.colors().ink));
    // Below the line, between two lines of the grid; the weekend is far.
    EXPECT_TRUE(near(chart.atLevel(0.25, 0.03), over(withOpacity(chart.colors().ink, 0.06), chart.card())));
    EXPECT_TRUE(near(chart.atLevel(0.25, 0.6), chart.card()));
}

TEST_P(Painted, SetsThePresentOffFromTheLines) {
    const Chart chart(straightWeek({.landing = 0.9}), GetParam());
    const Point now = chart.layout().now;
    EXPECT_TRUE(near(chart.at(now.x, now.y), chart.colors().ink));
    EXPECT_TRUE(near(chart.at(now.x, now.y - 4.5), chart.card()));
    EXPECT_TRUE(near(chart.at(now.x, now.y + 4.5), chart.card()));
    EXPECT_TRUE(near(chart.at(now.x + 4.5, now.y), chart.card()));
}

TEST_P(Painted, DrawsTheLineOfThePresentThroughBothPanelsButNotTheGap) {
    const Chart chart(straightWeek({.landing = 0.9, .gone = 0.45, .sessions = 0}), GetParam());
    const double x = chart.layout().now.x;
    const QColor line = over(withOpacity(chart.colors().ink, 0.5), chart.card());
    EXPECT_TRUE(near(chart.at(x, 30.0), line));
    EXPECT_TRUE(near(chart.at(x, chart.layout().geometry.bottom.panel.y + 30.0), line));
    EXPECT_TRUE(near(chart.at(x, chart.layout().geometry.bottom.panel.y - 6.0), chart.card()));
}

TEST_P(Painted, FillsTheConeFromStrongToFaint) {
    const Chart chart(straightWeek({.landing = 0.9, .gone = 0.0}), GetParam());
    const WeekChart::Trace& cone = chart.layout().cone;
    const auto [highest, lowest] = std::ranges::minmax(cone, {}, &Point::y);
    const double share = 0.55; // a Friday: the weekend has a tint of its own
    const double level = share * 0.95;
    const double y = chart.layout().geometry.topY(level);
    const double opacity = 0.30 + (0.04 - 0.30) * (y - highest.y) / (lowest.y - highest.y);
    EXPECT_TRUE(near(chart.atLevel(share, level), over(withOpacity(chart.colors().cyan, opacity), chart.card()), 3))
        << chart.atLevel(share, level).name().toStdString();
}

TEST_P(Painted, StacksTheFamiliesOfABarWithAGapBetween) {
    const Chart chart(straightWeek({}), GetParam());
    const WeekChart::Bar& bar = chart.layout().bars[1];
    ASSERT_EQ(bar.segments.size(), 2U);
    const double x = bar.rect.x + bar.rect.width / 2.0;
    for (const auto& segment : bar.segments) {
        EXPECT_TRUE(
            near(chart.at(x, segment.rect.y + segment.rect.height / 2.0), bucketColor(segment.bucket, GetParam())));
    }
    EXPECT_TRUE(near(chart.at(x, bar.segments[1].rect.bottom() + 0.75), chart.card(), 12));
    // The upper corner is round, the lower is not.
    EXPECT_FALSE(near(chart.at(bar.rect.x + 0.6, bar.segments[1].rect.y + 0.3),
                      bucketColor(bar.segments[1].bucket, GetParam()), 40));
    EXPECT_TRUE(near(chart.at(bar.rect.x + 0.9, bar.segments[0].rect.bottom() - 2.0),
                     bucketColor(bar.segments[0].bucket, GetParam())));
}

TEST_P(Painted, WashesWhatIsOverBetweenForecastAndLimit) {
    const Chart chart(straightWeek({.landing = 1.2, .gone = 0.0}), GetParam());
    const QColor inWash = chart.atLevel(0.97, 1.03);
    const QColor aboveCone = chart.atLevel(0.9, 1.24);
    EXPECT_TRUE(near(aboveCone, chart.card()));
    EXPECT_GT(inWash.red() - inWash.green(), chart.card().red() - chart.card().green() + 10);
}

TEST_P(Painted, WashesWhatStaysUnspentInTheColourOfTheGood) {
    const Chart chart(straightWeek({.landing = 0.3, .gone = 0.45}), GetParam());
    const QColor free = chart.atLevel(0.55, 0.9);
    EXPECT_GT(free.green() - free.red(), chart.card().green() - chart.card().red() + 10);
    EXPECT_TRUE(near(chart.atLevel(0.55, 1.1), chart.card()));
    EXPECT_TRUE(near(chart.atLevel(0.40, 0.9), chart.card()));
}

TEST_P(Painted, LeavesTheWashAwayNearTheLimitAndForOneWeekOfHistory) {
    auto shortHistory = straightWeek({.landing = 0.3, .gone = 0.45});
    shortHistory.norm.samples = {1.0};
    shortHistory.norm.basis = UsageModel::WeeklyNorm::Basis::single;
    EXPECT_TRUE(near(Chart(shortHistory, GetParam()).atLevel(0.55, 0.9), HUDPanel{}.surface({GetParam()}).fill));
    const Chart close(straightWeek({.landing = 0.8, .gone = 0.45}), GetParam());
    EXPECT_TRUE(near(close.atLevel(0.55, 0.9), close.card()));
}

TEST_P(Painted, RingsTheCrossing) {
    const Chart chart(straightWeek({.landing = 1.2}), GetParam());
    const Point centre = chart.layout().crossing->centre;
    EXPECT_TRUE(near(chart.at(centre.x, centre.y), chart.card()));
    EXPECT_TRUE(near(chart.at(centre.x - 4.5, centre.y), chart.colors().crit, 4));
    EXPECT_TRUE(near(chart.at(centre.x, centre.y + 4.5), chart.colors().crit, 4));
}

TEST_P(Painted, TintsTheWeekendAcrossBothPanelsAndTheGap) {
    const Chart chart(straightWeek({.landing = 0.3, .gone = 0.1, .sessions = 0}), GetParam());
    const auto weekend = std::ranges::find(chart.layout().days, true, &WeekChart::DayColumn::isWeekend);
    const double x = (weekend->left + weekend->right) / 2.0;
    const QColor band = over(withOpacity(chart.colors().ink, 0.028), chart.card());
    EXPECT_TRUE(near(chart.at(x, 20.0), band));
    EXPECT_TRUE(near(chart.at(x, chart.layout().geometry.bottom.panel.y - 5.0), band));
    EXPECT_TRUE(near(chart.at(x, chart.layout().geometry.bottom.panel.bottom() - 5.0), band));
    EXPECT_TRUE(near(chart.at(weekend->left - 5.0, 20.0), chart.card()));
}

TEST(WeekChartCanvas, FillsWholePixelsWithoutASeam) {
    Canvas target(40.0, 240.0, 2.0);
    WeekChart::Layout layout;
    layout.pixelsPerPoint = 2.0;
    const Palette& palette = Palette::resolved(Appearance::dark);
    target.draw([&](QPainter& painter) {
        const WeekChart::Canvas canvas{
            .painter = painter, .layout = layout, .palette = palette, .card = {}, .tint = &Palette::cyan};
        canvas.fillCrisp({10.2, 5.3, 20.0, 200.0}, canvas.ink(0.5));
    });
    const int inside = qAlpha(target.image().pixel(40, 100));
    EXPECT_GT(inside, 0);
    for (int y = 0; y < target.image().height(); ++y) {
        for (int x = 0; x < target.image().width(); ++x) {
            const bool isInside = x >= 20 && x < 60 && y >= 11 && y < 411;
            ASSERT_EQ(qAlpha(target.image().pixel(x, y)), isInside ? inside : 0) << x << " " << y;
        }
    }
}

TEST_P(Painted, OutlinesTheRunningSessionWithDashes) {
    const Chart chart(straightWeek({.sessions = 3}), GetParam());
    const Rect bar = chart.layout().bars[2].rect;
    int drawn = 0;
    int steps = 0;
    for (double y = bar.y + 4.0; y < bar.bottom() - 2.0; y += 0.5, ++steps) {
        drawn += near(chart.at(bar.x - 2.0, y), chart.card(), 12) ? 0 : 1;
    }
    EXPECT_GT(drawn, steps / 4);
    EXPECT_LT(drawn, steps * 3 / 4);
    const Rect other = chart.layout().bars[1].rect;
    EXPECT_TRUE(near(chart.at(other.x - 2.0, other.y + 10.0), chart.card()));
}

TEST_P(Painted, EndsTheGhostInADotAtTheReset) {
    const Chart chart(straightWeek({.landing = 0.9}), GetParam(), 2.0, 0.5);
    const Point end = *chart.layout().ghostEnd;
    // The line of the reset may run across it.
    EXPECT_TRUE(near(chart.at(end.x - 1.5, end.y), chart.colors().cyan, 3));
    EXPECT_EQ(end.y, chart.layout().geometry.topY(chart.series().ghostLanding(0.5)));
    EXPECT_FALSE(Chart(straightWeek({.landing = 0.9})).layout().ghostEnd);
}

TEST(WeekChartPainter, GuidesAtAFullCapOnlyWhereOneIsKnown) {
    const auto dashes = [](const Chart& chart, double y) {
        int count = 0;
        for (double x = 500.0; x < 580.0; x += 0.5) count += near(chart.at(x, y), chart.card(), 3) ? 0 : 1;
        return count;
    };
    const Chart known(straightWeek({}));
    ASSERT_TRUE(known.layout().fullCap);
    EXPECT_GT(dashes(known, *known.layout().fullCap), 40);
    const Chart unknown(straightWeek({.scale = SeriesScale::typicalWeeks}));
    EXPECT_FALSE(unknown.layout().fullCap);
}

TEST(WeekChartPainter, DrawsTheSameTwiceAndNothingBeyondItsView) {
    const Chart first(straightWeek({.landing = 4.0, .sessions = 40}));
    Chart second(straightWeek({.landing = 4.0, .sessions = 40}));
    EXPECT_EQ(first.layout().captions.size(), second.layout().captions.size());
    Canvas larger(width + 40.0, height + 40.0, 2.0, second.card());
    larger.draw([&](QPainter& painter) {
        painter.translate(20.0, 20.0);
        WeekChart::paint(painter, second.layout(), second.look());
    });
    for (double x = 0.5; x < width + 40.0; x += 0.5) {
        for (const double y : {5.0, 15.0, height + 25.0, height + 35.0}) EXPECT_EQ(larger.at(x, y), second.card());
    }
    for (double y = 0.5; y < height + 40.0; y += 0.5) {
        for (const double x : {5.0, 15.0, width + 25.0, width + 35.0}) EXPECT_EQ(larger.at(x, y), second.card());
    }
}

TEST(WeekChartPainter, DrawsEmptyAndDegenerateWeeks) {
    UsageModel::WeekSeries none = TestSupport::weekOf(SeriesScale::typicalWeeks);
    none.windowEnd = none.windowStart;
    none.now = none.windowStart;
    EXPECT_NO_FATAL_FAILURE(Chart{none});
    EXPECT_NO_FATAL_FAILURE(Chart{UsageModel::WeekSeries()});
    auto huge = straightWeek({.landing = 1e300});
    huge.usedNow = 1e300;
    const Chart chart(huge);
    EXPECT_EQ(chart.layout().now.y, chart.layout().geometry.top.panel.y);
}

class Hovering : public testing::Test {
protected:
    Hovering() : chart(straightWeek({.landing = 0.9})), before(chart.canvas().image().copy()) {}

    void show(const WeekChart::HoverTarget& target) {
        hover = WeekChart::hoverOf(target, chart.series(), chart.layout().geometry);
        chart.canvas().draw([&](QPainter& painter) { WeekChart::paint(painter, hover, chart.layout(), chart.look()); });
    }

    Chart chart;
    QImage before;
    WeekChart::Hover hover;
};

TEST_F(Hovering, MarksAPlaceOnTheForecastInItsTint) {
    const UsageModel::Date at = TestSupport::monday + 0.7 * 7.0 * TestSupport::day;
    show(WeekChart::CurvePlace{.at = at});
    const double x = chart.layout().geometry.x(at);
    const double y = chart.layout().geometry.topY(0.63);
    EXPECT_TRUE(near(chart.at(x, y), chart.colors().cyan));
    EXPECT_TRUE(near(chart.at(x, y - 3.5), chart.card()));
}

TEST_F(Hovering, MarksAPlaceOfThePastInTheInkOfItsLine) {
    const UsageModel::Date at = TestSupport::monday + 0.2 * 7.0 * TestSupport::day;
    show(WeekChart::CurvePlace{.at = at});
    EXPECT_TRUE(near(chart.at(chart.layout().geometry.x(at), chart.layout().geometry.topY(0.18)), chart.colors().ink));
}

TEST_F(Hovering, OutlinesASession) {
    show(chart.series().sessions[1]);
    const Rect bar = chart.layout().bars[1].rect;
    const QColor edge = chart.at(bar.x - 2.5, bar.y + bar.height / 2.0);
    EXPECT_FALSE(near(edge, chart.card(), 40));
}

TEST_F(Hovering, ChangesNothingBeyondItsExtent) {
    show(chart.series().sessions[1]);
    const QRectF extent = WeekChart::extent(hover, chart.layout().geometry);
    const QImage& after = chart.canvas().image();
    int changed = 0;
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x) {
            if (after.pixel(x, y) == before.pixel(x, y)) continue;
            ++changed;
            EXPECT_TRUE(extent.contains(QPointF(x / 2.0 + 0.25, y / 2.0 + 0.25))) << x << "," << y;
        }
    }
    EXPECT_GT(changed, 200);
}

TEST(BucketColors, AreDarkFirstThenLight) {
    EXPECT_EQ(bucketColor(ChartBucket::fable, Appearance::dark), QColor::fromRgbF(0.80F, 0.30F, 0.71F));
    EXPECT_EQ(bucketColor(ChartBucket::fable, Appearance::light), QColor::fromRgbF(0.62F, 0.28F, 0.55F));
}

} // namespace
