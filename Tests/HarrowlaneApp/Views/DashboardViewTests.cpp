#include "HarrowlaneApp/Views/DashboardView.h"

#include <ctime>

#include <QTest>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Samples/PreviewData.h"
#include "HarrowlaneApp/Views/HUDScrollArea.h"
#include "HarrowlaneApp/Views/Watching.h"
#include "HarrowlaneApp/Views/WeekChartView.h"
#include "HarrowlaneApp/Views/WeekHeader.h"

namespace {

using namespace HarrowlaneApp;
using namespace ViewTests;
using testing::ElementsAre;
using testing::SizeIs;
using UsageModel::Calendar;
using UsageModel::ModelAndEffort;
using UsageModel::ModelClass;
using UsageModel::UsageSnapshot;

constexpr UsageModel::Date thursday{1763648100};

class Dashboard : public testing::Test {
protected:
    ApplicationLook look{Look{.appearance = Appearance::dark}};
    UsageSnapshot sample = PreviewData::overPace(thursday);
    std::unique_ptr<UsageStore> store;
    std::unique_ptr<DashboardView> view;

    void open(UsageStore::Preview preview, const QSize& size = DashboardView::firstSize) {
        view.reset();
        store = UsageStore::preview(std::move(preview));
        view = std::make_unique<DashboardView>(
            look, DashboardView::Surroundings{.store = *store, .calendar = Calendar::utc()});
        show(*view, size);
        settle();
    }

    [[nodiscard]] std::string chip() const {
        const auto& label = find<ChipLabel>(*view, "weekChip");
        return label.isVisibleTo(view.get()) ? label.text().toStdString() : std::string();
    }

