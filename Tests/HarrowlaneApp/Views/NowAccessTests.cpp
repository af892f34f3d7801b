// The popover by ear and by keyboard.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HarrowlaneApp/Alerts/FakeNotificationService.h"
#include "HarrowlaneApp/Store/UsageStoreFakes.h"
#include "HarrowlaneApp/Views/FocusRing.h"
#include "HarrowlaneApp/Views/NowScene.h"
#include "Support/TemporaryFolder.h"

namespace {

using namespace HarrowlaneApp;
using UsageModel::UsageSnapshot;
using ViewTests::NowScene;
using ViewTests::thursday;

/// What a screen reader meets on its way through a view: every element that it would stop at.
void walk(QAccessibleInterface* from, std::vector<QAccessibleInterface*>& met) {
    for (int index = 0; index < from->childCount(); ++index) {
        QAccessibleInterface* child = from->child(index);
        if (child->state().invisible) continue;
        const bool isContainer = child->role() == QAccessible::Client || child->role() == QAccessible::Grouping ||
                                 child->role() == QAccessible::Graphic || child->role() == QAccessible::ScrollBar;
        if (!isContainer) met.push_back(child);
        walk(child, met);
    }
}

std::vector<QAccessibleInterface*> elements(QWidget& view) {
    std::vector<QAccessibleInterface*> met;
    walk(QAccessible::queryAccessibleInterface(&view), met);
    return met;
}

std::vector<std::string> heardThroughout(QWidget& view) {
    std::vector<std::string> names;
    for (QAccessibleInterface* element : elements(view)) {
        names.push_back(element->text(QAccessible::Name).toStdString());
    }
    return names;
}

QAccessibleInterface* named(QWidget& view, const QString& name) {
    for (QAccessibleInterface* element : elements(view)) {
        if (element->text(QAccessible::Name) == name) return element;
    }
    return nullptr;
}

TEST(NowViewByEar, IsReadFromTheTop) {
    const NowScene scene({.snapshot = UsageSnapshot::warmingUp(thursday), .sample = ViewTests::overPace()});
    scene.show();
    EXPECT_THAT(heardThroughout(*scene.view),
                testing::ElementsAre(
                    "Brindlewick", "SAMPLE", "Exit", "Current session", "Over pace", "Burn rate 1.2 times, Over pace",
                    "74% of tokens spent against 60% of the window", "resets 4:15 PM", "2h 00m left",
                    "THIS WEEK. Over pace. Runs out Sun 11:13 PM. 58% used, 41% elapsed. resets Mon 5 PM · 4d 2h",
                    "Route the rest to Sonnet",
                    "Your Opus week is projected to hit 105% by reset; this lands it around 83%. Lowering effort "
                    "alone doesn't get you there.",
                    "back inside the cap", "Copy /model sonnet", "updated 2:15 PM", "Refresh now", "Dashboard",
                    "Settings", "Quit"));
}

TEST(NowViewByEar, SaysWhatIsMissingAtTheFirstRun) {
    const NowScene scene({.snapshot = UsageSnapshot::warmingUp(thursday), .readiness = Readiness::noUsageYet});
    scene.show();
    EXPECT_THAT(heardThroughout(*scene.view),
                testing::ElementsAre("Brindlewick", "Waiting for your first turn", testing::StartsWith("Claude Code"),
                                     "See a sample week", "updated 2:15 PM", "Refresh now", "Dashboard", "Settings",
                                     "Quit"));
}

TEST(NowViewByEar, NamesEveryControlAsAButtonThatCanHaveTheFocus) {
    for (const Readiness readiness : {Readiness::ready, Readiness::noLogsFound}) {
        const NowScene scene({.snapshot = ViewTests::overPace(), .readiness = readiness});
        scene.show();
        int buttons = 0;
        for (QAbstractButton* button : scene.view->findChildren<QAbstractButton*>()) {
            if (!button->isVisible()) continue;
            ++buttons;
            QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(button);
            EXPECT_FALSE(heard->text(QAccessible::Name).isEmpty());
            EXPECT_TRUE(heard->role() == QAccessible::Button) << heard->text(QAccessible::Name).toStdString();
            EXPECT_TRUE(heard->state().focusable);
            ASSERT_NE(heard->actionInterface(), nullptr);
            EXPECT_TRUE(heard->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
        }
        EXPECT_EQ(buttons, readiness == Readiness::ready ? 6 : 5);
    }
}

TEST(NowViewByEar, TellsWhatTheWeeksCardDoes) {
    const NowScene scene({.snapshot = ViewTests::overPace()});
    QAccessibleInterface* card = QAccessible::queryAccessibleInterface(&scene.part("weekCard"));
    EXPECT_EQ(card->text(QAccessible::Description), QStringLiteral("Open the full week view"));
}

TEST(NowViewByKeyboard, WalksOverAllControlsAndShowsWhereItIs) {
    const NowScene scene({.snapshot = UsageSnapshot::warmingUp(thursday), .sample = ViewTests::overPace()});
    scene.show();
    scene.view->setFocus();
    std::vector<std::string> stops;
    for (int step = 0; step < 7; ++step) {
        QTest::keyClick(scene.view->focusWidget(), Qt::Key_Tab);
        QWidget* now = scene.view->focusWidget();
        ASSERT_NE(now, nullptr);
        stops.push_back(now->objectName().toStdString());
        const auto rings = scene.view->findChildren<FocusRing*>();
        ASSERT_EQ(rings.size(), 1) << stops.back();
        EXPECT_TRUE(rings.front()->isVisible());
        const QRect ring(rings.front()->mapTo(scene.view.get(), QPoint()), rings.front()->size());
        const QRect control(now->mapTo(scene.view.get(), QPoint()), now->size());
        EXPECT_TRUE(ring.contains(control)) << stops.back();
        EXPECT_EQ(rings.front()->visibleRegion().boundingRect(), rings.front()->rect()) << "cut: " << stops.back();
    }
    EXPECT_THAT(stops, testing::ElementsAre("exitSample", "weekCard", "copyCommand", "refresh", "dashboard", "settings",
                                            "quit"));
}

TEST(NowViewByKeyboard, PressesWithReturnAndWithSpace) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        const NowScene scene({.snapshot = UsageSnapshot::warmingUp(thursday), .readiness = Readiness::noLogsFound});
        scene.show();
        QTest::keyClick(&scene.part("seeSample"), key);
        EXPECT_TRUE(scene.store->isShowingSample());
    }
}

