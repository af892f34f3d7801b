#pragma once

#include "HarrowlaneApp/Drawing/Glyphs.h"
#include "HarrowlaneApp/Views/HUDButton.h"
#include "HarrowlaneApp/Views/Turning.h"

namespace HarrowlaneApp {

/// A button that shows a glyph. Its name is its help text, too.
class IconButton : public HUDButton {
    Q_OBJECT

public:
    static constexpr int side = 28;

    struct Icon {
        Glyph glyph = Glyph::gear;
        double size = 15.0;
    };

    IconButton(const ApplicationLook& look, const QString& name, const Icon& icon, QWidget* parent = nullptr);

    /// While it is busy it shows a spinner and cannot be pressed; it keeps its place and the focus.
    void setBusy(bool busy);
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    [[nodiscard]] QSize sizeHint() const override { return {side, side}; }

protected:
    void paintFace(QPainter& painter) override;
    [[nodiscard]] FocusRing::Outline outline() const override;
    void paintEvent(QPaintEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void paintSpinner(QPainter& painter) const;

    Icon icon_;
    Turning* turning_;
    bool isBusy_ = false;
    bool isBecomingBusy_ = false;
};

} // namespace HarrowlaneApp
