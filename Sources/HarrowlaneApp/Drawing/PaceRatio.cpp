#include "HarrowlaneApp/Drawing/PaceRatio.h"

#include <algorithm>
#include <string>

#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp {

namespace {

// At full size the sign is heavier than the digits.
constexpr double signShare = 5.0 / 7.0;
constexpr double signRise = 1.6 / 21.0;
constexpr double signGap = 1.0;
constexpr double captionGap = 1.0;
constexpr double captionLine = 11.0;

/// The figure's digits and its sign.
struct Figure {
    QString digits;
    QString sign;
};

Figure figureOf(const PaceRatio& ratio) {
    const QString text = QString::fromStdString(Pace::ratioText(Pace::status(ratio.shares()).ratio));
    return {.digits = text.chopped(1), .sign = text.last(1)};
}

QString caption() {
    return QString::fromUtf8(Pace::ratioCaption.data(), static_cast<qsizetype>(Pace::ratioCaption.size()));
}

HUDFont captionFont() {
    return HUDType::text(9.5);
}

HUDFont noteFont() {
    return HUDType::text(10.5, HUDType::Weight::medium);
}

} // namespace

double PaceRatio::figureWidth() const {
    const Figure figure = figureOf(*this);
    const HUDFont small = HUDType::display(size * signShare);
    // The sign's ink, not its end, stands flush with what lies above and below.
    const double signWidth = small.width(figure.sign) - small.rightBearing(figure.sign.back());
    return HUDType::display(size).width(figure.digits) + signGap + signWidth;
}

QSizeF PaceRatio::extent() const {
    return {std::max(figureWidth(), captionFont().width(caption())), lineHeight() + captionGap + captionLine};
}

void PaceRatio::paint(QPainter& painter, const QPointF& rightCorner, const Look& look) const {
    const Figure figure = figureOf(*this);
    const HUDFont large = HUDType::display(size);
    const HUDFont small = HUDType::display(size * signShare);
    // By its digits, which do not hang: by its letters it would stand low beside the badge.
    const double baseline = rightCorner.y() + (lineHeight() + large.capitalHeight()) / 2.0;
    const double left = rightCorner.x() - figureWidth();
    painter.setPen(figureColor(Pace::status(shares()).severity, look.palette()));
    large.draw(painter, QPointF(left, baseline), figure.digits);
    small.draw(painter, QPointF(left + large.width(figure.digits) + signGap, baseline - size * signRise), figure.sign);
    painter.setPen(look.palette().dim);
    const LineBox below{.top = rightCorner.y() + lineHeight() + captionGap, .height = captionLine};
    captionFont().drawToRight(painter, below, rightCorner.x(), caption());
}

QString PaceOverspendNote::phrase() const {
    const auto note = Pace::overspendNote({.tokensUsed = tokensUsed, .timeUsed = timeUsed});
    return note ? QString::fromStdString(*note) : QString();
}

QSizeF PaceOverspendNote::extent() const {
    const QString text = phrase();
    return text.isEmpty() ? QSizeF(0.0, 0.0) : QSizeF(noteFont().width(text), lineHeight);
}

void PaceOverspendNote::paint(QPainter& painter, const QPointF& corner, const Look& look) const {
    const auto severity = Pace::status({.tokensUsed = tokensUsed, .timeUsed = timeUsed}).severity;
    painter.setPen(signalColor(severity, look.palette()));
    noteFont().draw(painter, LineBox{.left = corner.x(), .top = corner.y(), .height = lineHeight}, phrase());
}

} // namespace HarrowlaneApp
