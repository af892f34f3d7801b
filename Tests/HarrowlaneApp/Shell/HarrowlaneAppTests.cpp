#include "HarrowlaneApp/Shell/HarrowlaneApp.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include "HarrowlaneApp/Alerts/FakeNotificationService.h"
#include "HarrowlaneApp/Platform/Fakes.h"
#include "HarrowlaneApp/Store/UsageStoreFakes.h"
#include "HarrowlaneApp/Views/SettingsControls.h"
#include "Support/TemporaryFolder.h"

namespace {

using ::HarrowlaneApp::StatusItem;
using UsageModel::Date;
// The namespace bears the same name.
using Program = ::HarrowlaneApp::HarrowlaneApp;

class Application : public testing::Test {
protected:
    Application() {
        QObject::connect(&program_.store(), &::HarrowlaneApp::UsageStore::snapshotPublished, [this] { ++published_; });
    }

    template <typename Control>
    static Control& find(const QWidget& view, const char* name) {
        auto* found = view.findChild<Control*>(QString::fromUtf8(name));
        if (found == nullptr) throw std::runtime_error(std::string("no ") + name);
        return *found;
    }

    TestSupport::TemporaryFolder home_;
    std::shared_ptr<::HarrowlaneApp::HandTurnedClock> clock_ =
        std::make_shared<::HarrowlaneApp::HandTurnedClock>(Date{1772323200});
    std::shared_ptr<::HarrowlaneApp::FakeRecords::Shelf> shelf_ =
        std::make_shared<::HarrowlaneApp::FakeRecords::Shelf>();
    ::HarrowlaneApp::FakeNotificationService notifications_;
    ::HarrowlaneApp::FakeStatusItem item_;
    qsizetype facesAtOpening_ = -1;
    ::HarrowlaneApp::FakePreferences preferences_;
    ::HarrowlaneApp::FakeDesktopAppearance appearance_;
    ::HarrowlaneApp::FakeAutostart autostart_;
    Program program_{{
        .world = {.paths = UsageModel::AppPaths(home_.path()),
                  .calendar = UsageModel::Calendar::utc(),
                  .clock = clock_,
                  .openRecords =
                      [this](const auto&) {
                          facesAtOpening_ = item_.faces.size();
                          return std::make_unique<::HarrowlaneApp::FakeRecords>(shelf_);
                      },
                  .notifications = notifications_},
        .item = item_,
        .preferences = preferences_,
        .appearance = appearance_,
        .autostart = autostart_,
    }};
    int published_ = 0;
};

TEST_F(Application, IsInThePanelAtOnceAndShowsNoWindow) {
    EXPECT_EQ(item_.faces.size(), 1);
    ASSERT_TRUE(::HarrowlaneApp::becomes([&] { return published_ == 1; }));
    for (const QWidget* window : QApplication::topLevelWidgets()) EXPECT_FALSE(window->isVisible());
}

TEST_F(Application, IsInThePanelBeforeItOpensTheRecords) {
    ASSERT_TRUE(::HarrowlaneApp::becomes([&] { return published_ == 1; }));
    EXPECT_EQ(facesAtOpening_, 1);
}

TEST_F(Application, OpensThePopoverAtTheClickAndClosesItAtTheNext) {
    emit item_.activated(QPoint(400, 5));
    EXPECT_TRUE(program_.popover().isVisible());
    EXPECT_EQ(program_.popover().x(), 400 - 170);
    emit item_.activated(QPoint(400, 5));
    EXPECT_FALSE(program_.popover().isVisible());
}

TEST_F(Application, TellsAScreenReaderOfThePopoverWhileItIsOpen) {
    QAccessibleInterface* program = QAccessible::queryAccessibleInterface(qApp);
    const int windows = program->childCount();
    emit item_.activated(QPoint(400, 5));
    ASSERT_EQ(program->childCount(), windows + 1);
    QAccessibleInterface* popover = program->child(windows);
    EXPECT_EQ(popover->object(), &program_.popover());
    EXPECT_EQ(popover->role(), QAccessible::Dialog);
    EXPECT_EQ(popover->parent(), program);
    EXPECT_EQ(program->indexOfChild(popover), windows);
    EXPECT_EQ(program->child(windows + 1), nullptr);
    emit item_.activated(QPoint(400, 5));
    EXPECT_EQ(program->childCount(), windows);
    EXPECT_EQ(program->indexOfChild(popover), -1);
}

TEST_F(Application, TellsAScreenReaderThatDashboardAndSettingsAreWindows) {
    for (QWidget* window : std::initializer_list<QWidget*>{&program_.dashboard(), &program_.settings()}) {
        EXPECT_EQ(QAccessible::queryAccessibleInterface(window)->role(), QAccessible::Window);
    }
}

TEST_F(Application, OpensThePopoverFromTheMenuWhereItWasLast) {
    emit item_.activated(QPoint(400, 5));
    emit item_.activated(QPoint(400, 5));
    emit item_.entryChosen(QStringLiteral("open"));
    EXPECT_TRUE(program_.popover().isVisible());
    EXPECT_EQ(program_.popover().x(), 400 - 170);
}

TEST_F(Application, TakesNoPlaceForThatOfTheLastClick) {
    emit item_.activated(QPoint(400, 5));
    emit item_.activated(QPoint(400, 5));
    emit item_.activated(QPoint());
    EXPECT_TRUE(program_.popover().isVisible());
    EXPECT_EQ(program_.popover().x(), 400 - 170);
}

TEST_F(Application, OpensTheDashboardFromThePopover) {
    ASSERT_TRUE(::HarrowlaneApp::becomes([&] { return published_ == 1; }));
    emit item_.activated(QPoint(400, 5));
    QTest::mouseClick(&find<QWidget>(program_.popover(), "dashboard"), Qt::LeftButton);
    EXPECT_FALSE(program_.popover().isVisible());
    EXPECT_TRUE(program_.dashboard().isVisible());
    EXPECT_EQ(program_.dashboard().windowTitle(), QStringLiteral("Brindlewick — Dashboard"));
    EXPECT_EQ(program_.dashboard().size(), QSize(720, 620));
    EXPECT_EQ(program_.dashboard().choice(), UsageModel::ModelAndEffort());
}

TEST_F(Application, OpensTheSettingsFromThePopoverAndTheMenu) {
    emit item_.activated(QPoint(400, 5));
    QTest::mouseClick(&find<QWidget>(program_.popover(), "settings"), Qt::LeftButton);
    EXPECT_TRUE(program_.settings().isVisible());
    program_.settings().close();
    emit item_.entryChosen(QStringLiteral("settings"));
    EXPECT_TRUE(program_.settings().isVisible());
    EXPECT_EQ(program_.settings().size(), QSize(460, 560));
}

TEST_F(Application, QuitsFromThePopoverAndTheMenu) {
    QSignalSpy quit(&program_, &Program::quitRequested);
    emit item_.activated(QPoint(400, 5));
    QTest::mouseClick(&find<QWidget>(program_.popover(), "quit"), Qt::LeftButton);
    EXPECT_EQ(quit.count(), 1);
    emit item_.entryChosen(QStringLiteral("quit"));
    EXPECT_EQ(quit.count(), 2);
}

TEST_F(Application, LooksAsThePreferenceSaysAndAtOnce) {
    const auto& palette = [&]() -> const ::HarrowlaneApp::Palette& { return program_.settings().look().palette(); };
    EXPECT_EQ(palette().appearance, ::HarrowlaneApp::Appearance::light);
    preferences_.setAppearancePreference(QStringLiteral("dark"));
    EXPECT_EQ(palette().appearance, ::HarrowlaneApp::Appearance::dark);
    preferences_.setAppearancePreference(QStringLiteral("sepia"));
    EXPECT_EQ(palette().appearance, ::HarrowlaneApp::Appearance::light);
    appearance_.show({.appearance = ::HarrowlaneApp::Appearance::dark});
    EXPECT_EQ(palette().appearance, ::HarrowlaneApp::Appearance::dark);
}

TEST_F(Application, StandsInAWindowWhereNoPanelComes) {
    item_.setPresence(StatusItem::Presence::absent);
    EXPECT_FALSE(program_.popover().isVisible()) << "a panel that crashed is soon back";
    ASSERT_TRUE(::HarrowlaneApp::becomes([&] { return program_.popover().isVisible(); }));
    EXPECT_EQ(program_.popover().windowType(), Qt::Window);
    item_.setPresence(StatusItem::Presence::shown);
    EXPECT_FALSE(program_.popover().isVisible());
}

TEST_F(Application, IsSeenAgainAtASecondStartWithoutAPanel) {
    item_.setPresence(StatusItem::Presence::absent);
    program_.open();
    EXPECT_TRUE(program_.popover().isVisible());
    program_.popover().close();
    program_.open();
    EXPECT_TRUE(program_.popover().isVisible());
    EXPECT_EQ(program_.popover().windowType(), Qt::Window);
}

TEST_F(Application, OpensAtTheClickOnAnItemThatHasJustComeBack) {
    item_.setPresence(StatusItem::Presence::absent);
    program_.open();
    emit item_.activated(QPoint(400, 5));
    EXPECT_TRUE(program_.popover().isVisible());
    EXPECT_EQ(program_.popover().windowType(), Qt::Popup);
}

TEST_F(Application, DoesNotComeBackOfItselfWhenItWasClosed) {
    item_.setPresence(StatusItem::Presence::absent);
    program_.open();
    program_.popover().close();
    QTest::qWait(static_cast<int>(1000 * Program::panelGraceSeconds) + 200);
    EXPECT_FALSE(program_.popover().isVisible());
}

TEST_F(Application, WaitsOutAPanelThatRestarts) {
    item_.setPresence(StatusItem::Presence::shown);
    item_.setPresence(StatusItem::Presence::absent);
    item_.setPresence(StatusItem::Presence::shown);
    QTest::qWait(static_cast<int>(1000 * Program::panelGraceSeconds) + 200);
    EXPECT_FALSE(program_.popover().isVisible());
}

} // namespace