    [[nodiscard]] UsageSnapshot withoutGauge() const {
        UsageSnapshot snapshot = sample;
        snapshot.weekSeries->scale = UsageModel::SeriesScale::typicalWeeks;
        snapshot.weekSeries->limitLevel.reset();
        return snapshot;
    }
};

TEST_F(Dashboard, TellsTheWeekInWordsFiguresAndSessions) {
    open({.snapshot = sample});
    EXPECT_THAT(textOf(*view, "weekHeadline"), testing::StartsWith("You run out"));
    EXPECT_EQ(chip(), "");
    EXPECT_FALSE(find<GaugeBanner>(*view, "gaugeBanner").isVisible());
    EXPECT_THAT(heard(find<TileRow>(*view, "tiles")), SizeIs(6));
    EXPECT_EQ(find<ChartLegend>(*view, "chartLegend").accessibleName(),
              QStringLiteral("burned so far, forecast, a typical week for you, Opus, Fable, Sonnet, Haiku & other"));
    const auto sessions = heard(find<SessionLog>(*view, "sessionLog"));
    ASSERT_THAT(sessions, SizeIs(sample.weekSeries->sessions.size()));
    EXPECT_THAT(sessions.front(), testing::HasSubstr("running")) << "the newest first";
}

TEST_F(Dashboard, ASampleTakesTheSnapshotsPlace) {
    open({.snapshot = UsageSnapshot::warmingUp(thursday), .readiness = Readiness::noLogsFound});
    EXPECT_EQ(textOf(*view, "weekEmptyText"), "The week view needs at least a little history to draw from.");
    store->setSampleSnapshot(sample);
    EXPECT_EQ(textOf(*view, "weekEmptyText"), "");
    EXPECT_EQ(chip(), "Sample data");
    store->setSampleSnapshot(std::nullopt);
    EXPECT_EQ(textOf(*view, "weekEmptyText"), "The week view needs at least a little history to draw from.");
}

TEST_F(Dashboard, TouchesNothingThatIsNotInSight) {
    open({.snapshot = withoutGauge()});
    const auto headline = [&] { return find<HUDLabel>(*view, "weekHeadline").text(); };
    const QString before = headline();
    view->hide();
    store->setSampleSnapshot(sample);
    EXPECT_EQ(headline(), before) << "the window is hidden";
    view->tabs().setCurrent(DashboardTabs::Tab::models);
    view->show();
    EXPECT_EQ(headline(), before) << "another tab is in front";
    view->tabs().setCurrent(DashboardTabs::Tab::week);
    EXPECT_NE(headline(), before);
    EXPECT_EQ(chip(), "Sample data");
}

TEST_F(Dashboard, PaintsOnlyWhatHasChanged) {
    constexpr QSize tall(720, 2000); // all of it in sight
    open({.snapshot = sample}, tall);
    const PaintLog chart(find<WeekChartView>(*view, "weekChart"));
    const PaintLog tiles(find<TileRow>(*view, "tiles"));
    const PaintLog legend(find<ChartLegend>(*view, "chartLegend"));
    const PaintLog sessions(find<SessionLog>(*view, "sessionLog"));
    const auto follow = [&] {
        store->setSampleSnapshot(sample);
        settle();
    };
    follow();
    const auto paintings = [&] { return std::vector{tiles.count(), legend.count(), sessions.count()}; };
    const auto before = paintings();
    const int chartsBefore = chart.count();

    sample.weekSeries->actual.back().used += 1e-6;
    follow();
    EXPECT_GT(chart.count(), chartsBefore);
    EXPECT_EQ(paintings(), before) << "their words and figures are the same";

    sample = withoutGauge();
    sample.weekSeries->sessions.pop_back();
    sample.weekSeries->baseline.clear();
    follow();
    EXPECT_THAT(paintings(), testing::Pointwise(testing::Gt(), before));
}

TEST_F(Dashboard, SaysThatItIsStillReading) {
    open({.snapshot = UsageSnapshot::warmingUp(thursday), .readiness = Readiness::warmingUp});
    EXPECT_EQ(textOf(*view, "weekEmptyText"), "Reading your usage history");
}

TEST_F(Dashboard, WithoutAGaugeItAsksForTheHelper) {
    open({.snapshot = withoutGauge()});
    EXPECT_EQ(chip(), "Estimated · no gauge");
    EXPECT_EQ(textOf(*view, "bannerText"),
              "Connect the usage helper to see this against your account's real limits — the ceiling, the reset time, "
              "and how close you actually are.");
    int asked = 0;
    QObject::connect(view.get(), &DashboardView::openSettings, [&] { ++asked; });
    QTest::mouseClick(&find<PushButton>(*view, "bannerButton"), Qt::LeftButton);
    EXPECT_EQ(asked, 1);
}

TEST_F(Dashboard, HasThreeTabsForMouseAndKeyboard) {
    open({.snapshot = sample});
    EXPECT_TRUE(find<WeekTab>(*view, "weekView").isVisible());
    QTest::mouseClick(&find<TabButton>(*view, "modelsTab"), Qt::LeftButton);
    EXPECT_TRUE(find<ModelsView>(*view, "modelsView").isVisible());
    EXPECT_FALSE(find<WeekTab>(*view, "weekView").isVisible());
    find<TabButton>(*view, "modelsTab").setFocus(Qt::TabFocusReason);
    QTest::keyClick(&find<TabButton>(*view, "modelsTab"), Qt::Key_Right);
    EXPECT_EQ(view->tabs().current(), DashboardTabs::Tab::history);
    EXPECT_TRUE(find<CalendarView>(*view, "calendarView").isVisible());
}

TEST_F(Dashboard, LeavingATabKeepsTheChoice) {
    open({.snapshot = sample});
    view->setChoice({.model = ModelClass::sonnet});
    const std::string landing = textOf(*view, "whatIfLanding");
    EXPECT_THAT(landing, testing::StartsWith("lands ≈"));
    view->tabs().setCurrent(DashboardTabs::Tab::models);
    view->tabs().setCurrent(DashboardTabs::Tab::week);
    EXPECT_EQ(view->choice(), (ModelAndEffort{.model = ModelClass::sonnet}));
    EXPECT_EQ(textOf(*view, "whatIfLanding"), landing);
}

TEST_F(Dashboard, AChoiceAddsTheGhostsKeyAndMovesNothing) {
    open({.snapshot = sample});
    const int top = find<TileRow>(*view, "tiles").mapTo(view.get(), QPoint()).y();
    view->setChoice({.model = ModelClass::sonnet});
    settle();
    EXPECT_THAT(find<ChartLegend>(*view, "chartLegend").accessibleName().toStdString(),
                testing::HasSubstr("if you change something"));
    EXPECT_EQ(find<TileRow>(*view, "tiles").mapTo(view.get(), QPoint()).y(), top);
}

TEST_F(Dashboard, WithoutASpaceOfChangesThereIsNoPanel) {
    sample.weekSeries->whatIf.reset();
    sample.weekSeries->sessions.clear();
    open({.snapshot = sample});
    EXPECT_FALSE(find<WhatIfPanel>(*view, "whatIfPanel").isVisible());
    EXPECT_FALSE(find<SessionLog>(*view, "sessionLog").isVisible());
}

TEST_F(Dashboard, AThousandSessionsScrollLikeTen) {
    auto& sessions = sample.weekSeries->sessions;
    const auto first = sessions.front();
    sessions.assign(1000, first);
    open({.snapshot = sample});
    auto& log = find<SessionLog>(*view, "sessionLog");
    EXPECT_THAT(log.rows(), SizeIs(1000));
    EXPECT_GE(log.height(), 1000 * 51);
    QScrollBar* bar = nullptr;
    for (auto* area : view->findChildren<HUDScrollArea*>()) {
        if (area->isAncestorOf(&log)) bar = area->verticalScrollBar();
    }
    ASSERT_NE(bar, nullptr);
    bar->setValue(bar->maximum());
    QApplication::processEvents();
    EXPECT_TRUE(log.visibleRegion().contains(log.items().back().box.center().toPoint()));
    // A row in sight costs what it costs in a short log.
    const std::clock_t begun = std::clock();
    picture(*view);
    EXPECT_LT(std::clock() - begun, 2 * CLOCKS_PER_SEC);
    log.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&log, Qt::Key_Home);
    EXPECT_TRUE(log.visibleRegion().contains(log.items().front().box.center().toPoint()));
}

