#include <array>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Drawing/HUDGround.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;
using DrawingTests::near;
using DrawingTests::over;

const Palette& dark = Palette::resolved(Appearance::dark);
constexpr Look darkLook{.appearance = Appearance::dark};
constexpr Look flatLook{.appearance = Appearance::dark, .reduceTransparency = true};
constexpr Look strongLook{.appearance = Appearance::dark, .increaseContrast = true};
constexpr std::array scales{1.0, 2.0, 4.0};

Canvas groundOf(const QRectF& rect, const Look& look) {
    Canvas canvas(100, 200, 1.0);
    return canvas.draw([&](QPainter& painter) { HUDGround::paint(painter, rect, look); });
}

TEST(HUDGround, HazeScalesWithTheGroundAndItsLargerSide) {
    const auto spots = HUDGround::haze(QRectF(10, 20, 100, 200), darkLook);
    ASSERT_EQ(spots.size(), 3U);
    EXPECT_NEAR(spots[0].center.x(), 20.0, 1e-9);
    EXPECT_NEAR(spots[0].center.y(), 8.0, 1e-9);
    EXPECT_NEAR(spots[0].radius, 190.0, 1e-9);
    EXPECT_NEAR(spots[1].radius, 170.0, 1e-9);
    EXPECT_NEAR(spots[2].center.y(), 236.0, 1e-9);
    EXPECT_NEAR(HUDGround::haze(QRectF(0, 0, 400, 200), darkLook)[2].radius, 420.0, 1e-9);
}

TEST(HUDGround, IsFlatWithReducedTransparency) {
    EXPECT_TRUE(HUDGround::haze(QRectF(0, 0, 100, 200), flatLook).empty());
    const Canvas canvas = groundOf(QRectF(0, 0, 100, 200), flatLook);
    for (const double y : {0.5, 60.0, 120.0, 199.5}) {
        for (const double x : {0.5, 50.0, 99.5}) EXPECT_EQ(canvas.at(x, y), dark.bg());
    }
}

TEST(HUDGround, IsBrightestUnderTheSkirtsOfItsHaze) {
    const Canvas canvas = groundOf(QRectF(0, 0, 100, 200), darkLook);
    EXPECT_GT(canvas.at(10, 0).blue(), dark.bg().blue() + 8);
    EXPECT_TRUE(near(canvas.at(10, 0),
                     over(withOpacity(dark.violet, 0.055 * 0.5), over(withOpacity(dark.cyan, 0.055), dark.bg())), 3));
    EXPECT_LT(canvas.at(50, 110).blue(), canvas.at(10, 0).blue());
    EXPECT_EQ(canvas.at(50, 110).alpha(), 255);
}

TEST(HUDGround, StaysWithinItsRectangle) {
    const Canvas canvas = groundOf(QRectF(20, 20, 60, 60), darkLook);
    EXPECT_EQ(canvas.at(19.5, 50).alpha(), 0);
    EXPECT_EQ(canvas.at(50, 81).alpha(), 0);
    EXPECT_EQ(canvas.at(20.5, 79.5).alpha(), 255);
}

TEST(HUDGround, AnEmptyGroundDrawsNothing) {
    const Canvas canvas = groundOf(QRectF(), darkLook);
    EXPECT_EQ(canvas.at(0, 0).alpha(), 0);
}

TEST(HUDPanel, HasAThinEdgeAndAGloss) {
    const auto surface = HUDPanel{}.surface(darkLook);
    EXPECT_EQ(surface.fill, dark.card);
    EXPECT_EQ(surface.edge, dark.edge);
    EXPECT_EQ(surface.edgeWidth, 1.0);
    EXPECT_FALSE(surface.wash);
    ASSERT_TRUE(surface.gloss);
    EXPECT_NEAR(surface.gloss->alphaF(), 0.035, 1e-4);
}

TEST(HUDPanel, HasNoGlossWithReducedTransparency) {
    EXPECT_FALSE(HUDPanel{}.surface(flatLook).gloss);
    EXPECT_TRUE((HUDPanel{.tint = dark.warn}.surface(flatLook).wash)) << "everything else stays";
}

