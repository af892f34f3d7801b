#include <gtest/gtest.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Drawing/Glyphs.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;

TEST(Glyphs, EachHasInkOnItsGridAlone) {
    for (std::size_t index = 0; index < glyphCount; ++index) {
        const QRectF box = Glyphs::outline(static_cast<Glyph>(index)).boundingRect();
        EXPECT_GT(box.width(), 7.0) << index;
        EXPECT_GT(box.height(), 7.0) << index;
        EXPECT_TRUE(QRectF(0, 0, Glyphs::grid, Glyphs::grid).contains(box)) << index;
    }
}

TEST(Glyphs, WhatIsCutOutIsNotInked) {
    EXPECT_FALSE(Glyphs::outline(Glyph::gear).contains(QPointF(8, 8))) << "the gear's hole";
    EXPECT_TRUE(Glyphs::outline(Glyph::gear).contains(QPointF(8, 4)));
    EXPECT_FALSE(Glyphs::outline(Glyph::warning).contains(QPointF(8, 7))) << "the bar";
    EXPECT_TRUE(Glyphs::outline(Glyph::warning).contains(QPointF(5, 11)));
    EXPECT_FALSE(Glyphs::outline(Glyph::sealCheck).contains(QPointF(7.2, 10.1))) << "the check";
    EXPECT_FALSE(Glyphs::outline(Glyph::arrowUp).contains(QPointF(8, 9)));
}

TEST(Glyphs, WhatIsDrawnAfterACutOutStays) {
    const QPainterPath& bell = Glyphs::outline(Glyph::bellSlash);
    EXPECT_TRUE(bell.contains(QPointF(8, 8))) << "on the slash";
    EXPECT_FALSE(bell.contains(QPointF(8.9, 7.2))) << "beside it";
}

TEST(Glyphs, TheDashedCircleHasEightDashes) {
    const QPainterPath& circle = Glyphs::outline(Glyph::dashedCircle);
    int dashes = 0;
    bool wasInked = circle.contains(QPointF(8 + 5.8, 8));
    for (int step = 1; step <= 720; ++step) {
        const double angle = step * 3.14159265358979 / 360.0;
        const bool isInked = circle.contains(QPointF(8 + 5.8 * std::cos(angle), 8 + 5.8 * std::sin(angle)));
        if (isInked && !wasInked) ++dashes;
        wasInked = isInked;
    }
    EXPECT_EQ(dashes, 8);
}

TEST(Glyphs, AreDrawnInPlaceAndToSize) {
    Canvas canvas(40, 40, 2.0);
    const QColor red(200, 10, 10);
    canvas.draw([&](QPainter& painter) {
        Glyphs::paint(painter, Glyph::arrowUp, {.corner = {10, 12}, .size = 24}, red);
    });
    EXPECT_EQ(canvas.at(9, 24).alpha(), 0);
    EXPECT_EQ(canvas.at(14, 24), red);
    EXPECT_EQ(canvas.at(22, 27).alpha(), 0) << "the arrow";
    EXPECT_EQ(canvas.at(22, 12.5).alpha(), 0) << "above the disc";
}

} // namespace
