#include "HarrowlaneApp/Drawing/PaceRatio.h"

#include <gtest/gtest.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;
using DrawingTests::placeOfColor;

const Palette& dark = Palette::resolved(Appearance::dark);
constexpr Look darkLook{.appearance = Appearance::dark};

Canvas paint(const PaceRatio& ratio) {
    Canvas canvas(100, 40, 4.0, dark.card);
    return canvas.draw([&](QPainter& painter) { ratio.paint(painter, {90, 2}, darkLook); });
}

TEST(PaceRatio, IsDrawnInTheColourOfItsSeverity) {
    EXPECT_FALSE(placeOfColor(paint({.tokensUsed = 0.5, .timeUsed = 0.5}).image(), dark.good).isEmpty());
    EXPECT_FALSE(placeOfColor(paint({.tokensUsed = 0.55, .timeUsed = 0.5}).image(), dark.warn).isEmpty());
    EXPECT_FALSE(placeOfColor(paint({.tokensUsed = 0.9, .timeUsed = 0.5}).image(), dark.crit).isEmpty());
}

TEST(PaceRatio, TheSignsInkIsFlushWithTheRightSide) {
    const PaceRatio ratio{.tokensUsed = 0.9, .timeUsed = 0.3};
    const QRectF place = placeOfColor(paint(ratio).image(), dark.crit);
    EXPECT_NEAR(place.right(), 90.0, 0.6);
    EXPECT_NEAR(place.left(), 90.0 - ratio.figureWidth(), 2.0);
}

TEST(PaceRatio, TheDigitsStandInTheMiddleOfTheirLine) {
    const QRectF place = placeOfColor(paint({.tokensUsed = 0.9, .timeUsed = 0.5}).image(), dark.crit);
    EXPECT_NEAR(place.center().y(), 2.0 + 11.0, 0.8);
    EXPECT_NEAR(place.height(), 0.75 * 21.0, 1.5);
}

TEST(PaceRatio, TheCaptionHangsBelow) {
    const QRectF place = placeOfColor(paint({.tokensUsed = 0.9, .timeUsed = 0.5}).image(), dark.dim);
    EXPECT_GT(place.top(), 24.0);
    EXPECT_LT(place.bottom(), 36.5);
    EXPECT_NEAR(place.right(), 90.0, 1.0);
}

TEST(PaceRatio, AHugeRateTakesNoMoreRoom) {
    EXPECT_NEAR((PaceRatio{.tokensUsed = 20.0, .timeUsed = 1.0}).figureWidth(),
                (PaceRatio{.tokensUsed = 9.9, .timeUsed = 1.0}).figureWidth(), 1e-9);
}

TEST(PaceRatio, GrowsWithItsSize) {
    const PaceRatio large{.tokensUsed = 0.5, .timeUsed = 0.5, .size = 42.0};
    EXPECT_NEAR(large.figureWidth(), 2.0 * (PaceRatio{.tokensUsed = 0.5, .timeUsed = 0.5}).figureWidth(), 1.2);
    EXPECT_EQ(large.extent().height(), 43.0 + 1.0 + 11.0);
}

TEST(PaceRatio, IsAtLeastAsWideAsItsCaption) {
    EXPECT_NEAR((PaceRatio{.tokensUsed = 0.5, .timeUsed = 0.5, .size = 8.0}).extent().width(),
                HUDType::text(9.5).width(QStringLiteral("burn rate")), 1e-9);
}

TEST(PaceOverspendNote, SpeaksFromTwoPercentOn) {
    EXPECT_EQ((PaceOverspendNote{.tokensUsed = 0.74, .timeUsed = 0.6}).phrase(), QStringLiteral("14% overspent"));
    EXPECT_EQ((PaceOverspendNote{.tokensUsed = 0.5, .timeUsed = 0.49}).phrase(), QString());
    EXPECT_EQ((PaceOverspendNote{.tokensUsed = 0.52, .timeUsed = 0.5}).phrase(), QStringLiteral("2% overspent"));
}

TEST(PaceOverspendNote, TakesNoRoomWithoutWords) {
    EXPECT_EQ((PaceOverspendNote{.tokensUsed = 0.1, .timeUsed = 0.6}).extent(), QSizeF(0, 0));
    EXPECT_GT((PaceOverspendNote{.tokensUsed = 0.9, .timeUsed = 0.6}).extent().width(), 40.0);
}

TEST(PaceOverspendNote, IsDrawnInTheSignalColour) {
    Canvas canvas(100, 20, 4.0, dark.card);
    canvas.draw([](QPainter& painter) {
        PaceOverspendNote{.tokensUsed = 0.9, .timeUsed = 0.6}.paint(painter, {4, 3}, darkLook);
    });
    const QRectF place = placeOfColor(canvas.image(), dark.crit);
    EXPECT_GE(place.left(), 4.0);
    EXPECT_GE(place.top(), 3.0);
    EXPECT_LE(place.bottom(), 16.5);
}

} // namespace
