#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace HarrowlaneApp {

/// What something that floats above a view casts on it.
struct SoftShadow {
    /// How far it lies below what casts it.
    double drop = 8.0;
    /// How far it fades, half of it inwards: twice the deviation of the blur.
    double blur = 24.0;
    QColor color;

    /// All that the shadow of a rectangle colours.
    [[nodiscard]] QRectF extent(const QRectF& caster) const;
    void paint(QPainter& painter, const QRectF& caster) const;
};

} // namespace HarrowlaneApp
