#include "HarrowlaneApp/Drawing/PaceRails.h"

#include <limits>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;
using DrawingTests::near;
using DrawingTests::over;

const Palette& dark = Palette::resolved(Appearance::dark);
constexpr Look darkLook{.appearance = Appearance::dark};
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

Rail plainRail(double fraction) {
    return {.fraction = fraction, .colors = {dark.good, dark.cyan}};
}

TEST(RailLayout, FillsFromTheLeft) {
    const auto layout = plainRail(0.25).layOut({10, 20}, 200);
    EXPECT_EQ(layout.track, QRectF(10, 20, 200, 8));
    EXPECT_EQ(layout.fill, QRectF(10, 20, 50, 8));
    EXPECT_TRUE(layout.hot.isEmpty());
}

TEST(RailLayout, HoldsTheFillToTheRail) {
    EXPECT_EQ(plainRail(7.0).layOut({10, 20}, 200).fill.width(), 200.0);
    EXPECT_TRUE(plainRail(-0.5).layOut({10, 20}, 200).fill.isEmpty());
    EXPECT_TRUE(plainRail(0.0).layOut({10, 20}, 200).fill.isEmpty());
    EXPECT_TRUE(plainRail(nan).layOut({10, 20}, 200).fill.isEmpty());
}

TEST(RailLayout, ShowsAtLeastThreePointsOfAnything) {
    EXPECT_EQ(plainRail(1e-9).layOut({0, 0}, 200).fill.width(), 3.0);
    EXPECT_EQ(plainRail(0.015).layOut({0, 0}, 200).fill.width(), 3.0);
    EXPECT_NEAR(plainRail(0.016).layOut({0, 0}, 200).fill.width(), 3.2, 1e-9);
}

TEST(RailLayout, BeyondTheGateItIsHot) {
    Rail rail = plainRail(0.74);
    rail.gate = 0.6;
    EXPECT_TRUE(rail.layOut({0, 0}, 100).hot.isEmpty()) << "without hot colours the gate is off";
    rail.hotColors = {dark.warn, dark.warnHot};
    EXPECT_EQ(rail.layOut({0, 0}, 100).hot, QRectF(60, 0, 14, 8));
    rail.gate.reset();
    EXPECT_TRUE(rail.layOut({0, 0}, 100).hot.isEmpty());
    rail.gate = 0.9;
    EXPECT_TRUE(rail.layOut({0, 0}, 100).hot.isEmpty()) << "a gate that is not reached";
    rail.gate = -1.0;
    EXPECT_EQ(rail.layOut({0, 0}, 100).hot, QRectF(0, 0, 74, 8));
}

class RailPixels : public testing::TestWithParam<double> {
protected:
    Canvas paint(const Rail& rail) const {
        Canvas canvas(120, 20, GetParam(), dark.card);
        return canvas.draw([&](QPainter& painter) { rail.paint(painter, {10, 6}, 100, darkLook); });
    }
};

TEST_P(RailPixels, RunsFromItsFirstColourToItsLast) {
    const Canvas canvas = paint(plainRail(0.8));
    EXPECT_TRUE(near(canvas.at(11.5, 10), dark.good, 8));
    EXPECT_TRUE(near(canvas.at(88.5, 10), dark.cyan, 8));
    EXPECT_TRUE(near(canvas.at(95, 10), over(dark.trackFill, dark.card)));
    EXPECT_TRUE(near(canvas.at(9.5, 10), dark.card));
    EXPECT_TRUE(near(canvas.at(110.5, 10), dark.card));
}

TEST_P(RailPixels, ChangesItsColoursAtTheGate) {
    Rail rail = plainRail(0.8);
    rail.gate = 0.5;
    rail.hotColors = {dark.crit, dark.critHot};
    const Canvas canvas = paint(rail);
    EXPECT_TRUE(near(canvas.at(58.9, 10), dark.cyan, 8)) << "the base ends at the gate";
    EXPECT_TRUE(near(canvas.at(61.1, 10), dark.crit, 10));
    EXPECT_TRUE(near(canvas.at(88.5, 10), dark.critHot, 10));
}

TEST_P(RailPixels, HasRoundEnds) {
    const Canvas canvas = paint(plainRail(1.0));
    EXPECT_TRUE(near(canvas.at(10.1, 6.1), dark.card));
    EXPECT_TRUE(near(canvas.at(109.9, 13.9), dark.card));
}

