#pragma once

#include <QVariantAnimation>

class QWidget;

namespace HarrowlaneApp {

/// A state that a control takes on or loses: 0 without it, 1 with it, and in between for a moment, while the control
/// is drawn again. Where the desktop wants no animation there is no in-between.
class Fade : public QObject {
    Q_OBJECT

public:
    explicit Fade(QWidget& control);

    void set(bool on);
    [[nodiscard]] double value() const { return value_; }

private:
    QWidget& control_;
    QVariantAnimation animation_;
    double value_ = 0.0;
    bool isOn_ = false;
};

} // namespace HarrowlaneApp
