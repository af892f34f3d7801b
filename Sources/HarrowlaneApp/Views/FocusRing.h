#pragma once

#include <QPointer>
#include <QRectF>
#include <QWidget>

#include "HarrowlaneApp/Views/HUDWidget.h"

namespace HarrowlaneApp {

/// The ring around what the keyboard acts on. It stands outside of the outline, so it is a widget above the control's
/// siblings; it follows the control, and is never in the way of the pointer.
class FocusRing : public HUDWidget {
    Q_OBJECT

public:
    /// An outline within a control.
    struct Outline {
        QRectF box;
        double radius = 0.0;
    };

    enum class Place { around, inside };

    /// Shows a ring around the outline; `inside` where the control leaves room for it. It goes away with the control.
    FocusRing(const ApplicationLook& look, QWidget& control, const Outline& outline, Place place = Place::around);

    void setOutline(const Outline& outline);
    [[nodiscard]] const Outline& outline() const { return outline_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();

    QPointer<QWidget> control_;
    Outline outline_;
};

/// Whether the focus came by the keyboard: a click needs no ring.
[[nodiscard]] bool showsFocusRing(Qt::FocusReason reason);

} // namespace HarrowlaneApp
