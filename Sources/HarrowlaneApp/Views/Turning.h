#pragma once

#include <QVariantAnimation>

class QWidget;

namespace HarrowlaneApp {

/// The angle of a spinner on a widget. It turns, and has the widget drawn again, only while the widget can be seen;
/// where the desktop wants no animation it stands still.
class Turning : public QObject {
    Q_OBJECT

public:
    explicit Turning(QWidget& widget);

    void set(bool on);
    [[nodiscard]] bool isTurning() const { return animation_.state() == QAbstractAnimation::Running; }
    /// Degrees, clockwise.
    [[nodiscard]] double angle() const { return angle_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();

    QWidget& widget_;
    QVariantAnimation animation_;
    double angle_ = 0.0;
    bool isOn_ = false;
};

} // namespace HarrowlaneApp