TEST(HUDPanel, RaisesItsFillAndEdgeWithIncreasedContrast) {
    const auto surface = HUDPanel{}.surface(strongLook);
    EXPECT_EQ(surface.fill, dark.cardRaised);
    EXPECT_EQ(surface.edge, dark.edgeStrong);
    EXPECT_EQ(surface.edgeWidth, 1.5);
}

TEST(HUDPanel, ATintWashesItAndColoursItsEdge) {
    const HUDPanel panel{.tint = dark.warn};
    EXPECT_EQ(panel.surface(darkLook).edge, withOpacity(dark.warn, 0.34));
    EXPECT_EQ(panel.surface(darkLook).wash, withOpacity(dark.warn, 0.1));
    EXPECT_EQ(panel.surface(strongLook).edge, withOpacity(dark.warn, 0.75));
    EXPECT_EQ(panel.surface(strongLook).wash, withOpacity(dark.warn, 0.18));
    EXPECT_EQ(panel.surface(strongLook).edgeWidth, 1.5);
}

class PanelPixels : public testing::TestWithParam<double> {
protected:
    Canvas paint(const HUDPanel& panel, const Look& look) const {
        Canvas canvas(100, 60, GetParam());
        return canvas.draw([&](QPainter& painter) { panel.paint(painter, QRectF(10, 10, 80, 40), look); });
    }
};

TEST_P(PanelPixels, TheEdgeLiesInside) {
    const Canvas canvas = paint({}, flatLook);
    EXPECT_EQ(canvas.at(9.9, 30).alpha(), 0);
    EXPECT_TRUE(near(canvas.at(10.4, 30), over(dark.edge, dark.card)));
    EXPECT_TRUE(near(canvas.at(89.6, 30), over(dark.edge, dark.card)));
    EXPECT_TRUE(near(canvas.at(50, 10.4), over(dark.edge, dark.card)));
    EXPECT_TRUE(near(canvas.at(12, 30), dark.card));
    EXPECT_EQ(canvas.at(90.1, 30).alpha(), 0);
}

TEST_P(PanelPixels, TheCornersAreRound) {
    const Canvas canvas = paint({}, flatLook);
    EXPECT_EQ(canvas.at(10.3, 10.3).alpha(), 0);
    EXPECT_EQ(canvas.at(89.7, 49.7).alpha(), 0);
    // The corner's circle of radius 12 passes 3.5 inside of the corner on the diagonal.
    EXPECT_EQ(canvas.at(15, 15).alpha(), 255);
}

TEST_P(PanelPixels, TheGlossFadesDownwards) {
    const Canvas canvas = paint({}, darkLook);
    EXPECT_TRUE(near(canvas.at(50, 12), over(withOpacity(Qt::white, 0.035 * 0.95), dark.card)));
    EXPECT_TRUE(near(canvas.at(50, 47), over(withOpacity(Qt::white, 0.035 * 0.07), dark.card)));
}

TEST_P(PanelPixels, TheEdgeIsThickerWithIncreasedContrast) {
    const Canvas canvas =
        paint({}, {.appearance = Appearance::dark, .reduceTransparency = true, .increaseContrast = true});
    EXPECT_TRUE(near(canvas.at(10.4, 30), over(dark.edgeStrong, dark.cardRaised)));
    EXPECT_FALSE(near(canvas.at(11.2, 30), dark.cardRaised)) << "half a point more of it";
    EXPECT_TRUE(near(canvas.at(12.2, 30), dark.cardRaised));
}

TEST_P(PanelPixels, TheWashLiesOverTheFill) {
    const Canvas canvas = paint({.tint = dark.warn, .radius = 10}, flatLook);
    const QColor washed = over(withOpacity(dark.warn, 0.1), dark.card);
    EXPECT_TRUE(near(canvas.at(50, 30), washed));
    EXPECT_TRUE(near(canvas.at(10.4, 30), over(withOpacity(dark.warn, 0.34), washed)));
}

INSTANTIATE_TEST_SUITE_P(Scales, PanelPixels, testing::ValuesIn(scales));

} // namespace
