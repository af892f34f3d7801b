#pragma once

#include <QRectF>

#include "HarrowlaneApp/Copy/ChartTooltip.h"
#include "HarrowlaneApp/Drawing/Look.h"

class QPainter;

namespace HarrowlaneApp {

/// What the week chart tells of the place under the pointer, on a card that floats above it.
struct ChartTooltipCard {
    ChartTooltip::Content content;

    [[nodiscard]] double height() const;
    /// Draws the card into a rectangle of `ChartTooltip::width` and that height, and its shadow around it.
    void paint(QPainter& painter, const QRectF& rect, const Look& look) const;

    /// All that a card in that place colours, its shadow included.
    [[nodiscard]] static QRectF extent(const QRectF& rect);
};

} // namespace HarrowlaneApp
