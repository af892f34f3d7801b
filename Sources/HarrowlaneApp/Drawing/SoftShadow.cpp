#include "HarrowlaneApp/Drawing/SoftShadow.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include <QImage>
#include <QPainter>

namespace HarrowlaneApp {

namespace {

/// How much of a blurred stretch from `begin` to `end` there is at each whole place from 0 on.
std::vector<double> cover(int places, double begin, double end, double deviation) {
    const auto below = [&](double distance) { return 0.5 * std::erfc(-distance / (deviation * std::numbers::sqrt2)); };
    std::vector<double> all;
    for (int place = 0; place < places; ++place) {
        const double middle = place + 0.5;
        all.push_back(below(middle - begin) - below(middle - end));
    }
    return all;
}

} // namespace

QRectF SoftShadow::extent(const QRectF& caster) const {
    return caster.translated(0.0, drop).adjusted(-blur, -blur, blur, blur);
}

void SoftShadow::paint(QPainter& painter, const QRectF& caster) const {
    const QRectF all = extent(caster);
    // A pixel a point: there is nothing sharp in it. Corners are taken as square; the blur is far wider than they are.
    QImage image(static_cast<int>(std::ceil(all.width())), static_cast<int>(std::ceil(all.height())),
                 QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return;
    const auto across = cover(image.width(), blur, blur + caster.width(), blur / 2.0);
    const auto down = cover(image.height(), blur, blur + caster.height(), blur / 2.0);
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const double share = across[static_cast<std::size_t>(x)] * down[static_cast<std::size_t>(y)];
            const int alpha = static_cast<int>(std::lround(share * color.alpha()));
            row[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha));
        }
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(all.topLeft(), image);
    painter.restore();
}

} // namespace HarrowlaneApp
