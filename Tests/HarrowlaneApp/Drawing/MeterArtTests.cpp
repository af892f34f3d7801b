#include "HarrowlaneApp/Drawing/MeterArt.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Drawing/MeterStrips.h"

namespace {

using namespace HarrowlaneApp;
using namespace HarrowlaneApp::MeterArt;
using DrawingTests::Canvas;
using DrawingTests::near;
using DrawingTests::placeOf;
using UsageModel::Severity;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

Reading anchored(double tokens, double time) {
    return {.tokensUsed = tokens, .timeUsed = time, .anchored = true};
}

QColor faded(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

/// `top` over a translucent colour.
QColor onto(const QColor& top, const QColor& bottom) {
    const double upper = top.alphaF();
    const double lower = bottom.alphaF() * (1.0 - upper);
    const auto mixed = [&](double one, double other) { return (one * upper + other * lower) / (upper + lower); };
    return QColor::fromRgbF(static_cast<float>(mixed(top.redF(), bottom.redF())),
                            static_cast<float>(mixed(top.greenF(), bottom.greenF())),
                            static_cast<float>(mixed(top.blueF(), bottom.blueF())), static_cast<float>(upper + lower));
}

TEST(MeterColors, AreItsOwn) {
    EXPECT_TRUE(near(MeterArt::Colors::of(Severity::green), QColor(51, 209, 153), 1));
    EXPECT_TRUE(near(MeterArt::Colors::of(Severity::amber), QColor(255, 179, 51), 1));
    EXPECT_TRUE(near(MeterArt::Colors::of(Severity::red), QColor(255, 102, 128), 1));
    EXPECT_TRUE(near(MeterArt::Colors::idle(), QColor(133, 148, 184), 1));
    EXPECT_TRUE(near(MeterArt::Colors::track(), QColor(128, 128, 128, 77), 1));
    EXPECT_TRUE(near(MeterArt::Colors::tick(), QColor(242, 242, 242, 230), 1));
}

TEST(MeterReading, IsThatOfTheWindowThatBinds) {
    UsageModel::UsageSnapshot snapshot;
    snapshot.meters = {
        {.kind = UsageModel::WindowKind::session5h, .used = 0.3},
        {.kind = UsageModel::WindowKind::weeklyAll,
         .used = 0.7,
         .elapsedFraction = 0.5,
         .confidence = {.anchored = true}},
    };
    snapshot.binding = UsageModel::WindowKind::weeklyAll;
    EXPECT_EQ(readingOf(snapshot), anchored(0.7, 0.5));
    EXPECT_EQ(menuBarImage(snapshot, 18, 2), menuBarImage(anchored(0.7, 0.5), 18, 2));
}

TEST(MeterReading, IsIdleWithoutABindingWindow) {
    const UsageModel::UsageSnapshot snapshot;
    EXPECT_EQ(readingOf(snapshot), Reading{});
    EXPECT_EQ(layOut(readingOf(snapshot), 18).figure, QStringLiteral("–"));
}

TEST(MeterLayout, TheBarStandsInTheMiddleOfItsHeight) {
    EXPECT_EQ(layOut(anchored(0.5, 0.5), 18).bar.outline, QRectF(0.5, 4.5, 25, 9));
    EXPECT_EQ(layOut(anchored(0.5, 0.5), 22).bar.outline.top(), 6.5);
    EXPECT_EQ(layOut(anchored(0.5, 0.5), 17.6).bar.outline.top(), 4.5) << "round(8.6) / 2";
    EXPECT_EQ(layOut(anchored(0.5, 0.5), 9).bar.outline.top(), 0.0);
}

TEST(MeterLayout, TheImageIsAsWideAsBarAndFigure) {
    for (const auto& reading : {anchored(0.74, 0.6), anchored(1.0, 0.08), Reading{}}) {
        const Layout layout = layOut(reading, 18);
        const double figure = HUDType::systemBold(12).width(layout.figure);
        EXPECT_EQ(layout.width, std::ceil(figure + 33.0));
        EXPECT_EQ(layout.height, 18.0);
        EXPECT_EQ(layout.figureStart.x(), 31.0);
    }
}

struct FigureRow {
    const char* story;
    Reading reading;
    const char* figure;
    QColor color;
};

TEST(MeterLayout, FigureAndColourGoByTheRatio) {
    for (const FigureRow& row : {
             FigureRow{"calm", anchored(0.41, 0.6), "0.7×", MeterArt::Colors::of(Severity::green)},
             FigureRow{"over pace", anchored(0.74, 0.6), "1.2×", MeterArt::Colors::of(Severity::amber)},
             FigureRow{"overusing", anchored(0.95, 0.5), "1.9×", MeterArt::Colors::of(Severity::red)},
             FigureRow{"held to 9.9", anchored(20, 1), "9.9×", MeterArt::Colors::of(Severity::red)},
             FigureRow{"too early to read", anchored(0.5, 0.05), "1.0×", MeterArt::Colors::of(Severity::green)},
             FigureRow{"an estimate", {.tokensUsed = 0.95, .timeUsed = 0.5}, "–", MeterArt::Colors::idle()},
         }) {
        const Layout layout = layOut(row.reading, 18);
        EXPECT_EQ(layout.figure, QString::fromUtf8(row.figure)) << row.story;
        EXPECT_EQ(layout.bar.color, row.color) << row.story;
    }
}

TEST(MeterBar, AnEstimateFillsNothing) {
    const Bar bar = layOut({.tokensUsed = 0.9, .timeUsed = 0.5}, 18).bar;
    EXPECT_FALSE(bar.time || bar.tokens || bar.notch);
}

TEST(MeterBar, SharesFillFromTheLeftEdge) {
    const Bar bar = layOut(anchored(0.2, 0.4), 18).bar;
    EXPECT_EQ(bar.time, QRectF(0.5, 4.5, 10, 9));
    EXPECT_EQ(bar.tokens, QRectF(0.5, 4.5, 5, 9));
    EXPECT_EQ(bar.notch, QRectF(9.5, 3.5, 2, 11)) << "centred at the time's end, 1 beyond above and below";
}

TEST(MeterBar, SharesAreHeldToTheBar) {
    const Bar bar = layOut(anchored(3.0, 1.5), 18).bar;
    EXPECT_EQ(bar.time->width(), 25.0);
    EXPECT_EQ(bar.tokens->width(), 25.0);
    EXPECT_FALSE(bar.notch);
}

TEST(MeterBar, NothingSpentAndNoTimeGoneDrawsNoFill) {
    for (const double nothing : {0.0, -1.0, nan}) {
        const Bar bar = layOut(anchored(nothing, nothing), 18).bar;
        EXPECT_FALSE(bar.time || bar.tokens || bar.notch) << nothing;
    }
}

TEST(MeterBar, AnythingSpentShows) {
    EXPECT_EQ(layOut(anchored(1e-9, 0.5), 18).bar.tokens->width(), 2.5);
    EXPECT_EQ(layOut(anchored(0.1, 0.5), 18).bar.tokens->width(), 2.5);
    EXPECT_NEAR(layOut(anchored(0.12, 0.5), 18).bar.tokens->width(), 3.0, 1e-9);
}

TEST(MeterBar, TheNotchKeepsAwayFromTheEnds) {
    for (const double time : {0.02, 0.98, 0.0, 1.0, 0.01, 0.99}) {
        EXPECT_FALSE(layOut(anchored(0.5, time), 18).bar.notch) << time;
    }
    for (const double time : {0.0201, 0.9799, 0.5}) EXPECT_TRUE(layOut(anchored(0.5, time), 18).bar.notch) << time;
}

class MeterPixels : public testing::TestWithParam<double> {
protected:
    static QColor at(const QImage& image, double x, double y) { return Canvas::pixel(image, x, y); }
    QImage draw(const Reading& reading, double height = 18) const { return menuBarImage(reading, height, GetParam()); }
};

constexpr double middle = 9.0;

TEST_P(MeterPixels, HasItsSizeInPixels) {
    const Layout layout = layOut(anchored(0.74, 0.6), 18);
    const QImage image = draw(anchored(0.74, 0.6));
    EXPECT_EQ(image.width(), layout.width * GetParam());
    EXPECT_EQ(image.height(), 18 * GetParam());
    EXPECT_EQ(image.devicePixelRatio(), GetParam());
}

TEST_P(MeterPixels, TheGroundIsClear) {
    const QImage image = draw(anchored(0.74, 0.6));
    EXPECT_EQ(at(image, 13, 1).alpha(), 0);
    EXPECT_EQ(at(image, 13, 17).alpha(), 0);
    EXPECT_EQ(at(image, 28.5, middle).alpha(), 0);
    EXPECT_EQ(at(image, 0.1, 4.1).alpha(), 0) << "the corners are round";
}

// Tokens end at 5.5, time at 15.5, where the gap takes 14.5 to 16.5: all four zones show.
TEST_P(MeterPixels, TimeShowsPalerWithAGapAtItsEnd) {
    const QColor color = MeterArt::Colors::of(Severity::green);
    const QColor ground = faded(color, 0.2);
    const QImage image = draw(anchored(0.2, 0.6));
    EXPECT_TRUE(near(at(image, 3.5, middle), color));
    EXPECT_TRUE(near(at(image, 8.5, middle), onto(faded(color, 0.42), ground)));
    EXPECT_EQ(at(image, 15.6, middle).alpha(), 0);
    EXPECT_TRUE(near(at(image, 20.5, middle), ground));
}

// Time's end at 13: the notch takes 12 to 14 exactly, at every scale.
TEST_P(MeterPixels, TokensRunOverTheTimeAndBreakAtTheGap) {
    const QColor color = MeterArt::Colors::of(Severity::red);
    const QImage image = draw(anchored(0.9, 0.5));
    EXPECT_TRUE(near(at(image, 11.5, middle), color));
    EXPECT_EQ(at(image, 12.5, middle).alpha(), 0);
    EXPECT_EQ(at(image, 13.5, middle).alpha(), 0);
    EXPECT_TRUE(near(at(image, 14.5, middle), color));
    EXPECT_TRUE(near(at(image, 24.5, middle), faded(color, 0.2), 40)) << "beyond the tokens";
}

TEST_P(MeterPixels, TheOutlineRunsOverTheGap) {
    const QColor color = MeterArt::Colors::of(Severity::red);
    const QImage image = draw(anchored(0.9, 0.5));
    // The stroke is centred on 4.5: from 4 to 5. At one pixel a point the gap's edge crosses that pixel.
    const int steps = GetParam() == 1.0 ? 12 : 3;
    EXPECT_TRUE(near(at(image, 12.9, 4.3), faded(color, 0.85), steps));
    EXPECT_TRUE(near(at(image, 12.9, 13.6), faded(color, 0.85), steps));
    EXPECT_EQ(at(image, 12.9, 3.6).alpha(), 0) << "and the gap is only within it";
}

TEST_P(MeterPixels, AnIdleBarIsEmptyAndItsFigureADash) {
    const QColor color = MeterArt::Colors::idle();
    const QImage image = draw({});
    for (const double x : {3.0, 8.0, 13.0, 22.0}) EXPECT_TRUE(near(at(image, x, middle), faded(color, 0.2))) << x;
    EXPECT_TRUE(near(at(image, 13, 4.4), onto(faded(color, 0.85), faded(color, 0.2)), 16));
}

TEST_P(MeterPixels, TheFigureIsCentredByItsDigits) {
    const auto from = static_cast<int>(31 * GetParam());
    QImage image = draw(anchored(0.74, 0.6));
    image = image.copy(from, 0, image.width() - from, image.height());
    image.setDevicePixelRatio(GetParam());
    const QRectF ink = placeOf(image, [](const QColor& pixel) { return pixel.alpha() > 128; });
    EXPECT_NEAR(ink.center().y(), middle, 0.75);
    EXPECT_GT(ink.height(), 7.0);
    const auto isForeign = [](const QColor& pixel) {
        return pixel.alpha() > 128 && !near(faded(pixel, 1), MeterArt::Colors::of(Severity::amber), 4);
    };
    EXPECT_TRUE(placeOf(image, isForeign).isEmpty());
}

TEST_P(MeterPixels, ATallerImageKeepsTheBarInItsMiddle) {
    const QImage image = draw({}, 24);
    EXPECT_TRUE(near(at(image, 13, 12), faded(MeterArt::Colors::idle(), 0.2)));
    EXPECT_EQ(at(image, 13, 6.4).alpha(), 0);
    EXPECT_EQ(at(image, 13, 17.9).alpha(), 0);
}

INSTANTIATE_TEST_SUITE_P(Scales, MeterPixels, testing::Values(1.0, 2.0, 4.0));

TEST(MeterImage, WithoutHeightOrScaleIsNull) {
    for (const double none : {0.0, -1.0, 1e9, nan}) {
        EXPECT_TRUE(menuBarImage(anchored(0.5, 0.5), 18, none).isNull()) << none;
        EXPECT_TRUE(menuBarImage(anchored(0.5, 0.5), none, 2).isNull()) << none;
    }
}

TEST(MeterImage, AFractionOfAPixelIsAPixel) {
    const double width = layOut({}, 18).width;
    EXPECT_EQ(menuBarImage(Reading{}, 18, 1.5).width(), static_cast<int>(std::ceil(width * 1.5)));
    EXPECT_EQ(menuBarImage(Reading{}, 18, 1.5).height(), 27);
    EXPECT_FALSE(menuBarImage(Reading{}, 18, 0.01).isNull());
}

TEST(SquareImage, IsAsLargeAsAsked) {
    for (const int side : {1, 16, 22, 24, 44, 176}) {
        const QImage image = squareImage(anchored(0.74, 0.6), side);
        EXPECT_EQ(image.size(), QSize(side, side));
        EXPECT_EQ(image.devicePixelRatio(), 1.0);
    }
    EXPECT_TRUE(squareImage({}, 0).isNull());
    EXPECT_TRUE(squareImage({}, -4).isNull());
}

TEST(SquareImage, TheBarStandsOnWholePixelsAt22) {
    const QColor color = MeterArt::Colors::of(Severity::green);
    const QImage image = squareImage(anchored(0.41, 0.6), 22);
    EXPECT_TRUE(near(image.pixelColor(11, 1), onto(faded(color, 0.85), faded(color, 0.2)), 40)) << "its outline";
    EXPECT_EQ(image.pixelColor(11, 0).alpha(), 0);
    EXPECT_TRUE(near(image.pixelColor(5, 5), color));
    EXPECT_TRUE(near(image.pixelColor(18, 5), faded(color, 0.2)));
    EXPECT_EQ(image.pixelColor(11, 10).alpha(), 0) << "free between bar and figure";
}

TEST(SquareImage, TheFigureStandsOnItsBaselineInTheMiddle) {
    const QImage image = squareImage(anchored(0.41, 0.6), 176);
    const QRectF ink = placeOf(image.copy(0, 88, 176, 88), [](const QColor& pixel) { return pixel.alpha() > 128; });
    EXPECT_NEAR(88 + ink.bottom(), 21 * 8, 3) << "round digits hang a little";
    EXPECT_NEAR(ink.height(), 9 * 8, 5);
    EXPECT_NEAR(ink.center().x(), 88, 6);
}

TEST(MeterStrips, ShowDarkAboveLight) {
    for (const QImage& image : {sampleStrip(), menuBarStrip(1)}) {
        ASSERT_FALSE(image.isNull());
        EXPECT_LT(image.pixelColor(1, 1).lightness(), 60);
        EXPECT_GT(image.pixelColor(1, image.height() - 2).lightness(), 200);
        EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1).alpha(), 255);
    }
}

TEST(MeterStrips, GrowWithTheScale) {
    EXPECT_EQ(menuBarStrip(4).height(), 4 * menuBarStrip(1).height());
    EXPECT_EQ(menuBarStrip(4).width(), 4 * menuBarStrip(1).width());
    EXPECT_TRUE(menuBarStrip(0).isNull());
    EXPECT_TRUE(menuBarStrip(-2).isNull());
    EXPECT_TRUE(menuBarStrip(1e6).isNull());
}

} // namespace
