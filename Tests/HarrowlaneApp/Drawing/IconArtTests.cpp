#include "HarrowlaneApp/Drawing/IconArt.h"

#include <gtest/gtest.h>

#include "HarrowlaneApp/Drawing/Canvas.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::near;

class IconSize : public testing::TestWithParam<int> {
protected:
    QImage image = IconArt::image(GetParam());

    /// A place on the grid of 512.
    QColor at(double x, double y) const {
        const double pixels = GetParam() / 512.0;
        return image.pixelColor(static_cast<int>(x * pixels), static_cast<int>(y * pixels));
    }
};

const QColor clockLine(230, 237, 255);

TEST_P(IconSize, HasAPlateWithRoundCornersOnAClearGround) {
    EXPECT_EQ(image.size(), QSize(GetParam(), GetParam()));
    EXPECT_EQ(at(0, 0).alpha(), 0);
    EXPECT_EQ(at(15, 256).alpha(), 0);
    EXPECT_LT(at(36, 36).alpha(), 30);
    EXPECT_EQ(at(256, 440).alpha(), 255);
    EXPECT_GT(at(256, 440).blue() + 30, at(256, 440).red());
}

TEST_P(IconSize, ShowsTokensAheadOfTheClock) {
    EXPECT_TRUE(near(at(291, 250), clockLine, 4));
    const QColor spent = at(150, 200);
    EXPECT_GT(spent.green(), 180) << "good to cyan before the clock";
    EXPECT_LT(spent.red(), 120);
    const QColor ahead = at(345, 200);
    EXPECT_GT(ahead.red(), 200) << "hot behind it";
    EXPECT_LT(ahead.blue(), 120);
    const QColor track = at(400, 310);
    EXPECT_LT(track.lightness(), 90) << "time has not come so far";
    EXPECT_GT(at(150, 310).blue(), 150);
}

TEST_P(IconSize, TheLineStandsFree) {
    const bool coarse = GetParam() < 64;
    EXPECT_LT(at(coarse ? 266 : 273, 200).lightness(), 110);
    EXPECT_LT(at(coarse ? 316 : 304, 200).lightness(), 110);
}

INSTANTIATE_TEST_SUITE_P(All, IconSize, testing::Values(22, 32, 48, 63, 64, 128, 256, 512, 1024));

TEST(IconArt, At16AColumnOfItsOwnIsLeftToEachPart) {
    const QImage image = IconArt::image(16);
    constexpr int y = 6;
    EXPECT_GT(image.pixelColor(7, y).green(), 180);
    EXPECT_LT(image.pixelColor(8, y).lightness(), 110);
    EXPECT_TRUE(near(image.pixelColor(9, y), clockLine, 4));
    EXPECT_LT(image.pixelColor(10, y).lightness(), 110);
    EXPECT_GT(image.pixelColor(11, y).red(), 130);
}

TEST(IconArt, ALineOfOnePixelIsNotSpreadOverTwo) {
    for (const int side : {16, 22, 24, 32, 48}) {
        const QImage image = IconArt::image(side);
        int full = 0;
        int partial = 0;
        for (int x = side / 3; x < side * 4 / 5; ++x) {
            // Above the rails, where nothing but the line is bright.
            const int lightness = image.pixelColor(x, side / 4).lightness();
            full += lightness > 235 ? 1 : 0;
            partial += lightness > 120 && lightness <= 235 ? 1 : 0;
        }
        EXPECT_GE(full, 1) << side;
        EXPECT_EQ(partial, 0) << side;
    }
}

TEST(IconArt, WithoutASizeIsNull) {
    EXPECT_TRUE(IconArt::image(0).isNull());
    EXPECT_TRUE(IconArt::image(-5).isNull());
}

TEST(Iconset, HoldsEverySizeAtOneAndTwoPixelsAPoint) {
    const auto files = IconArt::iconset();
    ASSERT_EQ(files.size(), 10U);
    EXPECT_EQ(files.front().name, QStringLiteral("icon_16x16.png"));
    EXPECT_EQ(files.front().side, 16);
    EXPECT_EQ(files.back().name, QStringLiteral("icon_512x512@2x.png"));
    EXPECT_EQ(files.back().side, 1024);
}

} // namespace
