#pragma once

#include <optional>
#include <vector>

#include <QColor>
#include <QRectF>

#include "HarrowlaneApp/Drawing/Look.h"

class QPainter;

namespace HarrowlaneApp {

/// A bar that fills from the left: a capsule of track, and over it the filled part.
struct Rail {
    /// How much is filled; held to 0 through 1. Above 0 at least 3 points show.
    double fraction = 0.0;
    /// The filled part's colours, evenly from its beginning to the gate, or to its end where there is no gate.
    std::vector<QColor> colors;
    /// Where `hotColors` begin, as a share of the rail.
    std::optional<double> gate;
    /// The colours from the gate to the end of the filled part; without any the gate is off.
    std::vector<QColor> hotColors;
    double height = 8.0;

    struct Layout {
        QRectF track;
        /// Empty where nothing is filled.
        QRectF fill;
        /// The part of `fill` behind the gate; empty where the gate is off, or not reached.
        QRectF hot;
    };

    /// The places on a rail of that width whose upper left corner is given.
    [[nodiscard]] Layout layOut(const QPointF& corner, double width) const;

    void paint(QPainter& painter, const QPointF& corner, double width, const Look& look) const;
};

/// The upright line across rails that shows how much time is gone.
struct ClockLine {
    /// Held to 0 through 1.
    double fraction = 0.0;
    double height = 0.0;

    /// The middle of the line on rails of that width.
    [[nodiscard]] double place(double left, double width) const;

    /// Draws the line from the top of rails whose upper left corner is given, and a stripe of the panel's fill beneath
    /// it, so that it stands free of them.
    void paint(QPainter& painter, const QPointF& corner, double width, const Look& look) const;
};

} // namespace HarrowlaneApp
