#pragma once

#include <QPainterPath>
#include <QPointF>

#include "HarrowlaneApp/Drawing/Palette.h"

class QPainter;

namespace HarrowlaneApp {

/// The small pictures on buttons, badges and banners.
enum class Glyph {
    power,
    gear,
    refresh,
    chart,
    risingChart,
    calendar,
    pie,
    lightbulb,
    arrowUp,
    copy,
    check,
    warning,
    dashedCircle,
    sealCheck,
    bellSlash,
    gauge,
    spinner,
};

inline constexpr std::size_t glyphCount = 17;

namespace Glyphs {

/// The units of a glyph's grid to a side.
inline constexpr double grid = 16.0;

/// The inked area on the grid; what is cut out is not in it. Made once, on the first call; the main thread's.
[[nodiscard]] const QPainterPath& outline(Glyph glyph);

struct Place {
    QPointF corner;
    double size = grid;
};

/// Draws it in a square in one colour.
void paint(QPainter& painter, Glyph glyph, const Place& place, const QColor& color);

} // namespace Glyphs

} // namespace HarrowlaneApp
