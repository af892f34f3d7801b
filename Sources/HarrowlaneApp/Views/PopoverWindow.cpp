#include "HarrowlaneApp/Views/PopoverWindow.h"

#include <utility>
#include <vector>

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>

namespace HarrowlaneApp {

namespace {

/// Longer than a click takes to come back from the panel, shorter than a user takes to change their mind.
constexpr std::chrono::milliseconds oneClick(400);

std::vector<PopoverPlacement::Screen> screensNow() {
    std::vector<PopoverPlacement::Screen> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        screens.push_back({.geometry = screen->geometry(), .free = screen->availableGeometry()});
    }
    return screens;
}

} // namespace

PopoverWindow::PopoverWindow(NowView* view, std::function<Instant()> clock)
    : QWidget(nullptr, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
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
        close();
        Q_EMIT(this->*forwarded)();
    });
}

void PopoverWindow::toggle(const QPoint& click) {
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
    click_ = click;
    pressedBesideAt_.reset();
    // No ring is left of the last visit, and Tab begins at the first control.
    setFocus();
    fit();
    show();
    activateWindow();
}

void PopoverWindow::follow() {
    if (!isVisible()) return;
    // What comes with a refresh must not move what the user points at; a card that grew can be scrolled.
    if (underMouse() && view_->body() == fittedBody_) return;
    fit();
}

void PopoverWindow::fit() {
    fittedBody_ = view_->body();
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

void PopoverWindow::mousePressEvent(QMouseEvent* event) {
    if (!rect().contains(event->position().toPoint())) pressedBesideAt_ = clock_();
    QWidget::mousePressEvent(event);
}

} // namespace HarrowlaneApp
