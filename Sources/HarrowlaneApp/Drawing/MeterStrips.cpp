#include "HarrowlaneApp/Drawing/MeterStrips.h"

#include <algorithm>
#include <array>

#include <QPainter>
#include <QString>

#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Drawing/Images.h"
#include "HarrowlaneApp/Drawing/MeterArt.h"

namespace HarrowlaneApp::MeterArt {

namespace {

constexpr double imageHeight = 18.0;
constexpr double barHeight = 24.0;
constexpr double margin = 32.0;
constexpr double sampleGap = 24.0;

// The enlarged samples.
constexpr double zoom = 4.0;
constexpr int columns = 4;
constexpr double columnWidth = 268.0;
constexpr double rowHeight = 114.5;
constexpr double rowsTop = 74.0;
constexpr double captionBelow = 79.0;
constexpr double smallTop = 29.0;
constexpr double stripScale = 2.0;

struct Sample {
    const char* caption;
    Reading reading;
};

constexpr Reading anchored(double tokens, double time) {
    return {.tokensUsed = tokens, .timeUsed = time, .anchored = true};
}

constexpr std::array samples{
    Sample{"no binding window", {}},
    Sample{"not anchored", {.tokensUsed = 0.62, .timeUsed = 0.4}},
    Sample{"tokens 0 · time 0.03", anchored(0.0, 0.03)},
    Sample{"tokens 0.02 · time 0.50", anchored(0.02, 0.5)},
    Sample{"tokens 0.20 · time 0.40", anchored(0.2, 0.4)},
    Sample{"tokens 0.41 · time 0.60", anchored(0.41, 0.6)},
    Sample{"tokens 0.62 · time 0.62", anchored(0.62, 0.62)},
    Sample{"tokens 0.74 · time 0.60", anchored(0.74, 0.6)},
    Sample{"tokens 0.58 · time 0.41", anchored(0.58, 0.41)},
    Sample{"tokens 0.95 · time 0.50", anchored(0.95, 0.5)},
    Sample{"tokens 1.00 · time 0.99", anchored(1.0, 0.99)},
    Sample{"tokens 1.00 · time 0.08", anchored(1.0, 0.08)},
};

/// A menu bar's ground, and what is written on it.
struct MenuBar {
    QColor ground;
    QColor text;
};

std::array<MenuBar, 2> menuBars() {
    return {{{.ground = {28, 30, 34}, .text = {150, 152, 158}}, {.ground = {237, 238, 242}, .text = {96, 98, 106}}}};
}

constexpr int rows = (static_cast<int>(samples.size()) + columns - 1) / columns;
constexpr double halfHeight = rowsTop + rows * rowHeight;

double rowWidth() {
    double width = 2.0 * margin - sampleGap;
    for (const Sample& sample : samples) width += layOut(sample.reading, imageHeight).width + sampleGap;
    return width;
}

// The notch is cleared to what lies beneath, so each image is made by itself before it goes onto a bar.
void paintAt(QPainter& painter, const QPointF& corner, const Reading& reading, double enlarged) {
    const double scale = painter.device()->devicePixelRatioF() * enlarged;
    QImage image = menuBarImage(reading, imageHeight, scale);
    image.setDevicePixelRatio(scale / enlarged);
    painter.drawImage(corner, image);
}

void paintRow(QPainter& painter, double top) {
    double left = margin;
    for (const Sample& sample : samples) {
        paintAt(painter, {left, top}, sample.reading, 1.0);
        left += layOut(sample.reading, imageHeight).width + sampleGap;
    }
}

void paintEnlarged(QPainter& painter, double top, const QColor& text) {
    const HUDFont font = HUDType::text(11.0);
    painter.setPen(text);
    for (int index = 0; index < static_cast<int>(samples.size()); ++index) {
        const Sample& sample = samples[static_cast<std::size_t>(index)];
        const int column = index % columns;
        const int row = index / columns;
        const QPointF corner(margin + column * columnWidth, top + row * rowHeight);
        paintAt(painter, corner, sample.reading, zoom);
        font.draw(painter, LineBox{corner.x(), corner.y() + captionBelow, 14.0}, QString::fromUtf8(sample.caption));
    }
}

} // namespace

QImage sampleStrip() {
    const double width = std::max(rowWidth(), 2.0 * margin + columns * columnWidth);
    return Images::drawn({width, 2.0 * halfHeight}, stripScale, [width](QPainter& painter) {
        double top = 0.0;
        for (const MenuBar& bar : menuBars()) {
            painter.fillRect(QRectF(0.0, top, width, halfHeight), bar.ground);
            paintRow(painter, top + smallTop);
            paintEnlarged(painter, top + rowsTop, bar.text);
            top += halfHeight;
        }
    });
}

QImage menuBarStrip(double scale) {
    const double width = rowWidth();
    return Images::drawn({width, 2.0 * barHeight}, scale, [width](QPainter& painter) {
        double top = 0.0;
        for (const MenuBar& bar : menuBars()) {
            painter.fillRect(QRectF(0.0, top, width, barHeight), bar.ground);
            paintRow(painter, top + (barHeight - imageHeight) / 2.0);
            top += barHeight;
        }
    });
}

} // namespace HarrowlaneApp::MeterArt
