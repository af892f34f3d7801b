#include "HarrowlaneApp/Drawing/HUDGround.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QPainter>

namespace HarrowlaneApp::HUDGround {

namespace {

/// Red, green and blue, 0 to 255 with fractions.
using Shade = std::array<float, 3>;

Shade shadeOf(const QColor& color) {
    return {color.redF() * 255.0F, color.greenF() * 255.0F, color.blueF() * 255.0F};
}

/// A spot of haze in the numbers that a pixel needs.
struct Spot {
    explicit Spot(const Haze& haze)
        : shade(shadeOf(haze.color)),
          alpha(haze.color.alphaF()),
          x(static_cast<float>(haze.center.x())),
          y(static_cast<float>(haze.center.y())),
          perPixel(static_cast<float>(1.0 / haze.radius)) {}

    void tint(Shade& under, float atX, float atY) const {
        const float distance = std::sqrt((atX - x) * (atX - x) + (atY - y) * (atY - y)) * perPixel;
        const float cover = alpha * std::max(1.0F - distance, 0.0F);
        for (std::size_t channel = 0; channel < under.size(); ++channel) {
            under[channel] += (shade[channel] - under[channel]) * cover;
        }
    }

    Shade shade;
    float alpha;
    float x;
    float y;
    float perPixel;
};

// The haze is some fourteen steps of a channel over a whole window: rounded alike everywhere, they would show as rings.
// So each pixel of a square of four by four rounds at a level of its own.
constexpr std::array<std::array<float, 4>, 4> roundingLevels{{
    {0.03125F, 0.53125F, 0.15625F, 0.65625F},
    {0.78125F, 0.28125F, 0.90625F, 0.40625F},
    {0.21875F, 0.71875F, 0.09375F, 0.59375F},
    {0.96875F, 0.46875F, 0.84375F, 0.34375F},
}};

QRgb rounded(const Shade& shade, float level) {
    const auto channel = [level](float value) { return static_cast<int>(value + level); };
    return qRgb(channel(shade[0]), channel(shade[1]), channel(shade[2]));
}

void paintRow(QRgb* row, int width, int y, const Shade& ground, const std::vector<Spot>& spots) {
    const auto& levels = roundingLevels[static_cast<std::size_t>(y) % 4];
    for (int x = 0; x < width; ++x) {
        Shade shade = ground;
        for (const Spot& spot : spots) {
            spot.tint(shade, static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F);
        }
        row[x] = rounded(shade, levels[static_cast<std::size_t>(x) % 4]);
    }
}

} // namespace

std::vector<Haze> haze(const QRectF& ground, const Look& look) {
    if (look.reduceTransparency) return {};
    std::vector<Haze> spots;
    for (const NebulaBlob& blob : look.palette().nebula) {
        spots.push_back({
            .color = blob.color,
            .center = ground.topLeft() + QPointF(blob.center.x() * ground.width(), blob.center.y() * ground.height()),
            .radius = blob.radius * std::max(ground.width(), ground.height()),
        });
    }
    return spots;
}

QImage image(const QSize& pixels, const Look& look) {
    QImage made(pixels, QImage::Format_RGB32);
    if (made.isNull()) return made;
    made.fill(look.palette().bg());
    std::vector<Spot> spots;
    for (const Haze& spot : haze(QRectF(QPointF(), pixels), look)) spots.emplace_back(spot);
    if (spots.empty()) return made;
    const Shade ground = shadeOf(look.palette().bg());
    for (int y = 0; y < made.height(); ++y) {
        paintRow(reinterpret_cast<QRgb*>(made.scanLine(y)), made.width(), y, ground, spots);
    }
    return made;
}

void paint(QPainter& painter, const QRectF& ground, const Look& look) {
    if (ground.isEmpty()) return;
    if (look.reduceTransparency) return painter.fillRect(ground, look.palette().bg());
    const double scale = painter.device()->devicePixelRatioF();
    const QSizeF pixels = ground.size() * scale;
    const QSize whole(static_cast<int>(std::ceil(pixels.width())), static_cast<int>(std::ceil(pixels.height())));
    painter.drawImage(ground, image(whole, look));
}

} // namespace HarrowlaneApp::HUDGround
