// Texts of any length, in every state: nothing is cut, and nothing lies over anything else.

#include <gtest/gtest.h>

#include "HarrowlaneApp/Views/FocusRing.h"
#include "HarrowlaneApp/Views/GeneratedSnapshots.h"
#include "HarrowlaneApp/Views/NowScene.h"

namespace {

using namespace HarrowlaneApp;
using UsageModel::UsageSnapshot;
using ViewTests::find;
using ViewTests::NowScene;
using ViewTests::thursday;

std::string sentence(std::size_t length) {
    std::string text;
    while (text.size() < length) text += "lowering effort alone gets you there ";
    text.resize(length, '.');
    return text;
}

bool isSpoken(const QWidget& widget) {
    return qobject_cast<const HUDLabel*>(&widget) != nullptr ||
           qobject_cast<const SpokenPicture*>(&widget) != nullptr ||
           qobject_cast<const QAbstractButton*>(&widget) != nullptr;
}

/// Every label, drawing and button that is shown.
std::vector<QWidget*> parts(const QWidget& view) {
    std::vector<QWidget*> found;
    for (QWidget* widget : view.findChildren<QWidget*>()) {
        if (widget->isVisibleTo(&view) && isSpoken(*widget)) found.push_back(widget);
    }
    return found;
}

QRect placeIn(const QWidget& view, const QWidget& part) {
    return {part.mapTo(&view, QPoint()), part.size()};
}

std::string nameOf(const QWidget& part) {
    return part.objectName().toStdString() + " \"" + part.accessibleName().left(20).toStdString() + "\"";
}

void expectNothingOverlaps(const QWidget& view) {
    const auto all = parts(view);
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (std::size_t j = i + 1; j < all.size(); ++j) {
            if (all[i]->isAncestorOf(all[j]) || all[j]->isAncestorOf(all[i])) continue;
            EXPECT_FALSE(placeIn(view, *all[i]).intersects(placeIn(view, *all[j])))
                << nameOf(*all[i]) << " and " << nameOf(*all[j]);
        }
    }
}

/// Whether a part has the room that its text takes. The line of the footer may be cut.
bool hasItsRoom(const QWidget& part) {
    if (part.objectName() == QStringLiteral("footerLine")) return true;
    const QSize wanted = part.sizeHint();
    if (part.hasHeightForWidth()) return part.height() >= part.heightForWidth(part.width());
    return part.width() >= wanted.width() && part.height() >= wanted.height();
}

void expectNothingIsCut(const QWidget& view) {
    for (const QWidget* part : parts(view)) {
        EXPECT_TRUE(hasItsRoom(*part)) << nameOf(*part);
        const QWidget* parent = part->parentWidget();
        EXPECT_TRUE(parent->rect().contains(part->geometry())) << nameOf(*part);
        EXPECT_TRUE(view.rect().contains(placeIn(view, *part))) << nameOf(*part);
    }
}

UsageSnapshot wordy(const std::string& text) {
    UsageSnapshot snapshot = ViewTests::overPace();
    snapshot.recommendation->title = text;
    snapshot.recommendation->detail = text;
    snapshot.recommendation->impact = text;
    snapshot.recommendation->command = text;
    return snapshot;
}

struct Row {
    std::string story;
    UsageStore::Preview preview;
};

class Layouts : public testing::TestWithParam<Row> {};

TEST_P(Layouts, CutNothingAndLayNothingOverAnything) {
    const NowScene scene(GetParam().preview);
    scene.show();
    expectNothingOverlaps(*scene.view);
    expectNothingIsCut(*scene.view);
}

TEST_P(Layouts, AlsoWithAScrollBarBesideThem) {
    const NowScene scene(GetParam().preview);
    ViewTests::show(*scene.view, {340, 160});
    const QWidget& column = *find<QScrollArea>(*scene.view, "cards").widget();
    expectNothingOverlaps(column);
    expectNothingIsCut(column);
}

UsageSnapshot weekWindow() {
    UsageSnapshot snapshot = ViewTests::overPace();
    snapshot.weekSeries.reset();
    return snapshot;
}

UsageSnapshot hugeNumbers() {
    UsageSnapshot snapshot = ViewTests::overPace();
    for (auto& meter : snapshot.meters) meter.used = 1.5;
    snapshot.weekSeries->usedNow = 1e40;
    snapshot.weekSeries->coneLikelyEnd.used = 1e40;
    return snapshot;
}

