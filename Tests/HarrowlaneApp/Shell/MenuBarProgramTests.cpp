#include "HarrowlaneApp/Shell/MenuBarProgram.h"

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

class MenuBarProgramTest : public testing::Test {
protected:
    MenuBarProgramTest() {
        QObject::connect(&store_, &UsageStore::snapshotPublished, [this] { ++published_; });
    }

    TestSupport::TemporaryFolder home_;
    std::shared_ptr<HandTurnedClock> clock_ = std::make_shared<HandTurnedClock>(Date{1772323200});
    std::shared_ptr<FakeRecords::Shelf> shelf_ = std::make_shared<FakeRecords::Shelf>();
    FakeNotificationService notifications_;
    FakeStatusItem item_;
    UsageStore store_{{.paths = UsageModel::AppPaths(home_.path()),
                       .calendar = UsageModel::Calendar::utc(),
                       .clock = clock_,
                       .openRecords = [this](const auto&) { return std::make_unique<FakeRecords>(shelf_); },
                       .notifications = notifications_}};
    int published_ = 0;
};

TEST_F(MenuBarProgramTest, IsInThePanelBeforeTheFirstRun) {
    const MenuBarProgram program(store_, item_);
    ASSERT_EQ(item_.faces.size(), 1);
    EXPECT_EQ(item_.faces[0], statusFace(UsageSnapshot::warmingUp(Date{1772323200})));
}

TEST_F(MenuBarProgramTest, ShowsEachNewSnapshot) {
    const MenuBarProgram program(store_, item_);
    ASSERT_TRUE(waitFor([&] { return published_ == 1; }));
    ASSERT_EQ(item_.faces.size(), 2);
    EXPECT_EQ(item_.faces[1], statusFace(store_.snapshot()));
}

TEST_F(MenuBarProgramTest, DoesWhatItsMenuAsksFor) {
    MenuBarProgram program(store_, item_);
    QSignalSpy opened(&program, &MenuBarProgram::openRequested);
    QSignalSpy settings(&program, &MenuBarProgram::settingsRequested);
    QSignalSpy quit(&program, &MenuBarProgram::quitRequested);
    emit item_.entryChosen(QStringLiteral("open"));
    EXPECT_EQ(opened.count(), 1);
    emit item_.entryChosen(QStringLiteral("settings"));
    EXPECT_EQ(settings.count(), 1);
    emit item_.entryChosen(QStringLiteral("quit"));
    EXPECT_EQ(quit.count(), 1);
    ASSERT_TRUE(waitFor([&] { return published_ == 1; }));
    emit item_.entryChosen(QStringLiteral("refresh"));
    ASSERT_TRUE(waitFor([&] { return published_ == 2; }));
    emit item_.entryChosen(QStringLiteral("nothing of ours"));
    EXPECT_EQ(opened.count() + settings.count() + quit.count(), 3);
}

TEST_F(MenuBarProgramTest, OpensWhereTheItemWasClicked) {
    MenuBarProgram program(store_, item_);
    std::optional<QPoint> place;
    QObject::connect(&program, &MenuBarProgram::openRequested, [&](std::optional<QPoint> at) { place = at; });
    emit item_.activated(QPoint(12, 7));
    EXPECT_EQ(place, QPoint(12, 7));
}

} // namespace
} // namespace HarrowlaneApp
