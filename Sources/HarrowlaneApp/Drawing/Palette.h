#pragma once

#include <array>

#include <QColor>
#include <QPointF>

#include "UsageModel/UsageSnapshot.h"

namespace HarrowlaneApp {

/// Whether the surroundings are dark or light. What is not known to be dark counts as light.
enum class Appearance { light, dark };

/// A colour for each appearance, in sRGB.
struct ColorPair {
    QColor dark;
    QColor light;

    [[nodiscard]] const QColor& resolved(Appearance appearance) const {
        return appearance == Appearance::dark ? dark : light;
    }
};

/// Red, green and blue, 0 to 255.
using Channels = std::array<int, 3>;

/// One alpha, 0 to 1, for both appearances.
[[nodiscard]] ColorPair pair(const Channels& dark, const Channels& light, double alpha = 1.0);

/// One soft spot of the haze, in units of the ground: `center` of its width and height, `radius` of the larger of them.
struct NebulaBlob {
    QColor color;
    QPointF center;
    double radius = 0.0;
};

/// Every colour that a view may use, resolved for one appearance. Views name these and make up none of their own;
/// shades of them are made with `withOpacity`.
struct Palette {
    Appearance appearance = Appearance::light;

    QColor ground;
    /// A panel's fill.
    QColor card;
    QColor cardRaised;
    /// A panel's edge.
    QColor edge;
    QColor edgeStrong;
    /// The empty part of a bar.
    QColor trackFill;
    /// The accent: what can be acted on, and what is forecast.
    QColor cyan;
    /// The second accent: what is typical, or a sample.
    QColor violet;
    QColor good;
    QColor warn;
    QColor crit;
    /// The hot ends of `warn` and `crit`.
    QColor warnHot;
    QColor critHot;
    /// Main, secondary and tertiary text.
    QColor ink;
    QColor dim;
    QColor faint;

    /// The haze over the ground, in drawing order.
    std::array<NebulaBlob, 3> nebula;

    [[nodiscard]] static const Palette& resolved(Appearance appearance);

    [[nodiscard]] const QColor& bg() const { return ground; }
    [[nodiscard]] const QColor& hairline() const { return edge; }
    [[nodiscard]] const QColor& accent() const { return cyan; }
};

/// The colour with its alpha multiplied by `opacity`, 0 to 1.
[[nodiscard]] QColor withOpacity(QColor color, double opacity);

/// The two colours of a filling bar, from its beginning to its end.
struct Ramp {
    QColor from;
    QColor to;

    friend bool operator==(const Ramp&, const Ramp&) = default;
};

[[nodiscard]] Ramp ramp(UsageModel::Severity severity, const Palette& palette);

/// The colour of a large figure: `good`, `warn` or `crit`.
[[nodiscard]] const QColor& figureColor(UsageModel::Severity severity, const Palette& palette);

/// The colour of a badge. A calm state does not draw the eye: `dim`, `warn` or `crit`.
[[nodiscard]] const QColor& signalColor(UsageModel::Severity severity, const Palette& palette);

/// The colour on something that is filled with an accent: `ground` in the dark appearance, white in the light one.
[[nodiscard]] QColor onAccent(const Palette& palette);

} // namespace HarrowlaneApp