/// A popover on a store that runs, on fakes.
class RefreshByEar : public testing::Test {
protected:
    RefreshByEar()
        : store_({.paths = UsageModel::AppPaths(home_.path()),
                  .calendar = UsageModel::Calendar::utc(),
                  .clock = clock_,
                  .openRecords = [this](const auto&) { return std::make_unique<FakeRecords>(shelf_); },
                  .notifications = service_}),
          look_(Look{}),
          view_(NowScene::setting(store_, look_)) {
        QObject::connect(&store_, &UsageStore::snapshotPublished, [this] { ++published_; });
        ViewTests::show(view_, view_.sizeHint());
    }

    IconButton& button() { return ViewTests::find<IconButton>(view_, "refresh"); }
    void press() {
        named(view_, QStringLiteral("Refresh now"))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
    }

    TestSupport::TemporaryFolder home_;
    std::shared_ptr<HandTurnedClock> clock_ = std::make_shared<HandTurnedClock>(thursday);
    std::shared_ptr<FakeRecords::Shelf> shelf_ = std::make_shared<FakeRecords::Shelf>();
    FakeNotificationService service_;
    UsageStore store_;
    ApplicationLook look_;
    NowView view_;
    int published_ = 0;
};

TEST_F(RefreshByEar, RunsAtThePressOfItsButton) {
    ASSERT_TRUE(becomes([&] { return published_ == 1 && clock_->sleepers() == 1; }));
    press();
    ASSERT_TRUE(becomes([&] { return published_ == 2; }));
    EXPECT_EQ(shelf_->count("sync"), 2U);
}

TEST_F(RefreshByEar, CannotBePressedWhileItRuns) {
    ASSERT_TRUE(becomes([&] { return published_ == 1 && clock_->sleepers() == 1; }));
    press();
    ASSERT_TRUE(becomes([&] { return button().isBusy(); }));
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&button())->state().disabled);
    press();
    QTest::mouseClick(&button(), Qt::LeftButton);
    ASSERT_TRUE(becomes([&] { return published_ == 2 && clock_->sleepers() == 2; }));
    clock_->turn(UsageStore::visibleSeconds);
    ASSERT_TRUE(becomes([&] { return !store_.isRefreshing(); }));
    EXPECT_FALSE(button().isBusy());
    EXPECT_EQ(published_, 2) << "the presses in between asked for nothing";
}

TEST_F(RefreshByEar, KeepsTheKeyboardOnItsButton) {
    ASSERT_TRUE(becomes([&] { return published_ == 1 && clock_->sleepers() == 1; }));
    view_.setFocus();
    button().setFocus(Qt::TabFocusReason);
    EXPECT_EQ(view_.findChildren<FocusRing*>().size(), 1);
    QTest::keyClick(&button(), Qt::Key_Return);
    EXPECT_EQ(view_.findChildren<FocusRing*>().size(), 1);
    EXPECT_TRUE(button().isBusy());
    EXPECT_EQ(view_.focusWidget(), &button());
    ASSERT_TRUE(becomes([&] { return published_ == 2 && clock_->sleepers() == 2; }));
    clock_->turn(UsageStore::visibleSeconds);
    ASSERT_TRUE(becomes([&] { return !button().isBusy(); }));
    EXPECT_EQ(view_.focusWidget(), &button());
    EXPECT_EQ(view_.findChildren<FocusRing*>().size(), 1);
}

TEST_F(RefreshByEar, BringsTheNewNumbers) {
    ASSERT_TRUE(becomes([&] { return published_ == 1 && clock_->sleepers() == 1; }));
    EXPECT_EQ(ViewTests::textOf(view_, "footerLine"), "updated 2:15 PM");
    clock_->set(thursday + 60.0);
    press();
    ASSERT_TRUE(becomes([&] { return published_ == 2; }));
    EXPECT_EQ(ViewTests::textOf(view_, "footerLine"), "updated 2:16 PM");
}

TEST_F(RefreshByEar, AFailureStaysUntilACleanRefresh) {
    ASSERT_TRUE(becomes([&] { return published_ == 1 && clock_->sleepers() == 1; }));
    {
        const std::scoped_lock lock(shelf_->mutex);
        shelf_->syncFailure = "database is locked";
    }
    press();
    ASSERT_TRUE(becomes([&] { return clock_->sleepers() == 2; }));
    EXPECT_EQ(ViewTests::textOf(view_, "footerLine"), "database is locked");
    clock_->turn(UsageStore::visibleSeconds);
    ASSERT_TRUE(becomes([&] { return !button().isBusy(); }));
    EXPECT_EQ(ViewTests::textOf(view_, "footerLine"), "database is locked");
    {
        const std::scoped_lock lock(shelf_->mutex);
        shelf_->syncFailure.clear();
    }
    press();
    ASSERT_TRUE(becomes([&] { return published_ == 2; }));
    EXPECT_EQ(ViewTests::textOf(view_, "footerLine"), "updated 2:15 PM");
}

} // namespace
