#include "HarrowlaneApp/Drawing/Palette.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Drawing/HUDGround.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::contrast;
using DrawingTests::over;
using UsageModel::Severity;

const Palette& dark = Palette::resolved(Appearance::dark);
const Palette& light = Palette::resolved(Appearance::light);

struct Row {
    const char* name;
    QColor Palette::*color;
    const char* dark;
    const char* light;
    double alpha = 1.0;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

class PaletteColor : public testing::TestWithParam<Row> {};

TEST_P(PaletteColor, HasItsPairAndItsAlpha) {
    const Row& row = GetParam();
    EXPECT_EQ((dark.*row.color).name().toStdString(), row.dark);
    EXPECT_EQ((light.*row.color).name().toStdString(), row.light);
    EXPECT_NEAR((dark.*row.color).alphaF(), row.alpha, 1e-4);
    EXPECT_NEAR((light.*row.color).alphaF(), row.alpha, 1e-4);
}

INSTANTIATE_TEST_SUITE_P(
    All, PaletteColor,
    testing::Values(
        Row{"ground", &Palette::ground, "#04060f", "#eef1f7"}, Row{"card", &Palette::card, "#0a0e1c", "#ffffff"},
        Row{"cardRaised", &Palette::cardRaised, "#0f1527", "#f8fafe"},
        Row{"edge", &Palette::edge, "#8cb4ff", "#5c76a8", 0.22},
        Row{"edgeStrong", &Palette::edgeStrong, "#8cb4ff", "#466092", 0.45},
        Row{"trackFill", &Palette::trackFill, "#8cb4ff", "#5c76a8", 0.16},
        Row{"cyan", &Palette::cyan, "#4fd8ff", "#007ea8"}, Row{"violet", &Palette::violet, "#a77bff", "#6942be"},
        Row{"good", &Palette::good, "#4dffb0", "#008c5c"}, Row{"warn", &Palette::warn, "#ffc24d", "#b07008"},
        Row{"crit", &Palette::crit, "#ff5d7a", "#ca2844"}, Row{"warnHot", &Palette::warnHot, "#ff9a4d", "#c4600c"},
        Row{"critHot", &Palette::critHot, "#ff8a6e", "#d6543c"}, Row{"ink", &Palette::ink, "#e6edff", "#10141e"},
        Row{"dim", &Palette::dim, "#96a6c8", "#58647a"}, Row{"faint", &Palette::faint, "#68789c", "#8691a6"}));

TEST(Palette, AliasesAreTheSameColours) {
    for (const Palette* palette : {&dark, &light}) {
        EXPECT_EQ(palette->bg(), palette->ground);
        EXPECT_EQ(palette->hairline(), palette->edge);
        EXPECT_EQ(palette->accent(), palette->cyan);
    }
}

TEST(Palette, OnlyDarkIsDark) {
    const ColorPair made = pair({1, 2, 3}, {4, 5, 6}, 0.5);
    EXPECT_EQ(made.resolved(Appearance::dark).name().toStdString(), "#010203");
    EXPECT_EQ(made.resolved(Appearance::light).name().toStdString(), "#040506");
    EXPECT_NEAR(made.light.alphaF(), 0.5, 1e-4);
    EXPECT_EQ(Palette{}.appearance, Appearance::light);
}

TEST(Palette, HazeHasThreeBlobsFromTheTopDown) {
    const auto& blobs = dark.nebula;
    EXPECT_EQ(blobs[0].color.name(), dark.cyan.name());
    EXPECT_EQ(blobs[1].color.name(), dark.violet.name());
    EXPECT_EQ(blobs[2].color.name(), dark.good.name());
    EXPECT_EQ(light.nebula[1].color.name(), light.violet.name());
    EXPECT_NEAR(blobs[0].color.alphaF(), 0.055, 1e-4);
    EXPECT_NEAR(blobs[1].color.alphaF(), 0.055, 1e-4);
    EXPECT_NEAR(blobs[2].color.alphaF(), 0.03, 1e-4);
    EXPECT_EQ(blobs[0].center, QPointF(0.10, -0.06));
    EXPECT_EQ(blobs[1].center, QPointF(0.92, 0.06));
    EXPECT_EQ(blobs[2].center, QPointF(0.50, 1.08));
    EXPECT_EQ(blobs[0].radius, 0.95);
    EXPECT_EQ(blobs[1].radius, 0.85);
    EXPECT_EQ(blobs[2].radius, 1.05);
}

TEST(Palette, OpacityMultipliesTheAlpha) {
    EXPECT_NEAR(withOpacity(dark.edge, 0.5).alphaF(), 0.11, 1e-4);
    EXPECT_EQ(withOpacity(dark.ink, 0.0).alpha(), 0);
    EXPECT_EQ(withOpacity(dark.ink, 1.0), dark.ink);
}

TEST(Palette, ABarRampsTowardsItsHotEnd) {
    EXPECT_EQ(ramp(Severity::green, dark), (Ramp{dark.good, dark.cyan}));
    EXPECT_EQ(ramp(Severity::amber, dark), (Ramp{dark.warn, dark.warnHot}));
    EXPECT_EQ(ramp(Severity::red, light), (Ramp{light.crit, light.critHot}));
}

TEST(Palette, ACalmBadgeDoesNotDrawTheEyeButACalmFigureIsGood) {
    EXPECT_EQ(signalColor(Severity::green, dark), dark.dim);
    EXPECT_EQ(signalColor(Severity::amber, dark), dark.warn);
    EXPECT_EQ(signalColor(Severity::red, dark), dark.crit);
    EXPECT_EQ(figureColor(Severity::green, dark), dark.good);
    EXPECT_EQ(figureColor(Severity::amber, dark), dark.warn);
    EXPECT_EQ(figureColor(Severity::red, light), light.crit);
}

TEST(Palette, WhatStandsOnAnAccentIsTheDarkGroundOrWhite) {
    EXPECT_EQ(onAccent(dark), dark.ground);
    EXPECT_EQ(onAccent(light), QColor(Qt::white));
    EXPECT_GE(contrast(onAccent(dark), dark.cyan), 4.5);
    EXPECT_GE(contrast(onAccent(light), light.cyan), 4.5);
}

// Every opaque colour that text may stand on: the ground with its haze at its densest, both fills of a panel with the
// gloss at its densest, a chip's fill, and a panel's wash. Panels are tinted `warn` alone where contrast is increased
// and `dim` stands on them; a wash of .18 in `violet` or `crit` would be too dark for it in the light appearance.
std::vector<QColor> groundsOf(const Palette& palette) {
    const QColor gloss = withOpacity(Qt::white, 0.035);
    std::vector<QColor> grounds{palette.ground, palette.card, over(gloss, palette.card)};
    grounds.insert(grounds.end(), {palette.cardRaised, over(gloss, palette.cardRaised)});
    for (const NebulaBlob& blob : palette.nebula) grounds.push_back(over(blob.color, palette.ground));
    for (const QColor& tint : {palette.cyan, palette.violet, palette.good, palette.warn, palette.crit}) {
        grounds.push_back(over(withOpacity(tint, 0.1), palette.card));
    }
    grounds.push_back(over(withOpacity(palette.warn, 0.18), palette.cardRaised));
    return grounds;
}

void expectContrast(const QColor& text, const std::vector<QColor>& grounds, double least, const std::string& what) {
    for (const QColor& ground : grounds) {
        EXPECT_GE(contrast(text, ground), least) << what << " on " << ground.name().toStdString();
    }
}

TEST(PaletteContrast, TextInInkAndDimIsReadableOnEveryGround) {
    for (const Palette* palette : {&dark, &light}) {
        expectContrast(palette->ink, groundsOf(*palette), 4.5, "ink");
        expectContrast(palette->dim, groundsOf(*palette), 4.5, "dim");
    }
}

TEST(PaletteContrast, LargeFiguresAreReadableOnEveryGround) {
    for (const Palette* palette : {&dark, &light}) {
        for (const QColor& figure : {palette->ink, palette->cyan, palette->violet, palette->good, palette->warn,
                                     palette->crit, palette->warnHot}) {
            expectContrast(figure, groundsOf(*palette), 3.0, figure.name().toStdString());
        }
    }
}

TEST(PaletteContrast, ABadgeIsReadableOnItsOwnFill) {
    for (const Palette* palette : {&dark, &light}) {
        for (const Severity severity : {Severity::green, Severity::amber, Severity::red}) {
            const QColor& signal = signalColor(severity, *palette);
            const QColor fill = over(withOpacity(signal, severity == Severity::green ? 0.06 : 0.10), palette->card);
            EXPECT_GE(contrast(signal, fill), 3.0) << signal.name().toStdString();
        }
    }
}

TEST(PaletteContrast, TheMeasureIsThatOfTheGuidelines) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21.0, 1e-9);
    EXPECT_NEAR(contrast(Qt::white, Qt::white), 1.0, 1e-9);
    EXPECT_NEAR(contrast(QColor(118, 118, 118), Qt::white), 4.54, 0.005);
}

} // namespace
