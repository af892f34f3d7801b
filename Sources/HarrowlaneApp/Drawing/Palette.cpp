#include "HarrowlaneApp/Drawing/Palette.h"

namespace HarrowlaneApp {

namespace {

using UsageModel::Severity;

QColor color(const Channels& channels, double alpha) {
    QColor made(channels[0], channels[1], channels[2]);
    made.setAlphaF(static_cast<float>(alpha));
    return made;
}

// The pairs stand as a table, dark beside light, because that is how they are chosen and compared.
Palette resolve(Appearance appearance) {
    const auto of = [appearance](const Channels& dark, const Channels& light, double alpha = 1.0) {
        return pair(dark, light, alpha).resolved(appearance);
    };
    return {
        .appearance = appearance,
        .ground = of({4, 6, 15}, {238, 241, 247}),
        .card = of({10, 14, 28}, {255, 255, 255}),
        .cardRaised = of({15, 21, 39}, {248, 250, 254}),
        .edge = of({140, 180, 255}, {92, 118, 168}, 0.22),
        .edgeStrong = of({140, 180, 255}, {70, 96, 146}, 0.45),
        .trackFill = of({140, 180, 255}, {92, 118, 168}, 0.16),
        .cyan = of({79, 216, 255}, {0, 126, 168}),
        .violet = of({167, 123, 255}, {105, 66, 190}),
        .good = of({77, 255, 176}, {0, 140, 92}),
        .warn = of({255, 194, 77}, {176, 112, 8}),
        .crit = of({255, 93, 122}, {202, 40, 68}),
        .warnHot = of({255, 154, 77}, {196, 96, 12}),
        .critHot = of({255, 138, 110}, {214, 84, 60}),
        .ink = of({230, 237, 255}, {16, 20, 30}),
        .dim = of({150, 166, 200}, {88, 100, 122}),
        .faint = of({104, 120, 156}, {134, 145, 166}),
        // Centred partly outside the window, so that only their skirts show.
        .nebula = {{
            {.color = of({79, 216, 255}, {0, 126, 168}, 0.055), .center = {0.10, -0.06}, .radius = 0.95},
            {.color = of({167, 123, 255}, {105, 66, 190}, 0.055), .center = {0.92, 0.06}, .radius = 0.85},
            {.color = of({77, 255, 176}, {0, 140, 92}, 0.03), .center = {0.50, 1.08}, .radius = 1.05},
        }},
    };
}

} // namespace

ColorPair pair(const Channels& dark, const Channels& light, double alpha) {
    return {.dark = color(dark, alpha), .light = color(light, alpha)};
}

const Palette& Palette::resolved(Appearance appearance) {
    static const Palette dark = resolve(Appearance::dark);
    static const Palette light = resolve(Appearance::light);
    return appearance == Appearance::dark ? dark : light;
}

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(color.alphaF() * static_cast<float>(opacity));
    return color;
}

Ramp ramp(Severity severity, const Palette& palette) {
    switch (severity) {
    case Severity::green: return {palette.good, palette.cyan};
    case Severity::amber: return {palette.warn, palette.warnHot};
    case Severity::red: break;
    }
    return {palette.crit, palette.critHot};
}

const QColor& figureColor(Severity severity, const Palette& palette) {
    switch (severity) {
    case Severity::green: return palette.good;
    case Severity::amber: return palette.warn;
    case Severity::red: break;
    }
    return palette.crit;
}

const QColor& signalColor(Severity severity, const Palette& palette) {
    return severity == Severity::green ? palette.dim : figureColor(severity, palette);
}

QColor onAccent(const Palette& palette) {
    return palette.appearance == Appearance::dark ? palette.ground : QColor(Qt::white);
}

} // namespace HarrowlaneApp
