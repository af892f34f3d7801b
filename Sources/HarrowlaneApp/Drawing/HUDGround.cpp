#include "HarrowlaneApp/Drawing/HUDGround.h"

#include <algorithm>

#include <QPainter>
#include <QRadialGradient>

namespace HarrowlaneApp::HUDGround {

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

void paint(QPainter& painter, const QRectF& ground, const Look& look) {
    painter.fillRect(ground, look.palette().bg());
    for (const Haze& spot : haze(ground, look)) {
        QRadialGradient gradient(spot.center, spot.radius);
        gradient.setColorAt(0.0, spot.color);
        gradient.setColorAt(1.0, withOpacity(spot.color, 0.0));
        painter.fillRect(ground, gradient);
    }
}

} // namespace HarrowlaneApp::HUDGround
