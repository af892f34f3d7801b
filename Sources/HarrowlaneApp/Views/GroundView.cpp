#include "HarrowlaneApp/Views/GroundView.h"

#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDGround.h"

namespace HarrowlaneApp {

void GroundView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QSize pixels = size() * painter.device()->devicePixelRatioF();
    if (ground_.size() != pixels || groundLook_ != look()) {
        ground_ = HUDGround::image(pixels, look());
        groundLook_ = look();
    }
    painter.drawImage(QRectF(rect()), ground_);
}

} // namespace HarrowlaneApp
