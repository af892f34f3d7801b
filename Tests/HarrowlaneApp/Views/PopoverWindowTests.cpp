#include "HarrowlaneApp/Views/PopoverWindow.h"

#include <gtest/gtest.h>

#include <QScreen>
#include <QSignalSpy>
#include <QWindow>

#include "HarrowlaneApp/Views/FocusRing.h"
#include "HarrowlaneApp/Views/NowScene.h"

namespace {

using namespace HarrowlaneApp;
using std::chrono::milliseconds;
using UsageModel::UsageSnapshot;
using ViewTests::thursday;

class Popover : public testing::Test {
protected:
    Popover() : scene_({.snapshot = ViewTests::overPace()}), window_(scene_.view.release(), [this] { return now_; }) {}

    void click(const QPoint& place) {
        window_.toggle(place);
        QApplication::processEvents();
    }

    /// As the window system tells of a press while a popup is open: the popup gets it, wherever it is.
    void pressBeside() {
        const QPoint outside = window_.rect().bottomRight() + QPoint(30, 10);
        QTest::mousePress(&window_, Qt::LeftButton, {}, outside);
        QApplication::processEvents();
    }

    [[nodiscard]] NowView& view() { return window_.view(); }

    static constexpr QPoint item{500, 10};
    ViewTests::NowScene scene_;
    PopoverWindow::Instant now_;
    PopoverWindow window_;
};

TEST_F(Popover, OpensWhereTheItemWasClicked) {
    EXPECT_FALSE(window_.isVisible());
    click(item);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(window_.windowType(), Qt::Popup);
    EXPECT_EQ(window_.size(), QSize(340, 548));
    EXPECT_EQ(window_.pos(), QPoint(500 - 170, 10 + 8));
    EXPECT_EQ(view().geometry(), window_.rect());
}

TEST_F(Popover, StaysOnTheScreen) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (const QPoint corner : {screen.topLeft(), screen.topRight(), screen.bottomLeft(), screen.bottomRight()}) {
        window_.open(corner);
        EXPECT_TRUE(screen.contains(window_.geometry()));
    }
}

