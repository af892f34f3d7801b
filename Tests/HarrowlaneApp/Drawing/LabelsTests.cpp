#include <gtest/gtest.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Drawing/StatusBadge.h"
#include "HarrowlaneApp/Drawing/Wordmark.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Canvas;
using DrawingTests::near;
using DrawingTests::over;
using UsageModel::Severity;

const Palette& dark = Palette::resolved(Appearance::dark);
constexpr Look darkLook{.appearance = Appearance::dark};

bool holds(const QImage& image, const QColor& color, int fromX = 0) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = fromX; x < image.width(); ++x) {
            if (near(image.pixelColor(x, y), color, 6)) return true;
        }
    }
    return false;
}

Canvas badge(const StatusBadge& badge, const Look& look) {
    Canvas canvas(badge.size().width() + 20.0, 40, 2.0, dark.card);
    return canvas.draw([&](QPainter& painter) { badge.paint(painter, {QPointF(10, 10), badge.size()}, look); });
}

TEST(StatusBadge, IsAsWideAsItsLabelAndPadding) {
    const double label = HUDType::text(11.5, HUDType::Weight::bold).width(QStringLiteral("Over pace"));
    EXPECT_NEAR((StatusBadge{.label = QStringLiteral("Over pace")}.size().width()), label + 18.0, 1e-9);
    EXPECT_EQ((StatusBadge{.label = QStringLiteral("Over pace")}.size().height()), 20.0);
    EXPECT_EQ(StatusBadge{}.size(), QSizeF(18, 20));
}

TEST(StatusBadge, CutsALabelThatHasNoRoom) {
    const StatusBadge wordy{.label = QString(300, QLatin1Char('x')), .severity = Severity::red};
    EXPECT_LE(wordy.within(100.0).size().width(), 100.0);
    EXPECT_TRUE(wordy.within(100.0).label.endsWith(QChar(0x2026)));
    EXPECT_EQ(wordy.within(100.0).severity, Severity::red);
    EXPECT_EQ((StatusBadge{.label = QStringLiteral("On pace")}.within(100.0).label), QStringLiteral("On pace"));
}

struct Row {
    Severity severity;
    QColor Palette::*signal;
    double fill;
};

TEST(StatusBadge, IsDrawnInItsSignalColour) {
    for (const Row& row : {Row{Severity::green, &Palette::dim, 0.06}, Row{Severity::amber, &Palette::warn, 0.10},
                           Row{Severity::red, &Palette::crit, 0.10}}) {
        const QColor& signal = dark.*row.signal;
        const StatusBadge made{.label = QStringLiteral("On pace"), .severity = row.severity};
        const Canvas canvas = badge(made, darkLook);
        const QColor fill = over(withOpacity(signal, row.fill), dark.card);
        EXPECT_TRUE(near(canvas.at(18, 20), fill));
        EXPECT_TRUE(near(canvas.at(40, 10.4), over(withOpacity(signal, 0.4), fill)));
        EXPECT_TRUE(holds(canvas.image(), signal)) << "the label";
        EXPECT_TRUE(near(canvas.at(10.3, 10.3), dark.card)) << "a corner";
    }
}

TEST(StatusBadge, HasAStrongerEdgeWithIncreasedContrast) {
    const StatusBadge made{.label = QStringLiteral("Over pace"), .severity = Severity::amber};
    const Canvas canvas = badge(made, {.appearance = Appearance::dark, .increaseContrast = true});
    const QColor fill = over(withOpacity(dark.warn, 0.10), dark.card);
    EXPECT_TRUE(near(canvas.at(40, 10.4), over(withOpacity(dark.warn, 0.75), fill)));
}

TEST(Wordmark, IsWrittenInTwoColoursWithoutAGap) {
    const double width = Wordmark::width(13);
    const HUDFont font = HUDType::display(13, 0.2);
    EXPECT_NEAR(width, font.width(QStringLiteral("BRINDLE")) + font.width(QStringLiteral("WICK")), 1e-9);
    Canvas canvas(width + 4, 24, 2.0, dark.ground);
    canvas.draw([](QPainter& painter) { Wordmark::paint(painter, {2, 18}, 13, darkLook); });
    const auto split = static_cast<int>(2.0 * (2.0 + font.width(QStringLiteral("BRINDLE"))));
    EXPECT_TRUE(holds(canvas.image(), dark.ink));
    EXPECT_FALSE(holds(canvas.image(), dark.ink, split));
    EXPECT_TRUE(holds(canvas.image(), dark.cyan, split));
    EXPECT_FALSE(holds(canvas.image().copy(0, 0, split, 48), dark.cyan));
}

TEST(Wordmark, IsSpokenAsAName) {
    EXPECT_STREQ(Wordmark::spokenLabel, "Brindlewick");
}

} // namespace
