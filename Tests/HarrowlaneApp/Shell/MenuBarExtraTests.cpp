#include "HarrowlaneApp/Shell/MenuBarExtra.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "HarrowlaneApp/Alerts/FakeNotificationService.h"
#include "HarrowlaneApp/Platform/Fakes.h"
#include "HarrowlaneApp/Shell/StatusFace.h"
#include "HarrowlaneApp/Store/UsageStoreFakes.h"
#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {
namespace {

using UsageModel::Date;
using UsageModel::UsageSnapshot;

class MenuBarExtraTest : public testing::Test {
protected:
    MenuBarExtraTest() {
        QObject::connect(&store_, &UsageStore::snapshotPublished, [this] { ++published_; });
    }

    [[nodiscard]] StatusItemFace faceOf(const UsageSnapshot& snapshot) const {
        return statusFace({.snapshot = snapshot, .startsAtLogin = autostart_.enabled});
    }

    TestSupport::TemporaryFolder home_;
    std::shared_ptr<HandTurnedClock> clock_ = std::make_shared<HandTurnedClock>(Date{1772323200});
    std::shared_ptr<FakeRecords::Shelf> shelf_ = std::make_shared<FakeRecords::Shelf>();
    FakeNotificationService notifications_;
    FakeStatusItem item_;
    FakeAutostart autostart_;
    UsageStore store_{{.paths = UsageModel::AppPaths(home_.path()),
                       .calendar = UsageModel::Calendar::utc(),
                       .clock = clock_,
                       .openRecords = [this](const auto&) { return std::make_unique<FakeRecords>(shelf_); },
                       .notifications = notifications_}};
    int published_ = 0;
};

TEST_F(MenuBarExtraTest, IsInThePanelBeforeTheFirstRun) {
    const MenuBarExtra extra({.store = store_, .item = item_, .autostart = autostart_});
    ASSERT_EQ(item_.faces.size(), 1);
    EXPECT_EQ(item_.faces[0], faceOf(UsageSnapshot::warmingUp(Date{1772323200})));
}

TEST_F(MenuBarExtraTest, ShowsEachNewSnapshot) {
    const MenuBarExtra extra({.store = store_, .item = item_, .autostart = autostart_});
    ASSERT_TRUE(becomes([&] { return published_ == 1; }));
    ASSERT_EQ(item_.faces.size(), 2);
    EXPECT_EQ(item_.faces[1], faceOf(store_.snapshot()));
}

TEST_F(MenuBarExtraTest, DoesWhatItsMenuAsksFor) {
    MenuBarExtra extra({.store = store_, .item = item_, .autostart = autostart_});
    QSignalSpy opened(&extra, &MenuBarExtra::openRequested);
    QSignalSpy settings(&extra, &MenuBarExtra::settingsRequested);
    QSignalSpy quit(&extra, &MenuBarExtra::quitRequested);
    emit item_.entryChosen(QStringLiteral("open"));
    EXPECT_EQ(opened.count(), 1);
    emit item_.entryChosen(QStringLiteral("settings"));
    EXPECT_EQ(settings.count(), 1);
    emit item_.entryChosen(QStringLiteral("quit"));
    EXPECT_EQ(quit.count(), 1);
    ASSERT_TRUE(becomes([&] { return published_ == 1; }));
    emit item_.entryChosen(QStringLiteral("refresh"));
    ASSERT_TRUE(becomes([&] { return published_ == 2; }));
    emit item_.entryChosen(QStringLiteral("nothing of ours"));
    EXPECT_EQ(opened.count() + settings.count() + quit.count(), 3);
}

TEST_F(MenuBarExtraTest, TellsWhereTheItemWasClicked) {
    MenuBarExtra extra({.store = store_, .item = item_, .autostart = autostart_});
    QSignalSpy clicked(&extra, &MenuBarExtra::clicked);
    emit item_.activated(QPoint(12, 7));
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(clicked[0][0].toPoint(), QPoint(12, 7));
}

TEST_F(MenuBarExtraTest, SwitchesTheStartAtLogin) {
    const MenuBarExtra extra({.store = store_, .item = item_, .autostart = autostart_});
    const auto mark = [&] { return item_.faces.last().menu[3].checked; };
    EXPECT_EQ(mark(), false);
    emit item_.entryChosen(QStringLiteral("start-at-login"));
    EXPECT_TRUE(autostart_.enabled);
    EXPECT_EQ(mark(), true);
    emit item_.entryChosen(QStringLiteral("start-at-login"));
    EXPECT_FALSE(autostart_.enabled);
    EXPECT_EQ(mark(), false);
}

TEST_F(MenuBarExtraTest, TellsWhyTheStartAtLoginStaysAsItIs) {
    autostart_.failure = [] { throw std::system_error(EACCES, std::generic_category(), "autostart"); };
    MenuBarExtra extra({.store = store_, .item = item_, .autostart = autostart_});
    QSignalSpy failed(&extra, &MenuBarExtra::failed);
    emit item_.entryChosen(QStringLiteral("start-at-login"));
    ASSERT_EQ(failed.count(), 1);
    EXPECT_EQ(failed[0][0].toString(),
              QStringLiteral("Start at login could not be changed: autostart: Permission denied"));
    EXPECT_EQ(item_.faces.last().menu[3].checked, false);
}

} // namespace
} // namespace HarrowlaneApp
