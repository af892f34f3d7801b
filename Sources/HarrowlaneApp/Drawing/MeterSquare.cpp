#include "HarrowlaneApp/Drawing/MeterArt.h"

#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Drawing/Images.h"

namespace HarrowlaneApp::MeterArt {

namespace {

// On a grid of 22, where the outline and the figure's baseline fall on whole pixels.
constexpr double gridSide = 22.0;
constexpr BarShape squareBar{.outline = QRectF(1.5, 1.5, 19.0, 8.0), .leastTokens = 2.0, .notchWidth = 2.0};
constexpr double figureHeight = 9.0;
constexpr double figureBaseline = 21.0;
constexpr double figureMiddle = 11.0;

HUDFont figureFont() {
    constexpr double measured = 100.0;
    const double capital = HUDType::systemBold(measured).inkAbove(QStringLiteral("H"));
    return HUDType::systemBold(capital > 0.0 ? measured * figureHeight / capital : figureHeight);
}

void paintSquare(QPainter& painter, const Reading& reading) {
    paint(painter, barFor(reading, squareBar), 1.0);
    const Layout wide = layOut(reading, gridSide);
    const QString figure = reading.anchored ? wide.figure.chopped(1) : wide.figure;
    const HUDFont font = figureFont();
    painter.setPen(wide.bar.color);
    font.draw(painter, QPointF(figureMiddle - font.width(figure) / 2.0, figureBaseline), figure);
}

} // namespace

QImage squareImage(const Reading& reading, int side) {
    QImage image =
        Images::drawn({gridSide, gridSide}, side / gridSide, [&](QPainter& painter) { paintSquare(painter, reading); });
    image.setDevicePixelRatio(1.0);
    return image;
}

} // namespace HarrowlaneApp::MeterArt
