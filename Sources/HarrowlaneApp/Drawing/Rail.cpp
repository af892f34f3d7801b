#include "HarrowlaneApp/Drawing/Rail.h"

#include <algorithm>

#include <QLinearGradient>
#include <QPainter>

#include "HarrowlaneApp/Copy/Pace.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"

namespace HarrowlaneApp {

namespace {

constexpr double lineWidth = 1.5;
constexpr double stripeWidth = 4.5;

double held(double share) {
    return share > 0.0 ? std::min(share, 1.0) : 0.0;
}

QBrush gradient(const std::vector<QColor>& colors, double from, double to) {
    if (colors.empty()) return Qt::NoBrush;
    if (colors.size() == 1 || !(to > from)) return colors.front();
    QLinearGradient made(from, 0.0, to, 0.0);
    const auto last = static_cast<double>(colors.size() - 1);
    for (std::size_t index = 0; index < colors.size(); ++index) {
        made.setColorAt(static_cast<double>(index) / last, colors[index]);
    }
    return made;
}

} // namespace

Rail::Layout Rail::layOut(const QPointF& corner, double width) const {
    Layout layout{.track = {corner, QSizeF(width, height)}};
    layout.fill = {corner, QSizeF(Pace::filledLength({.fraction = fraction, .length = width}), height)};
    if (!gate || hotColors.empty()) return layout;
    layout.hot = layout.fill;
    layout.hot.setLeft(corner.x() + held(*gate) * width);
    if (!layout.hot.isValid()) layout.hot = {};
    return layout;
}

void Rail::paint(QPainter& painter, const QPointF& corner, double width, const Look& look) const {
    const Layout layout = layOut(corner, width);
    const double radius = height / 2.0;
    fillRounded(painter, layout.track, radius, look.palette().trackFill);
    if (layout.fill.isEmpty()) return;
    const double baseEnd = layout.hot.isEmpty() ? layout.fill.right() : layout.hot.left();
    fillRounded(painter, layout.fill, radius, gradient(colors, corner.x(), baseEnd));
    if (layout.hot.isEmpty()) return;
    painter.save();
    painter.setClipRect(layout.hot, Qt::IntersectClip);
    fillRounded(painter, layout.fill, radius, gradient(hotColors, layout.hot.left(), layout.hot.right()));
    painter.restore();
}

double ClockLine::place(double left, double width) const {
    return left + held(fraction) * width;
}

void ClockLine::paint(QPainter& painter, const QPointF& corner, double width, const Look& look) const {
    const double middle = place(corner.x(), width);
    const auto column = [&](double wide) { return QRectF(middle - wide / 2.0, corner.y(), wide, height); };
    fillRounded(painter, column(stripeWidth), 0.0, HUDPanel{}.surface(look).fill);
    fillRounded(painter, column(lineWidth), lineWidth / 2.0, look.palette().ink);
}

} // namespace HarrowlaneApp
