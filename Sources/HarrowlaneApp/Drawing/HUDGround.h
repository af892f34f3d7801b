#pragma once

#include <vector>

#include <QImage>
#include <QPointF>
#include <QRectF>

#include "HarrowlaneApp/Drawing/Look.h"

class QPainter;

/// The ground behind every window: the plain colour, and over it a faint coloured haze.
namespace HarrowlaneApp::HUDGround {

/// One spot of haze in place: from its colour at the centre to clear at the radius.
struct Haze {
    QColor color;
    QPointF center;
    double radius = 0.0;
};

/// The spots over a ground, in drawing order; none with reduced transparency.
[[nodiscard]] std::vector<Haze> haze(const QRectF& ground, const Look& look);

/// The ground of a window of that many pixels. What repaints often keeps it: it takes milliseconds to make.
[[nodiscard]] QImage image(const QSize& pixels, const Look& look);

/// Fills the rectangle, and nothing beyond it.
void paint(QPainter& painter, const QRectF& ground, const Look& look);

} // namespace HarrowlaneApp::HUDGround
