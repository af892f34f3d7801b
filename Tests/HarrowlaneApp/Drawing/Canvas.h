#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ostream>

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QRectF>

namespace DrawingTests {

/// An image to draw on and to probe. All places are points; a pixel is `1 / scale` of one.
class Canvas {
public:
    Canvas(double width, double height, double scale, const QColor& background = Qt::transparent)
        : image_(static_cast<int>(std::ceil(width * scale)), static_cast<int>(std::ceil(height * scale)),
                 QImage::Format_ARGB32_Premultiplied) {
        image_.setDevicePixelRatio(scale);
        image_.fill(background);
    }

    template <class Draw>
    Canvas& draw(const Draw& draws) {
        QPainter painter(&image_);
        painter.setRenderHint(QPainter::Antialiasing);
        draws(painter);
        return *this;
    }

    /// The pixel that holds the point.
    [[nodiscard]] QColor at(double x, double y) const { return pixel(image_, x, y); }
    [[nodiscard]] const QImage& image() const { return image_; }

    static QColor pixel(const QImage& image, double x, double y) {
        const double scale = image.devicePixelRatio();
        return image.pixelColor(static_cast<int>(x * scale), static_cast<int>(y * scale));
    }

private:
    QImage image_;
};

/// Whether two colours differ by no more than `steps` of 255 in any channel; what is clear has no colour.
inline bool near(const QColor& left, const QColor& right, int steps = 2) {
    if (left.alpha() <= steps && right.alpha() <= steps) return true;
    return std::abs(left.red() - right.red()) <= steps && std::abs(left.green() - right.green()) <= steps &&
           std::abs(left.blue() - right.blue()) <= steps && std::abs(left.alpha() - right.alpha()) <= steps;
}

/// The smallest rectangle, in points, around all pixels that are wanted; empty where none is.
template <class Wants>
QRectF placeOf(const QImage& image, const Wants& wants) {
    const double scale = image.devicePixelRatio();
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (wants(image.pixelColor(x, y))) found = found.united(QRect(x, y, 1, 1));
        }
    }
    return {found.x() / scale, found.y() / scale, found.width() / scale, found.height() / scale};
}

inline QRectF placeOfColor(const QImage& image, const QColor& color) {
    return placeOf(image, [&](const QColor& pixel) { return near(pixel, color, 12); });
}

/// `top` painted over an opaque colour.
inline QColor over(const QColor& top, const QColor& bottom) {
    const auto mixed = [&](float upper, float lower) {
        return static_cast<double>(upper * top.alphaF() + lower * (1.0F - top.alphaF()));
    };
    return QColor::fromRgbF(static_cast<float>(mixed(top.redF(), bottom.redF())),
                            static_cast<float>(mixed(top.greenF(), bottom.greenF())),
                            static_cast<float>(mixed(top.blueF(), bottom.blueF())));
}

/// How well one colour stands out from another to a reader, 1 to 21.
inline double contrast(const QColor& left, const QColor& right) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&](const QColor& color) {
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    };
    const double first = luminance(left) + 0.05;
    const double second = luminance(right) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

} // namespace DrawingTests

inline void PrintTo(const QColor& color, std::ostream* out) {
    *out << color.name(QColor::HexArgb).toStdString();
}
