#pragma once

#include <functional>

#include <QImage>
#include <QSizeF>

class QPainter;

/// Images that are drawn without a window.
namespace HarrowlaneApp::Images {

/// An image of a size in points on a clear ground, with `scale` pixels a point, drawn by `draw`, whose painter works in
/// points and smooths edges. Its pixels are counted up to whole ones. Null where there can be no such image: without an
/// area, with a scale that is not above 0, or beyond what a painter reaches or memory should hold.
[[nodiscard]] QImage drawn(const QSizeF& size, double scale, const std::function<void(QPainter&)>& draw);

} // namespace HarrowlaneApp::Images