TEST_F(Popover, ClosesAtASecondClickOnTheItem) {
    click(item);
    click(item);
    EXPECT_FALSE(window_.isVisible());
    click(item);
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(Popover, ClosesOnEscape) {
    click(item);
    QTest::keyClick(&window_, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(Popover, ClosesOnEscapeFromAControl) {
    click(item);
    QWidget& quit = ViewTests::find<QWidget>(window_, "quit");
    quit.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&quit, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(Popover, ClosesOnAPressBesideIt) {
    click(item);
    pressBeside();
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(Popover, StaysOnAPressWithin) {
    click(item);
    QTest::mousePress(&window_, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(Popover, IsNotOpenedAgainByTheClickThatClosedIt) {
    click(item);
    pressBeside();
    now_ += milliseconds(399);
    click(item); // the panel tells of the same click
    EXPECT_FALSE(window_.isVisible());
    click(item);
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(Popover, OpensAtALaterClick) {
    click(item);
    pressBeside();
    now_ += milliseconds(400);
    click(item);
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(Popover, IsBuiltOnceAndShownAgain) {
    const QWindow* handle = window_.windowHandle();
    ASSERT_NE(handle, nullptr) << "before it was ever shown";
    const auto widgets = window_.findChildren<QWidget*>();
    for (int round = 0; round < 3; ++round) {
        click(item);
        click(item);
    }
    EXPECT_EQ(window_.windowHandle(), handle);
    EXPECT_EQ(window_.findChildren<QWidget*>(), widgets);
}

TEST_F(Popover, ClosesBeforeAnotherWindowOpens) {
    const QSignalSpy dashboard(&window_, &PopoverWindow::dashboardRequested);
    const QSignalSpy settings(&window_, &PopoverWindow::settingsRequested);
    const QSignalSpy quit(&window_, &PopoverWindow::quitRequested);
    for (const char* control : {"weekCard", "dashboard", "settings", "quit"}) {
        click(item);
        QTest::mouseClick(&ViewTests::find<QWidget>(window_, control), Qt::LeftButton);
        EXPECT_FALSE(window_.isVisible()) << control;
    }
    EXPECT_EQ(dashboard.count(), 2);
    EXPECT_EQ(settings.count(), 1);
    EXPECT_EQ(quit.count(), 1);
}

TEST_F(Popover, StaysOpenForWhatHappensWithin) {
    click(item);
    for (const char* control : {"copyCommand", "refresh"}) {
        QTest::mouseClick(&ViewTests::find<QWidget>(window_, control), Qt::LeftButton);
        EXPECT_TRUE(window_.isVisible()) << control;
    }
}

TEST_F(Popover, BeginsEachVisitWithoutAFocus) {
    click(item);
    ViewTests::find<QWidget>(window_, "quit").setFocus(Qt::TabFocusReason);
    EXPECT_EQ(window_.findChildren<FocusRing*>().size(), 1);
    click(item);
    click(item);
    EXPECT_TRUE(window_.findChildren<FocusRing*>().isEmpty());
    QTest::keyClick(&window_, Qt::Key_Tab);
    ASSERT_NE(window_.focusWidget(), nullptr);
    EXPECT_EQ(window_.focusWidget()->objectName(), QStringLiteral("weekCard")) << "the first control";
}

UsageSnapshot shorter() {
    UsageSnapshot snapshot = ViewTests::overPace();
    snapshot.recommendation.reset();
    return snapshot;
}

TEST_F(Popover, FollowsTheSizeOfWhatItShows) {
    click(item);
    const QPoint corner = window_.pos();
    scene_.store->setSampleSnapshot(shorter());
    EXPECT_EQ(window_.height(), 548 - 122 - 8);
    EXPECT_EQ(window_.pos(), corner) << "the side at the panel stays";
}

TEST_F(Popover, MovesNothingUnderThePointer) {
    click(item);
    window_.setAttribute(Qt::WA_UnderMouse);
    scene_.store->setSampleSnapshot(shorter());
    EXPECT_EQ(window_.height(), 548);
    window_.setAttribute(Qt::WA_UnderMouse, false);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&window_, &leave);
    EXPECT_EQ(window_.height(), 548 - 122 - 8);
}

TEST_F(Popover, IsADialogByEar) {
    EXPECT_EQ(ViewTests::roleOf(window_), QAccessible::Dialog);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&window_)->text(QAccessible::Name), QStringLiteral("Brindlewick"));
}

TEST(PopoverOfTheFirstRun, GrowsForTheSampleThatWasAskedFor) {
    ViewTests::NowScene scene({.snapshot = UsageSnapshot::warmingUp(thursday), .readiness = Readiness::noLogsFound});
    PopoverWindow window(scene.view.release());
    window.open({500, 10});
    QApplication::processEvents();
    EXPECT_EQ(window.height(), 348);
    window.setAttribute(Qt::WA_UnderMouse); // it is, for the button was clicked
    QTest::mouseClick(&ViewTests::find<QWidget>(window, "seeSample"), Qt::LeftButton);
    EXPECT_EQ(window.height(), 548);
    QTest::mouseClick(&ViewTests::find<QWidget>(window, "exitSample"), Qt::LeftButton);
    EXPECT_EQ(window.height(), 348);
}

TEST_F(Popover, StandsAsAnOrdinaryWindowWhereThereIsNoPanel) {
    window_.standOnDesktop();
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(window_.windowType(), Qt::Window);
    EXPECT_EQ(window_.size(), view().sizeHint());
    QTest::mouseClick(&ViewTests::find<QWidget>(window_, "settings"), Qt::LeftButton);
    EXPECT_TRUE(window_.isVisible()) << "what it opens stands beside it";
    window_.leaveDesktop();
    EXPECT_FALSE(window_.isVisible());
    click(item);
    EXPECT_EQ(window_.windowType(), Qt::Popup);
    EXPECT_TRUE(window_.isVisible());
}

} // namespace
