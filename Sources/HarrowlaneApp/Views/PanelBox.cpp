#include "HarrowlaneApp/Views/PanelBox.h"

#include <QPainter>

namespace HarrowlaneApp {

PanelBox::PanelBox(const ApplicationLook& look, double radius, QColor Palette::*tint, QWidget* parent)
    : HUDWidget(look, parent),
      radius_(radius),
      tint_(tint) {}

void PanelBox::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    HUDPanel panel{.radius = radius_};
    if (tint_ != nullptr) panel.tint = colors().*tint_;
    panel.paint(painter, rect(), look());
}

Divider::Divider(const ApplicationLook& look, QWidget* parent) : HUDWidget(look, parent) {
    setFixedHeight(1);
}

void Divider::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), colors().edge);
}

} // namespace HarrowlaneApp
