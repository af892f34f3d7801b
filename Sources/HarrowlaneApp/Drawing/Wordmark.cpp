#include "HarrowlaneApp/Drawing/Wordmark.h"

#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp::Wordmark {

namespace {

constexpr double tracking = 0.2;

QString firstPart() {
    return QStringLiteral("BRINDLE");
}

QString secondPart() {
    return QStringLiteral("WICK");
}

} // namespace

double width(double size) {
    const HUDFont font = HUDType::display(size, tracking);
    return font.width(firstPart()) + font.width(secondPart());
}

void paint(QPainter& painter, const QPointF& baseline, double size, const Look& look) {
    const HUDFont font = HUDType::display(size, tracking);
    painter.setPen(look.palette().ink);
    font.draw(painter, baseline, firstPart());
    painter.setPen(look.palette().cyan);
    font.draw(painter, baseline + QPointF(font.width(firstPart()), 0.0), secondPart());
}

} // namespace HarrowlaneApp::Wordmark
