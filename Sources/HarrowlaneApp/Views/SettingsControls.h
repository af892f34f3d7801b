#pragma once

#include <vector>

#include "HarrowlaneApp/Copy/SettingsTexts.h"
#include "HarrowlaneApp/Views/HUDButton.h"
#include "HarrowlaneApp/Views/HUDWidget.h"

class QButtonGroup;

namespace HarrowlaneApp {

/// How something stands: an icon and a word or two.
class SettingsBadge : public HUDWidget {
    Q_OBJECT

public:
    explicit SettingsBadge(const ApplicationLook& look, QWidget* parent = nullptr);

    void setBadge(const SettingsTexts::Badge& badge);
    [[nodiscard]] const SettingsTexts::Badge& badge() const { return badge_; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SettingsTexts::Badge badge_;
};

/// On or off. Its text is for a screen reader: the row says it to the eye.
class SwitchButton : public HUDButton {
    Q_OBJECT

public:
    SwitchButton(const ApplicationLook& look, const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return {36, 20}; }

protected:
    void paintFace(QPainter& painter) override;
    [[nodiscard]] FocusRing::Outline outline() const override;

private:
    Fade* on_;
};

/// One of the choices of a picker.
class SegmentButton : public HUDButton {
    Q_OBJECT

public:
    SegmentButton(const ApplicationLook& look, const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintFace(QPainter& painter) override;
    [[nodiscard]] FocusRing::Outline outline() const override;
};

/// One choice out of a few, side by side. The arrow keys move it.
class SegmentedPicker : public HUDWidget {
    Q_OBJECT

public:
    SegmentedPicker(const ApplicationLook& look, const std::vector<QString>& choices, QWidget* parent = nullptr);

    [[nodiscard]] int chosen() const;
    void choose(int index);

Q_SIGNALS:
    /// Another choice is made, by whomever.
    void picked(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QButtonGroup* group_;
};

} // namespace HarrowlaneApp
