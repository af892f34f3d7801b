#pragma once

#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Views/HUDWidget.h"

namespace HarrowlaneApp {

/// A panel that other widgets stand on.
class PanelBox : public HUDWidget {
    Q_OBJECT

public:
    /// `tint` names the colour that washes the panel.
    explicit PanelBox(const ApplicationLook& look, double radius = 12.0, QColor Palette::*tint = nullptr,
                      QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double radius_;
    QColor Palette::*tint_;
};

/// A thin line between two parts of a panel.
class Divider : public HUDWidget {
    Q_OBJECT

public:
    explicit Divider(const ApplicationLook& look, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace HarrowlaneApp
