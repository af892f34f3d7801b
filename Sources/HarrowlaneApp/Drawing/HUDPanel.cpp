#include "HarrowlaneApp/Drawing/HUDPanel.h"

#include <algorithm>

#include <QLinearGradient>
#include <QPainter>

namespace HarrowlaneApp {

namespace {

constexpr double glossOpacity = 0.035;

void paintGloss(QPainter& painter, const QRectF& rect, double radius, const QColor& top) {
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setColorAt(0.0, top);
    gradient.setColorAt(1.0, withOpacity(top, 0.0));
    fillRounded(painter, rect, radius, gradient);
}

} // namespace

HUDPanel::Surface HUDPanel::surface(const Look& look) const {
    const Palette& palette = look.palette();
    const bool strong = look.increaseContrast;
    Surface made{
        .fill = strong ? palette.cardRaised : palette.card,
        .edge = strong ? palette.edgeStrong : palette.edge,
        .edgeWidth = strong ? 1.5 : 1.0,
    };
    if (!look.reduceTransparency) made.gloss = withOpacity(Qt::white, glossOpacity);
    if (tint) {
        made.wash = withOpacity(*tint, strong ? 0.18 : 0.1);
        made.edge = withOpacity(*tint, strong ? 0.75 : 0.34);
    }
    return made;
}

void HUDPanel::paint(QPainter& painter, const QRectF& rect, const Look& look) const {
    const Surface layers = surface(look);
    fillRounded(painter, rect, radius, layers.fill);
    if (layers.gloss) paintGloss(painter, rect, radius, *layers.gloss);
    if (layers.wash) fillRounded(painter, rect, radius, *layers.wash);
    strokeInside(painter, rect, radius, layers.edge, layers.edgeWidth);
}

void strokeInside(QPainter& painter, const QRectF& rect, double radius, const QColor& color, double width) {
    const double inset = width / 2.0;
    const double innerRadius = std::max(radius - inset, 0.0);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), innerRadius, innerRadius);
    painter.restore();
}

void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QBrush& brush) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawRoundedRect(rect, radius, radius);
    painter.restore();
}

} // namespace HarrowlaneApp
