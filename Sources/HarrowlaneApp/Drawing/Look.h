#pragma once

#include "HarrowlaneApp/Drawing/Palette.h"

namespace HarrowlaneApp {

/// All that a drawing needs to know of its surroundings; the same look draws the same.
struct Look {
    Appearance appearance = Appearance::light;
    /// Flat grounds: no haze, no gloss.
    bool reduceTransparency = false;
    /// Raised fills and strong edges.
    bool increaseContrast = false;

    [[nodiscard]] const Palette& palette() const { return Palette::resolved(appearance); }

    friend bool operator==(const Look&, const Look&) = default;
};

} // namespace HarrowlaneApp
