#pragma once

#include "HarrowlaneApp/Copy/DashboardTexts.h"
#include "HarrowlaneApp/Drawing/Glyphs.h"
#include "HarrowlaneApp/Drawing/HeaderChip.h"
#include "HarrowlaneApp/Views/HUDButton.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/PanelBox.h"

namespace HarrowlaneApp {

/// A capsule that says on what a view's numbers rest.
class ChipLabel : public HUDWidget {
    Q_OBJECT

public:
    explicit ChipLabel(const ApplicationLook& look, QWidget* parent = nullptr);

    void setChip(const HeaderChip& chip);
    [[nodiscard]] QString text() const { return chip_.text; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    HeaderChip chip_;
};

/// A glyph alone.
class GlyphLabel : public HUDWidget {
    Q_OBJECT

public:
    struct Picture {
        Glyph glyph = Glyph::gauge;
        int size = 22;
        QColor Palette::*color = &Palette::warn;
    };

    GlyphLabel(const ApplicationLook& look, const Picture& picture, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Picture picture_;
};

/// The week in words, and what to think of them.
class WeekHeader : public QWidget {
    Q_OBJECT

public:
    explicit WeekHeader(const ApplicationLook& look, QWidget* parent = nullptr);

    struct Words {
        std::string headline;
        std::string detail;
        DashboardTexts::WeekState state;
    };
    void setWords(const Words& words);

private:
    HUDLabel* headline_;
    HUDLabel* detail_;
    ChipLabel* chip_;
};

/// Asks for the helper where there is no gauge.
class GaugeBanner : public PanelBox {
    Q_OBJECT

public:
    explicit GaugeBanner(const ApplicationLook& look, QWidget* parent = nullptr);

Q_SIGNALS:
    void openSettings();
};

} // namespace HarrowlaneApp
