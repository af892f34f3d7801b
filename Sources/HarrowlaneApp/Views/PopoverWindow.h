#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <QWidget>

#include "HarrowlaneApp/Views/NowView.h"
#include "HarrowlaneApp/Views/PopoverPlacement.h"

namespace HarrowlaneApp {

/// The window that opens from the status item. It is built once and only shown again, so that it is there at once;
/// Escape, a click beside it and a second click on the item close it.
class PopoverWindow : public QWidget {
    Q_OBJECT

public:
    using Instant = std::chrono::steady_clock::time_point;

    /// Takes the view over. `clock` never goes backwards.
    explicit PopoverWindow(
        NowView* view, std::function<Instant()> clock = [] { return std::chrono::steady_clock::now(); });

    /// A click on the item, at this place of the desktop: opens the popover there, or closes it.
    void toggle(const QPoint& click);
    /// Opens it at the place, or moves it there.
    void open(const QPoint& click);

    /// Shows it as an ordinary window, for a desktop without a panel, until `leaveDesktop`. A click then leaves it
    /// open.
    void standOnDesktop();
    void leaveDesktop();

    [[nodiscard]] NowView& view() const { return *view_; }

Q_SIGNALS:
    void dashboardRequested();
    void settingsRequested();
    void quitRequested();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    void closeFor(void (NowView::*request)(), void (PopoverWindow::*forwarded)());
    [[nodiscard]] bool standsOnDesktop() const { return windowType() == Qt::Window; }
    void follow();
    void fit();

    NowView* view_;
    std::function<Instant()> clock_;
    QPoint click_;
    /// What was shown when the window last took the view's size.
    NowTexts::Body fittedBody_ = NowTexts::Body::warmingUp;
    /// When a press beside the popover closed it.
    std::optional<Instant> pressedBesideAt_;
};

} // namespace HarrowlaneApp
