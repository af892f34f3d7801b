#include "HarrowlaneApp/Drawing/HUDFont.h"

#include <gtest/gtest.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;
using DrawingTests::placeOf;

const QString sentence = QStringLiteral("Your Opus week is projected to hit 105% by reset");

TEST(HUDFont, AFractionOfAPointCounts) {
    for (const double size : {8.0, 9.5, 11.5, 13.5, 21.0, 40.0}) {
        EXPECT_NEAR(HUDType::text(size).width(sentence) / size, HUDType::text(128).width(sentence) / 128.0, 1e-3);
    }
}

TEST(HUDFont, TheWidthIsWhatIsDrawn) {
    for (const double scale : {1.0, 2.0, 4.0}) {
        const HUDFont font = HUDType::text(11.5, HUDType::Weight::bold);
        Canvas canvas(120, 30, scale);
        canvas.draw([&](QPainter& painter) { font.draw(painter, QPointF(10, 20), QStringLiteral("HHHH")); });
        const QRectF place = placeOf(canvas.image(), [](const QColor& pixel) { return pixel.alpha() > 40; });
        const double width = font.width(QStringLiteral("HHHH"));
        EXPECT_NEAR(place.right(), 10.0 + width, 2.0) << "its right bearing is less than two points";
    }
}

TEST(HUDFont, TrackingStandsBehindEveryLetter) {
    const double plain = HUDType::display(9.5).width(QStringLiteral("THIS"));
    EXPECT_NEAR(HUDType::display(9.5, 1.6).width(QStringLiteral("THIS")), plain + 4 * 1.6, 0.05);
}

TEST(HUDFont, NoTextHasNoWidth) {
    EXPECT_EQ(HUDType::text(12).width(QString()), 0.0);
}

TEST(HUDFont, ASizeOfNothingIsStillASize) {
    for (const double size : {0.0, -3.0}) {
        EXPECT_GT(HUDType::text(size).size(), 0.0);
        EXPECT_EQ(HUDType::text(size).rounded().pixelSize(), 1);
    }
}

TEST(HUDFont, AWidgetGetsTheNearestWholeSize) {
    EXPECT_EQ(HUDType::text(11.4).rounded().pixelSize(), 11);
    EXPECT_EQ(HUDType::text(11.5).rounded().pixelSize(), 12);
    EXPECT_NEAR(HUDType::display(9.5, 1.6).rounded().letterSpacing(), 1.6, 0.02);
}

TEST(HUDFont, ALineIsCentredInItsBoxALittleHigh) {
    const HUDFont font = HUDType::text(12);
    const double baseline = font.baseline({.top = 10, .height = 30});
    const double above = baseline - font.ascent() - 10.0;
    const double below = 40.0 - (baseline + font.descent());
    EXPECT_NEAR(below - above, 0.8, 1e-9);
}

TEST(HUDFont, InkOfACapitalReachesItsHeight) {
    const HUDFont font = HUDType::text(100, HUDType::Weight::bold);
    EXPECT_NEAR(font.inkAbove(QStringLiteral("H")), font.capitalHeight(), 1.5);
}

TEST(HUDFont, WhatFitsIsNotCut) {
    const HUDFont font = HUDType::text(10.5);
    EXPECT_EQ(font.elided(sentence, font.width(sentence) + 1.0), sentence);
    const QString cut = font.elided(sentence, 80.0);
    EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
    EXPECT_LE(font.width(cut), 80.0);
    EXPECT_EQ(font.elided(QString(), 10.0), QString());
}

TEST(HUDFont, LinesBreakBetweenWordsAndHoldTheWidth) {
    const HUDFont font = HUDType::text(11.5);
    const QStringList lines = font.wrapped(sentence, 110.0);
    EXPECT_EQ(lines.join(QLatin1Char(' ')), sentence);
    EXPECT_GT(lines.size(), 2);
    for (const QString& line : lines) EXPECT_LE(font.width(line), 110.0);
}

TEST(HUDFont, AWordThatIsTooLongBreaksWithin) {
    const HUDFont font = HUDType::text(11.5);
    const QString word(60, QLatin1Char('m'));
    const QStringList lines = font.wrapped(word, 100.0);
    EXPECT_EQ(lines.join(QString()), word);
    EXPECT_GT(lines.size(), 1);
}

TEST(HUDFont, DrawsToTheRight) {
    const HUDFont font = HUDType::text(13.5);
    Canvas canvas(100, 20, 2.0);
    canvas.draw(
        [&](QPainter& painter) { font.drawToRight(painter, {.top = 0, .height = 20}, 90, QStringLiteral("74%")); });
    const QRectF place = placeOf(canvas.image(), [](const QColor& pixel) { return pixel.alpha() > 60; });
    EXPECT_NEAR(place.right(), 90.0, 1.5);
    EXPECT_NEAR(place.left(), 90.0 - font.width(QStringLiteral("74%")), 1.5);
}

} // namespace
