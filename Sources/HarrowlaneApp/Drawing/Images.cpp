#include "HarrowlaneApp/Drawing/Images.h"

#include <cmath>

#include <QPainter>

namespace HarrowlaneApp::Images {

namespace {

// The painter's coordinates end there.
constexpr double longestSide = 32767.0;
// Half a gigabyte.
constexpr double mostPixels = 128.0 * 1024.0 * 1024.0;
// A length that is a hair above a whole number of pixels only by rounding is that number.
constexpr double hair = 1e-6;

double pixels(double points, double scale) {
    return std::ceil(points * scale - hair);
}

} // namespace

QImage drawn(const QSizeF& size, double scale, const std::function<void(QPainter&)>& draw) {
    const double width = pixels(size.width(), scale);
    const double height = pixels(size.height(), scale);
    const bool has = scale > 0.0 && width >= 1.0 && height >= 1.0;
    if (!has || width > longestSide || height > longestSide || width * height > mostPixels) return {};
    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return image;
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    draw(painter);
    return image;
}

} // namespace HarrowlaneApp::Images
