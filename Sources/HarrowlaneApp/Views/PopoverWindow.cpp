#include "HarrowlaneApp/Views/PopoverWindow.h"

#include <utility>
#include <vector>

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>

#include "HarrowlaneApp/Platform/Desktop.h"

namespace HarrowlaneApp {

namespace {

/// Longer than a click takes to come back from the panel, shorter than a user takes to change their mind.
constexpr std::chrono::milliseconds oneClick(400);

constexpr Qt::WindowFlags popoverKind = Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint;
constexpr Qt::WindowFlags windowKind = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                       Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint;

std::vector<PopoverPlacement::Screen> screensNow() {
    std::vector<PopoverPlacement::Screen> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        screens.push_back({.geometry = screen->geometry(), .free = screen->availableGeometry()});
    }
    return screens;
}

} // namespace

PopoverWindow::PopoverWindow(NowView* view, std::function<Instant()> clock)
    : QWidget(nullptr, popoverKind),
      view_(view),
      clock_(std::move(clock)) {
    view->setParent(this);
    setObjectName(QStringLiteral("popover"));
    setWindowTitle(view->accessibleName());
    setAccessibleName(view->accessibleName());
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_QuitOnClose, false);
    connect(view, &NowView::resized, this, &PopoverWindow::follow);
    closeFor(&NowView::dashboardRequested, &PopoverWindow::dashboardRequested);
    closeFor(&NowView::settingsRequested, &PopoverWindow::settingsRequested);
    closeFor(&NowView::quitRequested, &PopoverWindow::quitRequested);
    resize(view->sizeHint());
    create(); // so that the first click need not wait for the window system
}

/// What opens another window leaves none open before it.
void PopoverWindow::closeFor(void (NowView::*request)(), void (PopoverWindow::*forwarded)()) {
    connect(view_, request, this, [this, forwarded] {
        if (!standsOnDesktop()) close();
        Q_EMIT(this->*forwarded)();
    });
}

void PopoverWindow::toggle(const QPoint& click) {
    leaveDesktop();
    // Where the panel hears of the click that closed the popover, it must not open it again.
    const auto pressedAt = std::exchange(pressedBesideAt_, std::nullopt);
    if (pressedAt && clock_() - *pressedAt < oneClick) return;
    if (isVisible()) {
        close();
    } else {
        open(click);
    }
}

void PopoverWindow::open(const QPoint& click) {
    leaveDesktop();
    // Where nothing shines through, round corners would be black.
    view_->setCorners(Desktop::blendsWindows() ? NowView::Corners::round : NowView::Corners::square);
    click_ = click;
    pressedBesideAt_.reset();
    // No ring is left of the last visit, and Tab begins at the first control.
    setFocus();
    view_->read();
    fit();
    show();
    activateWindow();
}

void PopoverWindow::standOnDesktop() {
    if (!standsOnDesktop()) {
        setWindowFlags(windowKind);
        view_->setCorners(NowView::Corners::square);
        view_->read();
        fit();
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void PopoverWindow::leaveDesktop() {
    if (standsOnDesktop()) setWindowFlags(popoverKind); // which hides it
}

void PopoverWindow::follow() {
    if (!isVisible()) return;
    // What comes with a refresh must not move what the user points at; a card that grew can be scrolled.
    if (underMouse() && view_->body() == fittedBody_) return;
    fit();
}

void PopoverWindow::fit() {
    fittedBody_ = view_->body();
    if (standsOnDesktop()) return setFixedSize(view_->sizeHint());
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    const auto screens = screensNow();
    setGeometry(PopoverPlacement::place({.click = click_, .size = view_->sizeHint(), .screens = screens}).box);
}

void PopoverWindow::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    if (isVisible()) fit();
}

void PopoverWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    view_->setGeometry(rect());
}

bool PopoverWindow::event(QEvent* event) {
    // Without a grab, which Wayland gives to no window of this kind, a press elsewhere shows in this alone.
    const bool isDeserted = event->type() == QEvent::WindowDeactivate && isVisible() && !standsOnDesktop();
    if (isDeserted && QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        pressedBesideAt_ = clock_();
        close();
    }
    return QWidget::event(event);
}

void PopoverWindow::mousePressEvent(QMouseEvent* event) {
    if (!rect().contains(event->position().toPoint())) pressedBesideAt_ = clock_();
    QWidget::mousePressEvent(event);
}

} // namespace HarrowlaneApp
