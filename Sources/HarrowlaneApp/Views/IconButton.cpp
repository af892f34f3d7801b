#include "HarrowlaneApp/Views/IconButton.h"

#include <algorithm>

#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDPanel.h"

namespace HarrowlaneApp {

namespace {

constexpr double radius = 8.0;
// Of a spinner as it usually is, which is 20 wide.
constexpr double spinnerScale = 0.62;
constexpr double usualSpinner = 20.0;

} // namespace

IconButton::IconButton(const ApplicationLook& look, const QString& name, const Icon& icon, QWidget* parent)
    : HUDButton(look, name, parent),
      icon_(icon),
      turning_(new Turning(*this)) {
    setToolTip(name);
}

void IconButton::setBusy(bool busy) {
    if (busy == isBusy_) return;
    isBusy_ = busy;
    isBecomingBusy_ = busy;
    setEnabled(!busy);
    isBecomingBusy_ = false;
    turning_->set(busy);
    update();
}

/// Qt moves the focus away from what is disabled: a reader would lose the place for the third of a second that a
/// refresh takes.
bool IconButton::focusNextPrevChild(bool next) {
    return isBecomingBusy_ || HUDButton::focusNextPrevChild(next);
}

void IconButton::paintEvent(QPaintEvent* event) {
    if (!isBusy_) return HUDButton::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintSpinner(painter);
}

void IconButton::paintFace(QPainter& painter) {
    const double wash = std::max(0.08 * hovered(), 0.14 * pressed());
    fillRounded(painter, rect(), radius, withOpacity(colors().ink, wash));
    const double inset = (side - icon_.size) / 2.0;
    const QColor color = mixed(colors().dim, colors().ink, std::max(hovered(), pressed()));
    Glyphs::paint(painter, icon_.glyph, {.corner = {inset, inset}, .size = icon_.size}, color);
}

void IconButton::paintSpinner(QPainter& painter) const {
    const double size = usualSpinner * spinnerScale;
    painter.translate(side / 2.0, side / 2.0);
    painter.rotate(turning_->angle());
    Glyphs::paint(painter, Glyph::spinner, {.corner = {-size / 2.0, -size / 2.0}, .size = size}, colors().cyan);
}

FocusRing::Outline IconButton::outline() const {
    return {.box = rect(), .radius = radius};
}

} // namespace HarrowlaneApp