TEST_P(RailPixels, WithoutColoursShowsItsTrackAlone) {
    EXPECT_TRUE(near(paint({.fraction = 0.5}).at(30, 10), over(dark.trackFill, dark.card)));
}

INSTANTIATE_TEST_SUITE_P(Scales, RailPixels, testing::Values(1.0, 2.0, 4.0));

TEST(ClockLine, StandsWhereTheTimeIsAndOnTheRails) {
    EXPECT_NEAR((ClockLine{.fraction = 0.6}.place(80, 194)), 196.4, 1e-9);
    EXPECT_EQ((ClockLine{.fraction = 1.7}.place(80, 194)), 274.0);
    EXPECT_EQ((ClockLine{.fraction = -1}.place(80, 194)), 80.0);
    EXPECT_EQ((ClockLine{.fraction = nan}.place(80, 194)), 80.0);
}

TEST(PaceRailsLayout, PutsKeysLeftAndValuesRightOfTheRails) {
    const PaceRails rails{.tokensUsed = 0.74, .timeUsed = 0.6};
    const auto layout = rails.layOut({26, 96}, 288);
    EXPECT_EQ(layout.tokensRow, QRectF(26, 96, 288, 18));
    EXPECT_EQ(layout.sessionRow, QRectF(26, 114, 288, 18));
    EXPECT_EQ(layout.tokensTrack, QRectF(80, 101, 194, 8));
    EXPECT_EQ(layout.sessionTrack, QRectF(80, 119, 194, 8));
    EXPECT_EQ(layout.clock, QRectF(80, 98.5, 194, 31)) << "2.5 above and below";
    EXPECT_EQ(rails.height(), 36.0);
    EXPECT_FALSE(layout.start);
    EXPECT_FALSE(layout.end);
}

TEST(PaceRailsLayout, ANarrowPlaceLeavesNoRail) {
    const auto layout = PaceRails{.tokensUsed = 0.74, .timeUsed = 0.6}.layOut({0, 0}, 50);
    EXPECT_EQ(layout.tokensTrack.width(), 0.0);
}

PaceRails withAxis(double timeUsed) {
    return {.timeUsed = timeUsed, .axis = PaceRails::Axis{QStringLiteral("11:15 AM"), QStringLiteral("4:15 PM")}};
}

TEST(PaceRailsAxis, StandsUnderTheEndsOfTheRails) {
    const PaceRails rails = withAxis(0.5);
    EXPECT_GT(rails.height(), 36.0);
    const auto layout = rails.layOut({0, 0}, 294);
    ASSERT_TRUE(layout.start && layout.end);
    EXPECT_EQ(layout.start->text, QStringLiteral("11:15 AM"));
    EXPECT_EQ(layout.start->room.left(), 54.0);
    EXPECT_EQ(layout.start->room.right(), 54.0 + 100.0 - 14.0);
    EXPECT_EQ(layout.end->room.left(), 54.0 + 100.0 + 14.0);
    EXPECT_EQ(layout.end->room.right(), 254.0);
    EXPECT_GE(layout.start->room.top(), layout.sessionTrack.bottom() + 2.5);
    EXPECT_LE(layout.start->room.bottom(), rails.height());
}

TEST(PaceRailsAxis, ALabelNearTheClockLineIsLeftOut) {
    const auto early = withAxis(0.305).layOut({0, 0}, 294);
    EXPECT_FALSE(early.start);
    EXPECT_TRUE(early.end);
    const auto late = withAxis(0.695).layOut({0, 0}, 294);
    EXPECT_TRUE(late.start);
    EXPECT_FALSE(late.end);
    EXPECT_TRUE(withAxis(0.31).layOut({0, 0}, 294).start) << "at exactly 62 points it stays";
}

TEST(PaceRailsAxis, ALongLabelIsCutBeforeTheClockLine) {
    PaceRails rails = withAxis(0.4);
    rails.axis->start = QString(200, QLatin1Char('M'));
    const auto layout = rails.layOut({0, 0}, 294);
    ASSERT_TRUE(layout.start);
    EXPECT_LE(HUDType::mono(10).width(layout.start->text), layout.start->room.width());
}

