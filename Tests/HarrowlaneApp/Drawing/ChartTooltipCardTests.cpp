#include "HarrowlaneApp/Drawing/ChartTooltipCard.h"

#include <gtest/gtest.h>

#include "Canvas.h"
#include "HarrowlaneApp/Drawing/BucketColors.h"
#include "HarrowlaneApp/Drawing/SoftShadow.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;
using DrawingTests::near;

const ChartTooltip::Content curve{.header = "Sat 6:30 AM",
                                  .mark = "forecast",
                                  .rows = {{.label = "Projected", .value = "83%", .isBold = true},
                                           {.label = "Typical week", .value = "66%"},
                                           {.label = "Week elapsed", .value = "65%"}}};

const ChartTooltip::Content session{
    .header = "Wed 10:15 AM – 3:15 PM",
    .mix = {{ChartBucket::fable, 0.60}, {ChartBucket::opus, 0.36}, {ChartBucket::sonnet, 0.04}},
    .rows = {{.label = "Cost of week", .value = "13% of the week", .isBold = true},
             {.label = "Session cap", .value = "over cap on this estimate"}},
    .note = "estimated from how much a full cap usually costs"};

TEST(ChartTooltipCard, IsAsTallAsItsLines) {
    EXPECT_EQ(ChartTooltipCard{curve}.height(), 99.0);
    EXPECT_EQ(ChartTooltipCard{session}.height(), 165.0);
    ChartTooltip::Content measured = session;
    measured.note.reset();
    EXPECT_EQ(ChartTooltipCard{measured}.height(), 137.0);
}

TEST(ChartTooltipCard, FloatsOnItsShadowWithinItsExtent) {
    for (const Appearance appearance : {Appearance::dark, Appearance::light}) {
        const Look look{.appearance = appearance};
        const QColor ground(200, 200, 200);
        Canvas canvas(340.0, 300.0, 1.0, ground);
        const QRectF rect(60.0, 60.0, 210.0, ChartTooltipCard{session}.height());
        canvas.draw([&](QPainter& painter) { ChartTooltipCard{session}.paint(painter, rect, look); });
        EXPECT_TRUE(near(canvas.at(rect.left() + 5.0, rect.center().y()), look.palette().cardRaised));
        EXPECT_LT(canvas.at(rect.center().x(), rect.bottom() + 6.0).red(), 165);
        const QRectF extent = ChartTooltipCard::extent(rect);
        for (double x = 0.5; x < 340.0; x += 1.0) {
            for (double y = 0.5; y < 300.0; y += 1.0) {
                const bool isFree = extent.contains(x, y) || canvas.at(x, y) == ground;
                EXPECT_TRUE(isFree) << x << "," << y;
            }
        }
    }
}

TEST(ChartTooltipCard, ShowsAFamilyByItsColour) {
    const Look look{.appearance = Appearance::dark};
    Canvas canvas(210.0, 165.0, 2.0);
    canvas.draw([&](QPainter& painter) { ChartTooltipCard{session}.paint(painter, {0.0, 0.0, 210.0, 165.0}, look); });
    EXPECT_TRUE(near(canvas.at(15.0, 46.5), bucketColor(ChartBucket::fable, Appearance::dark)));
    EXPECT_TRUE(near(canvas.at(15.0, 63.5), bucketColor(ChartBucket::opus, Appearance::dark)));
    EXPECT_TRUE(near(canvas.at(15.0, 80.5), bucketColor(ChartBucket::sonnet, Appearance::dark)));
}

TEST(SoftShadow, IsDarkestBelowItsCasterAndFadesOut) {
    Canvas canvas(200.0, 200.0, 1.0);
    const SoftShadow shadow{.drop = 8.0, .blur = 24.0, .color = QColor(0, 0, 0, 100)};
    canvas.draw([&](QPainter& painter) { shadow.paint(painter, {60.0, 60.0, 80.0, 80.0}); });
    EXPECT_NEAR(canvas.at(100.0, 108.0).alpha(), 100, 1);
    EXPECT_NEAR(canvas.at(60.0, 108.0).alpha(), 50, 3);
    EXPECT_LT(canvas.at(40.0, 108.0).alpha(), 8);
    EXPECT_EQ(canvas.at(30.0, 108.0).alpha(), 0);
}

} // namespace
