#include "HarrowlaneApp/Drawing/Glyphs.h"

#include <charconv>

#include <QPainter>
#include <QPainterPathStroker>

#include "HarrowlaneApp/Drawing/GlyphParts.h"

namespace HarrowlaneApp::Glyphs {

namespace {

constexpr double dash = 2.3;
constexpr double dashGap = 2.255;
constexpr double dashOffset = 1.15;

/// Reads a path's text from front to back.
class PathText {
public:
    explicit PathText(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

    [[nodiscard]] bool isAtEnd() const { return at_ == end_; }
    char command() { return *at_++; }
    QPointF point() {
        const double x = number();
        return {x, number()};
    }

private:
    double number() {
        while (at_ != end_ && *at_ == ' ') ++at_;
        double value = 0.0;
        at_ = std::from_chars(at_, end_, value).ptr;
        return value;
    }

    const char* at_;
    const char* end_;
};

QPainterPath parsed(std::string_view text) {
    QPainterPath path;
    PathText rest(text);
    while (!rest.isAtEnd()) {
        switch (rest.command()) {
        case 'M': path.moveTo(rest.point()); break;
        case 'L': path.lineTo(rest.point()); break;
        case 'C': {
            const QPointF first = rest.point();
            const QPointF second = rest.point();
            path.cubicTo(first, second, rest.point());
            break;
        }
        default: path.closeSubpath();
        }
    }
    return path;
}

QPainterPath stroked(const QPainterPath& path, const Part& part) {
    QPainterPathStroker stroker;
    stroker.setWidth(part.strokeWidth);
    stroker.setCapStyle(part.isDashed ? Qt::FlatCap : Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    if (part.isDashed) {
        // A pen counts its dashes in its own width.
        stroker.setDashPattern(QList<qreal>{dash / part.strokeWidth, dashGap / part.strokeWidth});
        stroker.setDashOffset(dashOffset / part.strokeWidth);
    }
    return stroker.createStroke(path);
}

QPainterPath inked(const Part& part) {
    const QPainterPath path = parsed(part.path);
    QPainterPath ink = part.isFilled ? path : QPainterPath();
    if (part.strokeWidth > 0.0) ink = ink.united(stroked(path, part));
    return ink;
}

std::array<QPainterPath, glyphCount> madeOutlines() {
    std::array<QPainterPath, glyphCount> outlines;
    for (const Part& part : parts) {
        QPainterPath& outline = outlines.at(static_cast<std::size_t>(part.glyph));
        outline = part.isCutOut ? outline.subtracted(inked(part)) : outline.united(inked(part));
    }
    return outlines;
}

} // namespace

const QPainterPath& outline(Glyph glyph) {
    static const std::array<QPainterPath, glyphCount> outlines = madeOutlines();
    return outlines.at(static_cast<std::size_t>(glyph));
}

void paint(QPainter& painter, Glyph glyph, const Place& place, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(place.corner);
    painter.scale(place.size / grid, place.size / grid);
    painter.fillPath(outline(glyph), color);
    painter.restore();
}

} // namespace HarrowlaneApp::Glyphs
