#include "HarrowlaneApp/Drawing/StatusBadge.h"

#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp {

namespace {

constexpr double sidePadding = 9.0;
constexpr double topPadding = 3.0;
constexpr double lineHeight = StatusBadge::height - 2.0 * topPadding;

HUDFont labelFont() {
    return HUDType::text(11.5, HUDType::Weight::bold);
}

} // namespace

QSizeF StatusBadge::size() const {
    return {labelFont().width(label) + 2.0 * sidePadding, height};
}

StatusBadge StatusBadge::within(double width) const {
    return {.label = labelFont().elided(label, width - 2.0 * sidePadding), .severity = severity};
}

void StatusBadge::paint(QPainter& painter, const QRectF& rect, const Look& look) const {
    const QColor& signal = signalColor(severity, look.palette());
    const bool calm = severity == UsageModel::Severity::green;
    const double radius = rect.height() / 2.0;
    fillRounded(painter, rect, radius, withOpacity(signal, calm ? 0.06 : 0.10));
    strokeInside(painter, rect, radius, withOpacity(signal, look.increaseContrast ? 0.75 : 0.4));
    painter.setPen(signal);
    labelFont().draw(painter,
                     LineBox{.left = rect.left() + sidePadding, .top = rect.top() + topPadding, .height = lineHeight},
                     label);
}

} // namespace HarrowlaneApp
