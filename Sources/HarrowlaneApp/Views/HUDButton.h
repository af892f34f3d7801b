#pragma once

#include <QAbstractButton>
#include <QPointer>

#include "HarrowlaneApp/Drawing/HUDFont.h"
#include "HarrowlaneApp/Views/ApplicationLook.h"
#include "HarrowlaneApp/Views/Fade.h"
#include "HarrowlaneApp/Views/FocusRing.h"

namespace HarrowlaneApp {

/// What all controls that are clicked share: the look, hover and press that fade, the focus ring for the keyboard, and
/// Return beside Space. Kinds of button draw their face.
class HUDButton : public QAbstractButton {
    Q_OBJECT

public:
    HUDButton(const ApplicationLook& look, const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] const ApplicationLook& applicationLook() const { return look_; }
    [[nodiscard]] const Look& look() const { return look_.look(); }
    [[nodiscard]] const Palette& colors() const { return look_.palette(); }
    /// How much of the pointer's and the press's colour shows, 0 to 1.
    [[nodiscard]] double hovered() const { return hover_->value(); }
    [[nodiscard]] double pressed() const { return press_->value(); }

    /// Draws the button as it is at its full opacity.
    virtual void paintFace(QPainter& painter) = 0;
    /// What the focus ring stands around.
    [[nodiscard]] virtual FocusRing::Outline outline() const = 0;

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    const ApplicationLook& look_;
    Fade* hover_;
    Fade* press_;
    QPointer<FocusRing> ring_;
};

/// A button with a text on it.
class PushButton : public HUDButton {
    Q_OBJECT

public:
    enum class Kind { prominent, plain };

    struct Measures {
        int height = 28;
        double radius = 8.0;
        int padding = 12;
        double textSize = 12.0;
    };
    /// In settings.
    static constexpr Measures small{.height = 26, .radius = 7.0, .padding = 11, .textSize = 11.5};

    PushButton(const ApplicationLook& look, const QString& text, Kind kind, QWidget* parent = nullptr);
    PushButton(const ApplicationLook& look, const QString& text, const Measures& measures, QWidget* parent = nullptr);

    void setKind(Kind kind);
    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintFace(QPainter& painter) override;
    [[nodiscard]] FocusRing::Outline outline() const override;

private:
    [[nodiscard]] HUDFont font() const;

    Kind kind_ = Kind::plain;
    Measures measures_;
};

/// A button that is nothing but its text. What can be hit is larger than that.
class TextButton : public HUDButton {
    Q_OBJECT

public:
    /// How far the hit area reaches beyond the text.
    static constexpr int reach = 8;

    using HUDButton::HUDButton;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintFace(QPainter& painter) override;
    [[nodiscard]] FocusRing::Outline outline() const override;
};

/// The first colour with so much of the second, 0 to 1.
[[nodiscard]] QColor mixed(const QColor& from, const QColor& to, double share);

} // namespace HarrowlaneApp
