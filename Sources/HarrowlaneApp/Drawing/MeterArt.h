#pragma once

#include <optional>

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QString>

#include "UsageModel/UsageSnapshot.h"

class QPainter;

/// The image in the menu bar: a small bar, filled by the tokens spent against the time gone, and the burn rate beside
/// it. Its colours are its own, the same on a dark and on a light bar. Lengths are points, `scale` is pixels a point.
/// Needs a QGuiApplication.
namespace HarrowlaneApp::MeterArt {

/// Colours that do not go by severity.
struct Colors {
    [[nodiscard]] static QColor track() { return QColor::fromRgbF(0.5F, 0.5F, 0.5F, 0.3F); }
    [[nodiscard]] static QColor tick() { return QColor::fromRgbF(0.95F, 0.95F, 0.95F, 0.9F); }
    [[nodiscard]] static QColor idle() { return QColor::fromRgbF(0.52F, 0.58F, 0.72F); }
    [[nodiscard]] static QColor of(UsageModel::Severity severity);
};

/// What the image shows. Shares are held to 0 through 1 where they are drawn.
struct Reading {
    double tokensUsed = 0.0;
    double timeUsed = 0.0;
    /// An estimate is not shown as a rate: its bar is idle.
    bool anchored = false;

    friend bool operator==(const Reading&, const Reading&) = default;
};

/// That of the window that binds; an idle one where none does.
[[nodiscard]] Reading readingOf(const UsageModel::UsageSnapshot& snapshot);

/// A bar in place: its outline, and what is filled within, in drawing order.
struct Bar {
    QRectF outline;
    QColor color;
    /// How far the time's paler fill and the tokens' full one reach, from the outline's left edge; absent ones are not
    /// drawn.
    std::optional<QRectF> time;
    std::optional<QRectF> tokens;
    /// Cleared at the time's end, over both fills.
    std::optional<QRectF> notch;
};

/// The widths that differ between the wide image and the square one.
struct BarShape {
    QRectF outline;
    double leastTokens = 2.5;
    double notchWidth = 2.0;
};

[[nodiscard]] Bar barFor(const Reading& reading, const BarShape& shape);
void paint(QPainter& painter, const Bar& bar, double lineWidth);

/// The wide image, laid out.
struct Layout {
    /// A whole number of points.
    double width = 0.0;
    double height = 0.0;
    Bar bar;
    QString figure;
    /// Where the figure begins, on its baseline.
    QPointF figureStart;
};

/// `height` in points, above 0. Measures text, and so wants a QGuiApplication.
[[nodiscard]] Layout layOut(const Reading& reading, double height);
/// Draws it from an upper left corner on.
void paint(QPainter& painter, const Layout& layout);

/// The image on a clear ground, with `scale` as its device pixel ratio. A null image where there can be none: without
/// a height or a scale, or where it would not fit into memory.
[[nodiscard]] QImage menuBarImage(const Reading& reading, double height, double scale);
[[nodiscard]] QImage menuBarImage(const UsageModel::UsageSnapshot& snapshot, double height, double scale);

/// The same bar above the same figure, for hosts that show squares: `side` pixels wide and high. The figure lacks its
/// sign. Null where the side is not above 0.
[[nodiscard]] QImage squareImage(const Reading& reading, int side);

} // namespace HarrowlaneApp::MeterArt
