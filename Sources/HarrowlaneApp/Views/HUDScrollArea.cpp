#include "HarrowlaneApp/Views/HUDScrollArea.h"

#include <algorithm>

#include <QPainter>
#include <QWheelEvent>

#include "HarrowlaneApp/Drawing/HUDPanel.h"

namespace HarrowlaneApp {

namespace {

constexpr double leastThumb = 28.0;
constexpr double restOpacity = 0.18;
constexpr double hoverOpacity = 0.34;

} // namespace

HUDScrollBar::HUDScrollBar(const ApplicationLook& look, Qt::Orientation orientation, QWidget* parent)
    : QScrollBar(orientation, parent),
      look_(look) {
    setAttribute(Qt::WA_Hover);
    connect(&look, &ApplicationLook::changed, this, [this] { update(); });
}

QSize HUDScrollBar::sizeHint() const {
    const QSize usual = QScrollBar::sizeHint();
    return orientation() == Qt::Vertical ? QSize(thickness, usual.height()) : QSize(usual.width(), thickness);
}

QRectF HUDScrollBar::thumb() const {
    const double length = orientation() == Qt::Vertical ? height() : width();
    const double whole = static_cast<double>(maximum()) - minimum() + pageStep();
    const double size = std::min(std::max(length * pageStep() / std::max(whole, 1.0), leastThumb), length);
    const double range = std::max(static_cast<double>(maximum()) - minimum(), 1.0);
    const double start = (length - size) * (static_cast<double>(value()) - minimum()) / range;
    constexpr double inset = 2.0;
    if (orientation() == Qt::Vertical) return {inset, start, thickness - 2.0 * inset, size};
    return {start, inset, size, thickness - 2.0 * inset};
}

void HUDScrollBar::paintEvent(QPaintEvent* /*event*/) {
    if (maximum() <= minimum()) return;
    QPainter painter(this);
    const double opacity = underMouse() || isSliderDown() ? hoverOpacity : restOpacity;
    fillRounded(painter, thumb(), 2.0, withOpacity(look_.palette().ink, opacity));
}

HUDScrollArea::HUDScrollArea(const ApplicationLook& look, Way way, QWidget* parent) : QScrollArea(parent), way_(way) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    setVerticalScrollBar(new HUDScrollBar(look, Qt::Vertical));
    setHorizontalScrollBar(new HUDScrollBar(look, Qt::Horizontal));
    // Its room is always taken, so that nothing moves when there comes to be more than fits.
    setVerticalScrollBarPolicy(way == Way::down ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(way == Way::sideways ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    setWidgetResizable(way == Way::down);
}

void HUDScrollArea::setContent(QWidget* content) {
    setWidget(content);
    content->setAutoFillBackground(false);
}

void HUDScrollArea::wheelEvent(QWheelEvent* event) {
    // A plain wheel knows up and down only; that is for the page around an area that scrolls sideways.
    const QPoint turn = event->angleDelta();
    if (way_ == Way::sideways && std::abs(turn.y()) > std::abs(turn.x()) &&
        !event->modifiers().testFlag(Qt::ShiftModifier)) {
        return event->ignore();
    }
    QScrollArea::wheelEvent(event);
}

} // namespace HarrowlaneApp
