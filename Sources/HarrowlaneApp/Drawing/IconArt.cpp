#include "HarrowlaneApp/Drawing/IconArt.h"

#include <algorithm>
#include <cmath>

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/Images.h"

namespace HarrowlaneApp::IconArt {

namespace {

// All lengths stand on a grid of 512.
constexpr double grid = 512.0;
constexpr int smallestFine = 64;
constexpr double plateRadius = 100.0;
constexpr double edgeWidth = 6.0;
// Of a rail's length; the clock stands at .60.
constexpr double tokensShare = 0.86;

/// What differs between the two forms.
struct Form {
    double railLeft;
    double railLength;
    double railHeight;
    double upperTop;
    double lowerTop;
    double lineWidth;
    double lineTop;
    double lineBottom;
    /// Kept free on each side of the line, through rails and tracks.
    double clearance;
    /// The middle of the line.
    double clock;

    [[nodiscard]] double tokensEnd() const { return railLeft + tokensShare * railLength; }
    [[nodiscard]] QRectF upper() const { return {railLeft, upperTop, railLength, railHeight}; }
    [[nodiscard]] QRectF lower() const { return {railLeft, lowerTop, railLength, railHeight}; }
};

constexpr Form fine{92, 328, 74, 162, 276, 18, 116, 396, 13, 288.8};
// With the fine form's cut, the two parts of a rail would run into the line at 16 pixels.
constexpr Form heavy{80, 352, 88, 150, 274, 32, 104, 408, 18, 291.2};

// On whole pixels of that size: a line of one pixel must not be spread over two.
Form snapped(Form form, double pixel) {
    const auto whole = [pixel](double length) { return std::round(length / pixel) * pixel; };
    form.lineWidth = std::max(whole(form.lineWidth), pixel);
    form.clock = whole(form.clock - form.lineWidth / 2.0) + form.lineWidth / 2.0;
    form.upperTop = whole(form.upperTop);
    form.lowerTop = whole(form.lowerTop);
    form.railHeight = whole(form.railHeight);
    form.clearance = whole(form.clearance);
    return form;
}

QRectF plate() {
    return {32, 32, 448, 448};
}

QColor color(int red, int green, int blue, double alpha = 1.0) {
    QColor made(red, green, blue);
    made.setAlphaF(static_cast<float>(alpha));
    return made;
}

QBrush across(double from, double to, const QColor& first, const QColor& last) {
    QLinearGradient gradient(from, 0, to, 0);
    gradient.setColorAt(0, first);
    gradient.setColorAt(1, last);
    return gradient;
}

QBrush plateFill() {
    QLinearGradient gradient(plate().topLeft(), plate().bottomLeft());
    gradient.setColorAt(0.0, color(24, 33, 62));
    gradient.setColorAt(0.55, color(10, 14, 28));
    gradient.setColorAt(1.0, color(4, 6, 15));
    return gradient;
}

QBrush haze(const QPointF& center, double radius, const QColor& tint) {
    QRadialGradient gradient(center, radius);
    gradient.setColorAt(0, tint);
    gradient.setColorAt(1, withOpacity(tint, 0));
    return gradient;
}

QBrush edge() {
    QLinearGradient gradient(plate().topLeft(), plate().bottomLeft());
    gradient.setColorAt(0, color(140, 180, 255, 0.75));
    gradient.setColorAt(1, color(140, 180, 255, 0.18));
    return gradient;
}

void paintPlate(QPainter& painter) {
    fillRounded(painter, plate(), plateRadius, plateFill());
    fillRounded(painter, plate(), plateRadius, haze({77, 5}, 330, color(79, 216, 255, 0.34)));
    fillRounded(painter, plate(), plateRadius, haze({444, 59}, 300, color(167, 123, 255, 0.34)));
    const double inset = edgeWidth / 2.0;
    painter.setPen(QPen(edge(), edgeWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(plate().adjusted(inset, inset, -inset, -inset), plateRadius - inset, plateRadius - inset);
}

/// One side of the cut around the clock line.
struct Side {
    double left = 0.0;
    double right = 0.0;
};

void fillSide(QPainter& painter, const QRectF& rail, const Side& side, const QBrush& brush) {
    QPainterPath whole;
    whole.addRoundedRect(rail, rail.height() / 2.0, rail.height() / 2.0);
    QPainterPath part;
    part.addRect(side.left, rail.top(), side.right - side.left, rail.height());
    painter.fillPath(whole.intersected(part), brush);
}

void paintRails(QPainter& painter, const Form& form) {
    const double cut = form.lineWidth / 2.0 + form.clearance;
    const Side before{0.0, form.clock - cut};
    const Side behind{form.clock + cut, grid};
    const QColor track = color(140, 180, 255, 0.20);
    for (const QRectF& rail : {form.upper(), form.lower()}) {
        fillSide(painter, rail, before, track);
        fillSide(painter, rail, behind, track);
    }
    QRectF tokens = form.upper();
    tokens.setRight(form.tokensEnd());
    fillSide(painter, tokens, before, across(form.railLeft, form.clock, color(77, 255, 176), color(79, 216, 255)));
    fillSide(painter, tokens, behind, across(form.clock, tokens.right(), color(255, 194, 77), color(255, 154, 77)));
    fillSide(painter, form.lower(), before, color(79, 216, 255, 0.62));
}

void paintClock(QPainter& painter, const Form& form) {
    const QRectF line(form.clock - form.lineWidth / 2.0, form.lineTop, form.lineWidth, form.lineBottom - form.lineTop);
    fillRounded(painter, line, form.lineWidth / 2.0, color(230, 237, 255));
}

} // namespace

void paint(QPainter& painter, double side, bool coarse) {
    const Form form = coarse ? snapped(heavy, grid / side) : fine;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / grid, side / grid);
    paintPlate(painter);
    paintRails(painter, form);
    paintClock(painter, form);
    painter.restore();
}

QImage image(int side) {
    return Images::drawn(QSizeF(side, side), 1.0,
                         [side](QPainter& painter) { paint(painter, side, side < smallestFine); });
}

std::vector<File> iconset() {
    std::vector<File> files;
    for (const int points : {16, 32, 128, 256, 512}) {
        const QString name = QStringLiteral("icon_%1x%1").arg(points);
        files.push_back({.name = name + QStringLiteral(".png"), .side = points});
        files.push_back({.name = name + QStringLiteral("@2x.png"), .side = 2 * points});
    }
    return files;
}

} // namespace HarrowlaneApp::IconArt
