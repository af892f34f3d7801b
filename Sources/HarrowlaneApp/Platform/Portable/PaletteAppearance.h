#pragma once

#include "HarrowlaneApp/Platform/DesktopAppearance.h"

namespace HarrowlaneApp {

/// What the desktop's colours tell: dark where text is lighter than what it stands on. Nothing is known of the wishes
/// for contrast and transparency. A palette that the program itself has set tells nothing of the desktop: while there
/// is one, what was seen last holds.
class PaletteAppearance : public DesktopAppearance {
    Q_OBJECT

public:
    explicit PaletteAppearance(QObject* parent = nullptr);

    [[nodiscard]] Appearance appearance() const override { return appearance_; }
    [[nodiscard]] bool increasesContrast() const override { return false; }
    [[nodiscard]] bool reducesTransparency() const override { return false; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Appearance appearance_;
};

} // namespace HarrowlaneApp
