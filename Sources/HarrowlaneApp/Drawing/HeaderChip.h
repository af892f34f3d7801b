#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>

#include "HarrowlaneApp/Drawing/Look.h"

class QPainter;

namespace HarrowlaneApp {

/// A capsule at the right of a header, which says on what the view's numbers rest.
struct HeaderChip {
    QString text;
    /// Of text, edge and fill.
    QColor Palette::*color = &Palette::dim;

    static constexpr double height = 22.0;
    static constexpr double radius = height / 2.0;

    [[nodiscard]] QSizeF size() const;
    /// Draws within a rectangle of that size.
    void paint(QPainter& painter, const QRectF& rect, const Look& look) const;
};

/// The capsule of a sample: the mark, and behind a divider the room for the button that ends it.
namespace SampleChip {

/// The width of all that stands before the button.
[[nodiscard]] double markWidth();
/// Draws capsule, mark and divider.
void paint(QPainter& painter, const QRectF& rect, const Look& look);

} // namespace SampleChip

} // namespace HarrowlaneApp