INSTANTIATE_TEST_SUITE_P(
    NowView, Layouts,
    testing::Values(
        Row{"the sample", {.snapshot = UsageSnapshot::warmingUp(thursday), .sample = ViewTests::overPace()}},
        Row{"a calm week", {.snapshot = ViewTests::calm()}}, Row{"estimates", {.snapshot = ViewTests::estimated()}},
        Row{"a window for the week", {.snapshot = weekWindow()}},
        Row{"warming up", {.snapshot = UsageSnapshot::warmingUp(thursday), .readiness = Readiness::warmingUp}},
        Row{"no logs", {.snapshot = UsageSnapshot::warmingUp(thursday), .readiness = Readiness::noLogsFound}},
        Row{"no usage", {.snapshot = UsageSnapshot::warmingUp(thursday), .readiness = Readiness::noUsageYet}},
        Row{"300 characters in words", {.snapshot = wordy(sentence(300))}},
        Row{"300 characters without a break", {.snapshot = wordy(std::string(300, 'W'))}},
        Row{"30 characters", {.snapshot = wordy(sentence(30))}}, Row{"a single letter", {.snapshot = wordy("x")}},
        Row{"no words at all", {.snapshot = wordy("")}}, Row{"huge numbers", {.snapshot = hugeNumbers()}}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(Layouts, HoldWhateverASnapshotHas) {
    constexpr std::uint64_t snapshots = 200;
    constexpr std::uint64_t pictureEvery = 20; // one takes as long as many layouts
    const NowScene scene({.snapshot = UsageSnapshot::warmingUp(thursday)});
    for (std::uint64_t seed = 0; seed < snapshots && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        scene.store->setSampleSnapshot(ViewTests::generatedSnapshot(seed));
        scene.show();
        expectNothingOverlaps(*scene.view);
        expectNothingIsCut(*scene.view);
        if (seed % pictureEvery == 0) {
            EXPECT_FALSE(image(*scene.view, 1.0).isNull());
        }
    }
}

TEST(Layouts, GrowWithTheirTextsAndShrinkAgain) {
    const NowScene scene({.snapshot = ViewTests::overPace(), .sample = wordy(sentence(300))});
    scene.show();
    const int tall = scene.view->sizeHint().height();
    EXPECT_GT(tall, 900);
    scene.store->setSampleSnapshot(std::nullopt);
    EXPECT_EQ(scene.view->sizeHint().height(), 548);
    scene.view->resize(scene.view->sizeHint());
    QApplication::processEvents();
    expectNothingIsCut(*scene.view);
}

TEST(Layouts, CutALongFailureInTheFooterOnly) {
    const NowScene scene({.snapshot = ViewTests::overPace()});
    scene.show();
    const auto& line = find<HUDLabel>(*scene.view, "footerLine");
    scene.store->installShim();
    EXPECT_EQ(line.height(), 14) << "one line";
    EXPECT_GT(line.sizeHint().width(), line.width());
    EXPECT_FALSE(line.toolTip().isEmpty()) << "all of it";
    expectNothingOverlaps(*scene.view);
}

/// The rectangle that a placed text takes.
QRectF inked(const WeekMiniCard::PlacedText& text) {
    return {text.box.left, text.box.top, text.font.width(text.text), text.box.height};
}

void expectDisjoint(const WeekMiniCard::Layout& layout, double width) {
    std::vector<QRectF> places{layout.chart, layout.badgePlace};
    if (!layout.rule.isEmpty()) places.push_back(layout.rule);
    for (const auto& text : layout.texts) places.push_back(inked(text));
    for (std::size_t i = 0; i < places.size(); ++i) {
        EXPECT_TRUE(QRectF(0, 0, width, layout.height).contains(places[i])) << i;
        for (std::size_t j = i + 1; j < places.size(); ++j) {
            EXPECT_FALSE(places[i].intersects(places[j])) << i << " and " << j;
        }
    }
}

TEST(WeekMiniCardLayout, StandsAsItWasDesigned) {
    const auto snapshot = ViewTests::overPace();
    const auto layout = WeekMiniCard::layOut(WeekCopy::compact(*snapshot.weekSeries, UsageModel::Calendar::utc()), 316);
    EXPECT_EQ(layout.height, 194);
    EXPECT_EQ(layout.chart, QRectF(14, 67, 288, 76));
    EXPECT_EQ(layout.badgePlace.right(), 302.0);
    expectDisjoint(layout, 316);
}

TEST(WeekMiniCardLayout, HoldsTextsOfAnyLength) {
    for (const std::string& text : {sentence(300), std::string(300, 'W'), std::string("x")}) {
        const auto layout =
            WeekMiniCard::layOut({.headline = text,
                                  .badge = text,
                                  .resetLine = text,
                                  .stats = {{.value = text, .label = text}, {.value = text, .label = text}}},
                                 316);
        expectDisjoint(layout, 316);
    }
}

TEST(WeekMiniCardLayout, HoldsACardWithoutFigures) {
    const auto layout =
        WeekMiniCard::layOut({.headline = "Warming up", .badge = "No gauge", .resetLine = "resets"}, 316);
    EXPECT_TRUE(layout.rule.isEmpty());
    expectDisjoint(layout, 316);
}

} // namespace