TEST(PaceRails, TheGateIsTheTimeWhereTokensRunAhead) {
    const Rail amber = PaceRails{.tokensUsed = 0.72, .timeUsed = 0.6}.tokensRail(dark);
    EXPECT_EQ(amber.gate, 0.6);
    EXPECT_EQ(amber.hotColors, (std::vector{dark.warn, dark.warnHot}));
    const Rail red = PaceRails{.tokensUsed = 0.9, .timeUsed = 0.6}.tokensRail(dark);
    EXPECT_EQ(red.hotColors, (std::vector{dark.crit, dark.critHot}));
    const Rail calm = PaceRails{.tokensUsed = 0.6, .timeUsed = 0.6}.tokensRail(dark);
    EXPECT_FALSE(calm.gate);
    EXPECT_TRUE(calm.hotColors.empty());
    EXPECT_EQ(calm.colors, (std::vector{dark.good, dark.cyan}));
}

TEST(PaceRails, AtTheVeryBeginningNothingIsHot) {
    EXPECT_FALSE((PaceRails{.tokensUsed = 0.5, .timeUsed = 0.059}.tokensRail(dark).gate));
    EXPECT_TRUE((PaceRails{.tokensUsed = 0.5, .timeUsed = 0.06}.tokensRail(dark).gate));
}

TEST(PaceRails, TheSessionIsPaler) {
    const Rail rail = PaceRails{.tokensUsed = 0.7, .timeUsed = 0.6}.sessionRail(dark);
    EXPECT_EQ(rail.fraction, 0.6);
    EXPECT_EQ(rail.colors, std::vector{withOpacity(dark.cyan, 0.6)});
    EXPECT_FALSE(rail.gate);
}

class PaceRailsPixels : public testing::TestWithParam<double> {
protected:
    Canvas paint(const PaceRails& rails, const Look& look = darkLook) const {
        Canvas canvas(288, 36, GetParam(), dark.card);
        return canvas.draw([&](QPainter& painter) { rails.paint(painter, {0, 0}, 288, look); });
    }
};

TEST_P(PaceRailsPixels, TheClockLineStandsFreeOfTheRails) {
    // At 0.5 the line's middle is 151: at one pixel a point it covers three quarters of the pixels at both sides.
    const QColor line = over(withOpacity(dark.ink, GetParam() > 1 ? 1.0 : 0.75), dark.card);
    const Canvas canvas = paint({.tokensUsed = 0.9, .timeUsed = 0.5});
    for (const double y : {4.5, 9.0, 18.0, 27.0, 31.5}) EXPECT_TRUE(near(canvas.at(151.2, y), line, 3)) << y;
    EXPECT_TRUE(near(canvas.at(149.4, 9), dark.card, GetParam() > 1 ? 2 : 90));
    EXPECT_TRUE(near(canvas.at(152.6, 9), dark.card, GetParam() > 1 ? 2 : 90));
    EXPECT_TRUE(near(canvas.at(151, 1.5), dark.card)) << "no more than 2.5 above";
    EXPECT_TRUE(near(canvas.at(151, 34.5), dark.card)) << "nor below";
}

TEST_P(PaceRailsPixels, TheOverspentPartShowsInItsOwnColour) {
    const Canvas canvas = paint({.tokensUsed = 0.9, .timeUsed = 0.5});
    EXPECT_TRUE(near(canvas.at(147, 9), dark.cyan, 10));
    EXPECT_TRUE(near(canvas.at(154.5, 9), dark.crit, 14));
    EXPECT_TRUE(near(canvas.at(226, 9), dark.critHot, 10));
    EXPECT_TRUE(near(canvas.at(240, 9), over(dark.trackFill, dark.card)));
    const QColor track = over(dark.trackFill, dark.card);
    EXPECT_TRUE(near(canvas.at(100, 27), over(withOpacity(dark.cyan, 0.6), track)));
    EXPECT_TRUE(near(canvas.at(200, 27), track));
}

TEST_P(PaceRailsPixels, TheStripeBeneathTheLineIsThePanelsFill) {
    const Canvas canvas =
        paint({.tokensUsed = 0.9, .timeUsed = 0.5}, {.appearance = Appearance::dark, .increaseContrast = true});
    EXPECT_TRUE(near(canvas.at(149.4, 18), dark.cardRaised, GetParam() > 1 ? 2 : 8));
}

INSTANTIATE_TEST_SUITE_P(Scales, PaceRailsPixels, testing::Values(1.0, 2.0, 4.0));

} // namespace
