// What the popover looks like.

#include <gtest/gtest.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Views/NowScene.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;
using DrawingTests::near;
using UsageModel::UsageSnapshot;
using ViewTests::find;
using ViewTests::NowScene;
using ViewTests::thursday;

constexpr Look dark{.appearance = Appearance::dark};
constexpr Look light{.appearance = Appearance::light};

QImage pictureOf(const UsageSnapshot& snapshot, const Look& look, double scale = 2.0) {
    const NowScene scene({.snapshot = snapshot}, look);
    return image(*scene.view, scale);
}

bool holds(const QImage& picture, const QRectF& place, const QColor& color) {
    for (double y = place.top(); y < place.bottom(); y += 0.5) {
        for (double x = place.left(); x < place.right(); x += 0.5) {
            if (near(Canvas::pixel(picture, x, y), color, 3)) return true;
        }
    }
    return false;
}

TEST(NowPicture, IsOfTheViewsNaturalSizeAtAnyScale) {
    for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
        const QImage picture = pictureOf(ViewTests::overPace(), dark, scale);
        EXPECT_EQ(picture.size(), QSize(340, 548) * scale);
        EXPECT_EQ(picture.devicePixelRatio(), scale);
    }
}

TEST(NowPicture, IsNoneWithoutAScale) {
    EXPECT_TRUE(pictureOf(ViewTests::overPace(), dark, 0.0).isNull());
}

TEST(NowPicture, HasRoundCorners) {
    const QImage picture = pictureOf(ViewTests::overPace(), dark);
    for (const QPointF corner : {QPointF(1, 1), QPointF(338, 1), QPointF(1, 546), QPointF(338, 546)}) {
        EXPECT_EQ(Canvas::pixel(picture, corner.x(), corner.y()).alpha(), 0);
    }
    EXPECT_EQ(Canvas::pixel(picture, 170, 5).alpha(), 255);
    EXPECT_EQ(Canvas::pixel(picture, 5, 300).alpha(), 255);
}

TEST(NowPicture, HasSquareCornersWhereTheScreenShowsNothingThroughThem) {
    const NowScene scene({.snapshot = ViewTests::overPace()});
    scene.view->setCorners(NowView::Corners::square);
    EXPECT_EQ(image(*scene.view, 2.0).pixelColor(0, 0).alpha(), 255);
}

TEST(NowPicture, IsDrawnInItsAppearance) {
    EXPECT_TRUE(near(Canvas::pixel(pictureOf(ViewTests::overPace(), dark), 20, 160), dark.palette().card, 8));
    EXPECT_TRUE(near(Canvas::pixel(pictureOf(ViewTests::overPace(), light), 20, 160), light.palette().card, 2));
}

TEST(NowPicture, FollowsALookThatChanges) {
    NowScene scene({.snapshot = ViewTests::overPace()}, dark);
    EXPECT_FALSE(near(image(*scene.view, 1.0).pixelColor(20, 160), light.palette().card, 2));
    scene.look.force(Appearance::light);
    EXPECT_TRUE(near(image(*scene.view, 1.0).pixelColor(20, 160), light.palette().card, 2));
    EXPECT_EQ(find<HUDLabel>(*scene.view, "footerLine").textStyle().opacity, 1.0);
}

/// Within the week's card: its curve, and the figure where it lands.
const QRectF curvePlace(26, 241, 234, 76);
const QRectF landingPlace(265, 241, 40, 76);

TEST(NowPicture, DrawsTheWeekInTheColourOfItsStanding) {
    const Palette& palette = dark.palette();
    const QImage over = pictureOf(ViewTests::overPace(), dark);
    EXPECT_TRUE(holds(over, curvePlace, palette.crit));
    EXPECT_TRUE(holds(over, landingPlace, palette.crit));
    const QImage comfortable = pictureOf(ViewTests::calm(), dark);
    EXPECT_TRUE(holds(comfortable, curvePlace, palette.good));
    EXPECT_FALSE(holds(comfortable, curvePlace, palette.crit));
    UsageSnapshot close = ViewTests::overPace();
    ViewTests::lower(*close.weekSeries, 0.95);
    EXPECT_TRUE(holds(pictureOf(close, dark), curvePlace, palette.warn));
}

TEST(NowPicture, ShowsAnErrorInTheWarningColour) {
    const NowScene scene({.snapshot = ViewTests::overPace()}, light);
    const QRectF footer(16, 515, 200, 25);
    EXPECT_FALSE(holds(image(*scene.view, 2.0), footer, light.palette().warn));
    scene.store->installShim();
    EXPECT_TRUE(holds(image(*scene.view, 2.0), footer, light.palette().warn));
}

TEST(NowPicture, IsFlatWithReducedTransparency) {
    Look flat = dark;
    flat.reduceTransparency = true;
    const QImage picture = pictureOf(ViewTests::overPace(), flat);
    for (const QPointF ground : {QPointF(5, 60), QPointF(170, 5), QPointF(335, 300), QPointF(5, 500)}) {
        EXPECT_EQ(Canvas::pixel(picture, ground.x(), ground.y()).rgb(), dark.palette().ground.rgb());
    }
    EXPECT_EQ(Canvas::pixel(picture, 100, 50).rgb(), dark.palette().card.rgb()) << "no gloss";
    EXPECT_NE(Canvas::pixel(pictureOf(ViewTests::overPace(), dark), 5, 60).rgb(), dark.palette().ground.rgb());
}

TEST(NowPicture, HasStrongPanelsWithIncreasedContrast) {
    Look strong = dark;
    strong.increaseContrast = true;
    const QImage picture = pictureOf(ViewTests::overPace(), strong, 4.0);
    EXPECT_TRUE(near(Canvas::pixel(picture, 20, 160), dark.palette().cardRaised, 4));
    EXPECT_FALSE(near(Canvas::pixel(picture, 100, 47.1), Canvas::pixel(picture, 100, 48.5), 20))
        << "the edge, 1.5 wide";
    EXPECT_FALSE(near(Canvas::pixel(pictureOf(ViewTests::overPace(), dark, 4.0), 100, 47.1),
                      Canvas::pixel(picture, 100, 47.1), 20));
}

TEST(NowPicture, IsTheSameTwice) {
    EXPECT_EQ(pictureOf(ViewTests::overPace(), dark), pictureOf(ViewTests::overPace(), dark));
}

} // namespace
