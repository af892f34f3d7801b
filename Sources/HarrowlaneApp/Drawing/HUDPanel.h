#pragma once

#include <optional>

#include <QBrush>
#include <QRectF>

#include "HarrowlaneApp/Drawing/Look.h"

class QPainter;

namespace HarrowlaneApp {

/// The panel that content stands on.
struct HUDPanel {
    /// Washes the panel and colours its edge.
    std::optional<QColor> tint;
    double radius = 12.0;

    /// The layers of a panel, from the back.
    struct Surface {
        QColor fill;
        /// The gloss at the panel's top; it is clear at the bottom. Absent with reduced transparency.
        std::optional<QColor> gloss;
        std::optional<QColor> wash;
        QColor edge;
        double edgeWidth = 1.0;
    };

    [[nodiscard]] Surface surface(const Look& look) const;

    /// Fills the rectangle with round corners; the edge lies inside of it.
    void paint(QPainter& painter, const QRectF& rect, const Look& look) const;
};

/// Draws an outline of a width along the inside of a rounded rectangle.
void strokeInside(QPainter& painter, const QRectF& rect, double radius, const QColor& color, double width = 1.0);

/// Fills a rounded rectangle without an outline.
void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QBrush& brush);

} // namespace HarrowlaneApp
