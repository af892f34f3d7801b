#include "HarrowlaneApp/Drawing/HeaderChip.h"

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
constexpr Look strongLook{.appearance = Appearance::dark, .increaseContrast = true};

template <typename Draw>
Canvas drawn(const QSizeF& size, const Draw& draw) {
    Canvas canvas(size.width() + 20.0, size.height() + 20.0, 2.0, dark.ground);
    return canvas.draw([&](QPainter& painter) { draw(painter, QRectF({10.0, 10.0}, size)); });
}

const HeaderChip gauge{.text = QStringLiteral("Connect gauge"), .color = &Palette::cyan};

Canvas chip(const Look& look) {
    return drawn(gauge.size(), [&](QPainter& painter, const QRectF& rect) { gauge.paint(painter, rect, look); });
}

TEST(HeaderChip, IsAsWideAsItsTextAndPadding) {
    const double text = HUDType::text(11.0, HUDType::Weight::medium).width(gauge.text);
    EXPECT_NEAR(gauge.size().width(), text + 18.0, 1e-9);
    EXPECT_EQ(gauge.size().height(), 22.0);
}

TEST(HeaderChip, IsACapsuleInItsColour) {
    const QColor fill = over(withOpacity(dark.cyan, 0.08), dark.ground);
    EXPECT_TRUE(near(chip(darkLook).at(16.0, 21.0), fill));
    EXPECT_TRUE(near(chip(darkLook).at(40.0, 10.4), over(withOpacity(dark.cyan, 0.40), fill)));
    EXPECT_TRUE(near(chip(darkLook).at(10.4, 10.4), dark.ground)) << "a corner";
}

TEST(HeaderChip, HasAStrongerEdgeWithIncreasedContrast) {
    const QColor fill = over(withOpacity(dark.cyan, 0.08), dark.ground);
    EXPECT_TRUE(near(chip(strongLook).at(40.0, 10.4), over(withOpacity(dark.cyan, 0.75), fill)));
}

TEST(SampleChip, HasADividerBeforeTheButton) {
    const QSizeF size(SampleChip::markWidth() + 40.0, HeaderChip::height);
    const Canvas canvas =
        drawn(size, [](QPainter& painter, const QRectF& rect) { SampleChip::paint(painter, rect, darkLook); });
    const QColor fill = over(withOpacity(dark.violet, 0.10), dark.ground);
    const double divider = 10.0 + SampleChip::markWidth() - 0.5;
    EXPECT_FALSE(near(canvas.at(divider, 21.0), fill));
    EXPECT_TRUE(near(canvas.at(divider, 13.0), fill)) << "above the divider";
    EXPECT_TRUE(near(canvas.at(divider + 20.0, 21.0), fill)) << "the button's room";
}

} // namespace