class DashboardSizes : public Dashboard, public testing::WithParamInterface<QSize> {};

TEST_P(DashboardSizes, NothingIsCutOffSidewaysNorOverlaps) {
    for (const UsageSnapshot& snapshot : {sample, withoutGauge()}) {
        open({.snapshot = snapshot}, GetParam());
        const auto& week = find<WeekTab>(*view, "weekView");
        int bottom = 0;
        for (const char* block : {"gaugeBanner", "chartPanel", "tiles", "whatIfPanel", "sessionLog"}) {
            const auto& widget = find<QWidget>(*view, block);
            if (!widget.isVisible()) continue;
            const QRect place(widget.mapTo(&week, QPoint()), widget.size());
            EXPECT_GE(place.left(), 0) << block;
            EXPECT_LE(place.right(), week.width()) << block;
            EXPECT_GE(place.top(), bottom) << block;
            EXPECT_GE(widget.height(), widget.minimumSizeHint().height()) << block;
            bottom = place.bottom();
        }
        EXPECT_LE(week.mapTo(view.get(), QPoint(week.width(), 0)).x(), view->width());
        for (const auto* chip : view->findChildren<ChipButton*>()) {
            if (!chip->isVisible()) continue;
            EXPECT_LE(chip->geometry().right(), chip->parentWidget()->width()) << chip->text().toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, DashboardSizes,
                         testing::Values(QSize(560, 480), QSize(640, 500), QSize(720, 620), QSize(1000, 700),
                                         QSize(1920, 1080), QSize(3840, 2160)));

TEST_F(Dashboard, CannotBeMadeSmallerThanItsContentBears) {
    open({.snapshot = sample});
    view->resize(100, 100);
    EXPECT_EQ(view->size(), DashboardView::leastSize);
}

TEST_F(Dashboard, EveryControlIsReachedByTabWithARingAndHasANameAndARole) {
    open({.snapshot = withoutGauge()}, {720, 1300});
    if (QWidget* first = view->focusWidget()) first->clearFocus();
    std::vector<std::string> names;
    QWidget* start = nullptr;
    for (int step = 0; step < 40; ++step) {
        QTest::keyClick(view.get(), Qt::Key_Tab);
        QWidget* focused = view->focusWidget();
        ASSERT_NE(focused, nullptr);
        if (focused == start) break;
        if (start == nullptr) start = focused;
        auto* accessible = QAccessible::queryAccessibleInterface(focused);
        const std::string name = accessible->text(QAccessible::Name).toStdString();
        EXPECT_FALSE(name.empty()) << focused->metaObject()->className();
        EXPECT_NE(accessible->role(), QAccessible::Client) << name;
        EXPECT_NE(view->findChild<FocusRing*>(), nullptr) << name;
        names.push_back(name);
    }
    EXPECT_THAT(names, testing::IsSupersetOf({std::string("This Week"), std::string("Open Settings"),
                                              std::string("Haiku"), std::string("Max"), std::string("Session log")}));
}

TEST_F(Dashboard, ComesInBothAppearancesAtBothScales) {
    for (const Appearance appearance : {Appearance::dark, Appearance::light}) {
        look.force(appearance);
        open({.snapshot = sample});
        const QImage one = picture(*view, 1.0);
        const QImage two = picture(*view, 2.0);
        EXPECT_EQ(two.size(), one.size() * 2);
        const int corner = qGray(one.pixel(2, one.height() - 2));
        EXPECT_EQ(corner > 128, appearance == Appearance::light);
    }
}

} // namespace
