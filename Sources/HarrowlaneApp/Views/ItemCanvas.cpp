#include "HarrowlaneApp/Views/ItemCanvas.h"

#include <algorithm>
#include <limits>

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScrollArea>
#include <QToolTip>

namespace HarrowlaneApp {

namespace {

// Aside counts more than ahead: the next one in a row comes before a nearer one beside it.
constexpr double asideWeight = 4.0;

} // namespace

ItemCanvas::ItemCanvas(const ApplicationLook& look, QWidget* parent) : HUDWidget(look, parent) {
    setFocusPolicy(Qt::TabFocus);
}

std::optional<std::size_t> ItemCanvas::currentItem() const {
    return items_.empty() ? std::nullopt : std::optional(current_);
}

std::optional<std::size_t> ItemCanvas::itemAt(const QPointF& point) const {
    const auto holds = [&](const Item& item) { return item.box.contains(point); };
    const auto found = std::ranges::find_if(items_, holds);
    if (found == items_.end()) return std::nullopt;
    return static_cast<std::size_t>(found - items_.begin());
}

QVariant ItemCanvas::inputMethodQuery(Qt::InputMethodQuery query) const {
    // A scroll area brings this rectangle into view when the keyboard comes here.
    if (query == Qt::ImCursorRectangle && !items_.empty()) return items_[current_].box;
    return HUDWidget::inputMethodQuery(query);
}

void ItemCanvas::setItems(std::vector<Item> items) {
    if (items == items_) return;
    items_ = std::move(items);
    current_ = items_.empty() ? 0 : std::min(current_, items_.size() - 1);
    if (ring_) showRing();
    QAccessibleEvent event(this, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
    update();
}

void ItemCanvas::setCurrentItem(std::size_t index) {
    current_ = index;
    if (ring_) showRing();
    update();
}

bool ItemCanvas::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return HUDWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    if (const auto index = itemAt(help->pos()))
        QToolTip::showText(help->globalPos(), items_[*index].text, this, items_[*index].box.toAlignedRect());
    else
        QToolTip::hideText();
    return true;
}

void ItemCanvas::focusInEvent(QFocusEvent* event) {
    if (showsFocusRing(event->reason())) showRing();
    tell();
    HUDWidget::focusInEvent(event);
}

void ItemCanvas::focusOutEvent(QFocusEvent* event) {
    delete ring_;
    HUDWidget::focusOutEvent(event);
}

void ItemCanvas::keyPressEvent(QKeyEvent* event) {
    const auto next = target(event->key());
    if (!next) return HUDWidget::keyPressEvent(event);
    current_ = *next;
    showRing();
    reveal();
    tell();
    QToolTip::showText(mapToGlobal(items_[current_].box.bottomLeft().toPoint()), items_[current_].text, this);
}

std::optional<std::size_t> ItemCanvas::target(int key) const {
    if (items_.empty()) return std::nullopt;
    switch (key) {
    case Qt::Key_Left: return neighbour({-1, 0});
    case Qt::Key_Right: return neighbour({1, 0});
    case Qt::Key_Up: return neighbour({0, -1});
    case Qt::Key_Down: return neighbour({0, 1});
    case Qt::Key_Home: return 0;
    case Qt::Key_End: return items_.size() - 1;
    default: return std::nullopt;
    }
}

/// The nearest item in that direction; absent at the border.
std::optional<std::size_t> ItemCanvas::neighbour(const QPointF& direction) const {
    const QPointF from = items_[current_].box.center();
    double least = std::numeric_limits<double>::infinity();
    std::optional<std::size_t> nearest;
    for (std::size_t index = 0; index < items_.size(); ++index) {
        const QPointF step = items_[index].box.center() - from;
        const double ahead = QPointF::dotProduct(step, direction);
        const double aside = std::abs(QPointF::dotProduct(step, QPointF(direction.y(), direction.x())));
        const double distance = ahead + asideWeight * aside;
        if (ahead < 1.0 || aside > ahead || distance >= least) continue;
        least = distance;
        nearest = index;
    }
    return nearest;
}

void ItemCanvas::showRing() {
    if (items_.empty()) {
        delete ring_;
        return;
    }
    const FocusRing::Outline outline{.box = items_[current_].box, .radius = itemRadius()};
    if (ring_)
        ring_->setOutline(outline);
    else
        ring_ = new FocusRing(applicationLook(), *this, outline, FocusRing::Place::inside);
}

/// In whatever scrolls around it, from the inside out.
void ItemCanvas::reveal() {
    constexpr int margin = 8;
    const QRect box = items_[current_].box.toAlignedRect();
    for (QWidget* around = parentWidget(); around != nullptr; around = around->parentWidget()) {
        auto* area = qobject_cast<QScrollArea*>(around);
        if (area == nullptr || area->widget() == nullptr || !area->widget()->isAncestorOf(this)) continue;
        const QRect there(mapTo(area->widget(), box.topLeft()), box.size());
        area->ensureVisible(there.center().x(), there.center().y(), there.width() / 2 + margin,
                            there.height() / 2 + margin);
    }
}

void ItemCanvas::tell() {
    if (items_.empty()) return;
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(static_cast<int>(current_));
    QAccessible::updateAccessibility(&event);
}

} // namespace HarrowlaneApp
