#pragma once

#include <QImage>

#include "HarrowlaneApp/Views/HUDWidget.h"

namespace HarrowlaneApp {

/// What a window's content stands on: the ground with its haze, as large as the window.
class GroundView : public HUDWidget {
    Q_OBJECT

public:
    using HUDWidget::HUDWidget;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The ground as last drawn: it takes milliseconds to make, and is asked for with every scrolled line.
    QImage ground_;
    Look groundLook_;
};

} // namespace HarrowlaneApp
