#include "HarrowlaneApp/Drawing/WeekChartStrokes.h"

#include <cmath>

#include <gmock/gmock.h>

#include "Canvas.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;
using testing::IsEmpty;
using testing::SizeIs;
using WeekChart::dashesAlong;
using WeekChart::Trace;
using Line = DashboardTexts::LineKey::Line;

const Trace bent{{10.0, 40.0}, {40.0, 40.0}, {40.0, 40.0}, {70.0, 10.0}, {90.0, 10.0}};

TEST(WeekChartStrokes, KeepHairlinesCrispAtEveryScale) {
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const double middle = WeekChart::crisp(100.37, 1.0, scale);
        const double pixels = std::max(std::round(scale), 1.0);
        EXPECT_NEAR(std::remainder(middle * scale - pixels / 2.0, 1.0), 0.0, 1e-9) << scale;
        EXPECT_LE(std::abs(middle - 100.37), 0.5 / scale + 1e-9) << scale;
    }
}

TEST(WeekChartStrokes, DashAlongEveryBend) {
    const QPen pen = WeekChart::dotted(Qt::white, 1.5, {.on = 2.0, .off = 3.5});
    const auto dashes = dashesAlong(bent, pen);
    const double length = 30.0 + std::hypot(30.0, 30.0) + 20.0;
    EXPECT_EQ(dashes.size(), static_cast<qsizetype>(std::ceil(length / 5.5)));
    for (qsizetype i = 0; i + 1 < dashes.size(); ++i) EXPECT_NEAR(dashes[i].length(), 2.0, 0.2) << i;
    EXPECT_EQ(dashes.front(), QLineF(10.0, 40.0, 12.0, 40.0));
    EXPECT_NEAR(dashes[1].p1().x(), 15.5, 1e-9);
}

TEST(WeekChartStrokes, EndTheLastDashWithTheLine) {
    const QPen pen = WeekChart::dotted(Qt::white, 1.0, {.on = 4.0, .off = 4.0});
    const auto dashes = dashesAlong({{0.0, 0.0}, {10.0, 0.0}}, pen);
    ASSERT_THAT(dashes, SizeIs(2));
    EXPECT_EQ(dashes.back(), QLineF(8.0, 0.0, 10.0, 0.0));
}

TEST(WeekChartStrokes, DashNothingWithoutALineOrAPattern) {
    const QPen pen = WeekChart::dotted(Qt::white, 1.0, {.on = 4.0, .off = 4.0});
    EXPECT_THAT(dashesAlong({}, pen), IsEmpty());
    EXPECT_THAT(dashesAlong({{1.0, 1.0}}, pen), IsEmpty());
    EXPECT_THAT(dashesAlong(bent, WeekChart::solid(Qt::white, 1.0)), IsEmpty());
    EXPECT_THAT(dashesAlong({{1.0, 1.0}, {1.0, 1.0}}, pen), SizeIs(1));
}

TEST(WeekChartStrokes, RoundTheEndsOfADash) {
    const QRectF across = WeekChart::rounded({10.0, 20.0, 14.0, 20.0}, 3.0).boundingRect();
    EXPECT_NEAR(across.left(), 8.5, 1e-9);
    EXPECT_NEAR(across.right(), 15.5, 1e-9);
    EXPECT_NEAR(across.top(), 18.5, 1e-9);
    EXPECT_NEAR(across.bottom(), 21.5, 1e-9);
    const QRectF dot = WeekChart::rounded({10.0, 20.0, 10.0, 20.0}, 3.0).boundingRect();
    EXPECT_NEAR(dot.width(), 3.0, 1e-9);
    EXPECT_NEAR(dot.height(), 3.0, 1e-9);
}

/// How much of the pixels differ clearly.
double difference(const QImage& left, const QImage& right) {
    int differing = 0;
    int drawn = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            drawn += qAlpha(left.pixel(x, y)) > 0 ? 1 : 0;
            differing += std::abs(qAlpha(left.pixel(x, y)) - qAlpha(right.pixel(x, y))) > 48 ? 1 : 0;
        }
    }
    return static_cast<double>(differing) / drawn;
}

TEST(WeekChartStrokes, LookLikeWhatThePenItselfDraws) {
    for (const Line line : {Line::typical, Line::ghost}) {
        const QPen pen = WeekChart::strokeOf(line, Palette::resolved(Appearance::dark), &Palette::cyan);
        Canvas byPen(100.0, 50.0, 2.0);
        byPen.draw([&](QPainter& painter) {
            painter.setPen(pen);
            QPolygonF polyline;
            for (const Point& point : bent) polyline.append(WeekChart::at(point));
            painter.drawPolyline(polyline);
        });
        Canvas byDashes(100.0, 50.0, 2.0);
        byDashes.draw([&](QPainter& painter) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(pen.color());
            for (const QLineF& dash : dashesAlong(bent, pen))
                painter.drawConvexPolygon(WeekChart::rounded(dash, pen.widthF()));
        });
        EXPECT_LT(difference(byPen.image(), byDashes.image()), 0.05);
    }
}

TEST(WeekChartStrokes, HaveARhythmOfTheirOwn) {
    const Palette& dark = Palette::resolved(Appearance::dark);
    const Palette& light = Palette::resolved(Appearance::light);
    EXPECT_EQ(WeekChart::strokeOf(Line::burned, dark, &Palette::cyan).style(), Qt::SolidLine);
    EXPECT_EQ(WeekChart::strokeOf(Line::burned, dark, &Palette::cyan).widthF(), 2.6);
    EXPECT_EQ(WeekChart::strokeOf(Line::forecast, dark, &Palette::warn).color(), dark.warn);
    const QPen typical = WeekChart::strokeOf(Line::typical, light, &Palette::cyan);
    EXPECT_NEAR(typical.dashPattern()[0] * typical.widthF(), 2.0, 1e-9);
    EXPECT_NEAR(typical.dashPattern()[1] * typical.widthF(), 3.5, 1e-9);
    EXPECT_EQ(typical.color(), withOpacity(light.violet, 0.68));
}

} // namespace
