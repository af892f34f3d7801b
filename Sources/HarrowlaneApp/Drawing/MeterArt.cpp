#include "HarrowlaneApp/Drawing/MeterArt.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QPainterPath>

#include "HarrowlaneApp/Copy/Pace.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Drawing/Images.h"

namespace HarrowlaneApp::MeterArt {

namespace {

using UsageModel::Severity;

constexpr double barWidth = 25.0;
constexpr double barHeight = 9.0;
constexpr double barLeft = 0.5;
constexpr double figureLeft = 31.0;
constexpr double rightMargin = 2.0;
constexpr double figureSize = 12.0;

constexpr double groundAlpha = 0.2;
constexpr double timeAlpha = 0.42;
constexpr double outlineAlpha = 0.85;
// Nearer to an end the gap at the time's end would look like damage.
constexpr double firstNotch = 0.02;
constexpr double lastNotch = 0.98;
constexpr double notchOverhang = 1.0;

double held(double share) {
    return share > 0.0 ? std::min(share, 1.0) : 0.0;
}

Pace::Status statusOf(const Reading& reading) {
    return Pace::status({.tokensUsed = reading.tokensUsed, .timeUsed = reading.timeUsed});
}

QColor colorOf(const Reading& reading) {
    return reading.anchored ? Colors::of(statusOf(reading).severity) : Colors::idle();
}

QString figureOf(const Reading& reading) {
    if (!reading.anchored) return QStringLiteral("–");
    return QString::fromStdString(Pace::ratioText(statusOf(reading).ratio));
}

QColor faded(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

HUDFont figureFont() {
    return HUDType::systemBold(figureSize);
}

QPainterPath capsule(const QRectF& outline) {
    QPainterPath path;
    path.addRoundedRect(outline, outline.height() / 2.0, outline.height() / 2.0);
    return path;
}

QRectF fromLeft(const QRectF& outline, double width) {
    return {outline.left(), outline.top(), width, outline.height()};
}

// Where the outline cuts a fill, both edges are soft; cutting the shapes instead of clipping draws them once.
void fillWithin(QPainter& painter, const QPainterPath& outline, const QRectF& part, const QColor& color) {
    QPainterPath whole;
    whole.addRect(part);
    painter.fillPath(whole.intersected(outline), color);
}

} // namespace

QColor Colors::of(Severity severity) {
    switch (severity) {
    case Severity::green: return QColor::fromRgbF(0.2F, 0.82F, 0.6F);
    case Severity::amber: return QColor::fromRgbF(1.0F, 0.7F, 0.2F);
    case Severity::red: break;
    }
    return QColor::fromRgbF(1.0F, 0.4F, 0.5F);
}

Reading readingOf(const UsageModel::UsageSnapshot& snapshot) {
    const UsageModel::WindowState* meter = snapshot.bindingMeter();
    if (meter == nullptr) return {};
    return {.tokensUsed = meter->used, .timeUsed = meter->elapsedFraction, .anchored = meter->confidence.anchored};
}

Bar barFor(const Reading& reading, const BarShape& shape) {
    Bar bar{.outline = shape.outline, .color = colorOf(reading)};
    if (!reading.anchored) return bar;
    const double time = held(reading.timeUsed);
    const double tokens = held(reading.tokensUsed);
    const double width = shape.outline.width();
    if (time > 0.0) bar.time = fromLeft(shape.outline, width * time);
    if (tokens > 0.0) bar.tokens = fromLeft(shape.outline, std::max(width * tokens, shape.leastTokens));
    if (time > firstNotch && time < lastNotch) {
        const double left = shape.outline.left() + width * time - shape.notchWidth / 2.0;
        bar.notch = QRectF(left, shape.outline.top() - notchOverhang, shape.notchWidth,
                           shape.outline.height() + 2.0 * notchOverhang);
    }
    return bar;
}

void paint(QPainter& painter, const Bar& bar, double lineWidth) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QPainterPath outline = capsule(bar.outline);
    painter.fillPath(outline, faded(bar.color, groundAlpha));
    if (bar.time) fillWithin(painter, outline, *bar.time, faded(bar.color, timeAlpha));
    if (bar.tokens) fillWithin(painter, outline, *bar.tokens, bar.color);
    if (bar.notch) {
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        fillWithin(painter, outline, *bar.notch, Qt::black);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    painter.strokePath(outline, QPen(faded(bar.color, outlineAlpha), lineWidth));
    painter.restore();
}

Layout layOut(const Reading& reading, double height) {
    const HUDFont font = figureFont();
    const QString figure = figureOf(reading);
    const double top = std::round(height - barHeight) / 2.0;
    // By the height of the digits: centred by its line, the figure would hang low beside the bar.
    const double baseline = (height + font.inkAbove(QStringLiteral("1"))) / 2.0;
    return {
        .width = std::ceil(font.width(figure) + figureLeft + rightMargin),
        .height = height,
        .bar = barFor(reading, {.outline = {barLeft, top, barWidth, barHeight}}),
        .figure = figure,
        .figureStart = {figureLeft, baseline},
    };
}

void paint(QPainter& painter, const Layout& layout) {
    paint(painter, layout.bar, 1.0);
    painter.setPen(layout.bar.color);
    figureFont().draw(painter, layout.figureStart, layout.figure);
}

QImage menuBarImage(const Reading& reading, double height, double scale) {
    const Layout layout = layOut(reading, height);
    return Images::drawn({layout.width, layout.height}, scale, [&](QPainter& painter) { paint(painter, layout); });
}

QImage menuBarImage(const UsageModel::UsageSnapshot& snapshot, double height, double scale) {
    return menuBarImage(readingOf(snapshot), height, scale);
}

} // namespace HarrowlaneApp::MeterArt
