#include "HarrowlaneApp/Views/FocusRing.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDPanel.h"

namespace HarrowlaneApp {

namespace {

constexpr double gap = 2.0;
constexpr double thickness = 2.0;
constexpr double reach = gap + thickness;
constexpr double opacity = 0.90;

/// The widest widget around the control that scrolls with it: a nearer one may end where the control does.
QWidget* hostOf(const QWidget& control) {
    QWidget* host = control.parentWidget();
    while (host != nullptr && !host->isWindow() && host->parentWidget() != nullptr) {
        if (qobject_cast<QAbstractScrollArea*>(host->parentWidget()->parentWidget()) != nullptr) break;
        host = host->parentWidget();
    }
    return host;
}

} // namespace

FocusRing::FocusRing(const ApplicationLook& look, QWidget& control, const Outline& outline, Place place)
    : HUDWidget(look, place == Place::inside ? &control : hostOf(control)),
      control_(&control),
      outline_(outline) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setObjectName(QStringLiteral("focusRing"));
    connect(&control, &QObject::destroyed, this, &QObject::deleteLater);
    for (QWidget* moves = &control; moves != nullptr && moves != parentWidget(); moves = moves->parentWidget()) {
        moves->installEventFilter(this);
    }
    follow();
    raise();
    show();
}

void FocusRing::setOutline(const Outline& outline) {
    outline_ = outline;
    follow();
    raise();
}

void FocusRing::follow() {
    if (!control_ || parentWidget() == nullptr) return;
    const QPointF corner = control_->mapTo(parentWidget(), QPoint()) + outline_.box.topLeft();
    const QRectF ring = QRectF(corner, outline_.box.size()).adjusted(-reach, -reach, reach, reach);
    setGeometry(ring.toAlignedRect());
    setVisible(control_->isVisibleTo(parentWidget()));
    update();
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide: follow(); break;
    default: break;
    }
    return HUDWidget::eventFilter(watched, event);
}

void FocusRing::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QPointF corner = parentWidget() != nullptr && control_
                               ? control_->mapTo(parentWidget(), QPoint()) + outline_.box.topLeft() - pos()
                               : QPointF();
    const QRectF ring = QRectF(corner, outline_.box.size()).adjusted(-reach, -reach, reach, reach);
    strokeInside(painter, ring, outline_.radius + reach, withOpacity(colors().cyan, opacity), thickness);
}

bool showsFocusRing(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

} // namespace HarrowlaneApp
