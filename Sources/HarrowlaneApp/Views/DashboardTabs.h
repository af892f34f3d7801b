#pragma once

#include "HarrowlaneApp/Drawing/Glyphs.h"
#include "HarrowlaneApp/Views/HUDButton.h"
#include "HarrowlaneApp/Views/HUDWidget.h"

class QButtonGroup;

namespace HarrowlaneApp {

/// A tab's button: an icon and its title.
class TabButton : public HUDButton {
    Q_OBJECT

public:
    TabButton(const ApplicationLook& look, Glyph glyph, const QString& title, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintFace(QPainter& painter) override;
    [[nodiscard]] FocusRing::Outline outline() const override;

private:
    Glyph glyph_;
};

/// The dashboard's tabs, side by side. The arrow keys move between them.
class DashboardTabs : public HUDWidget {
    Q_OBJECT

public:
    enum class Tab { week, models, history };

    explicit DashboardTabs(const ApplicationLook& look, QWidget* parent = nullptr);

    [[nodiscard]] Tab current() const;
    void setCurrent(Tab tab);

Q_SIGNALS:
    void currentChanged(DashboardTabs::Tab tab);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QButtonGroup* group_;
};

} // namespace HarrowlaneApp
