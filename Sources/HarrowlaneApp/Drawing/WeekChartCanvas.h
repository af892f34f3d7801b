#pragma once

#include <QPainter>

#include "HarrowlaneApp/Drawing/WeekChartLayout.h"

/// Within the painting of the week chart: what its steps share.
namespace HarrowlaneApp::WeekChart {

struct Canvas {
    QPainter& painter;
    const Layout& layout;
    const Palette& palette;
    /// The colour of what the chart stands on, which sets marks off from the lines below them.
    QColor card;
    Tint tint;

    [[nodiscard]] QColor ink(double opacity) const { return withOpacity(palette.ink, opacity); }
    [[nodiscard]] const Rect& top() const { return layout.geometry.top.panel; }
    [[nodiscard]] const Rect& bottom() const { return layout.geometry.bottom.panel; }

    void stroke(const Trace& line, const QPen& pen) const;
    void fill(const Trace& area, const QBrush& brush) const;
    /// With its edges between pixels, as near as can be. A large area takes a fraction of the time that smooth edges
    /// do.
    void fillCrisp(const QRectF& rect, const QColor& color) const;
    /// A straight line along the pixels, between two heights or two places.
    void vertical(double x, double from, double to, const QPen& pen) const;
    void horizontal(double y, double from, double to, const QPen& pen) const;
    /// Through both panels, but not through the gap between them.
    void throughPanels(double x, const QPen& pen) const;

    /// A filled dot, and around it a ring in the card's colour that sets it off.
    struct Dot {
        Point centre;
        double diameter = 0.0;
        double ring = 0.0;
        QColor color;
    };
    void dot(const Dot& dot) const;

    void write(const Caption& caption) const;
    void write(Caption::Role role) const;
};

/// The typical week, the cone with the forecast in it, what lies between landing and limit, and the readouts.
void paintForecast(const Canvas& canvas);

} // namespace HarrowlaneApp::WeekChart
