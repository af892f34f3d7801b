#include "HarrowlaneApp/Drawing/PaceRails.h"

#include <algorithm>
#include <string_view>

#include <QPainter>

#include "HarrowlaneApp/Copy/Figures.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp {

namespace {

using HUDType::Weight;

constexpr double keyColumn = 54.0;
constexpr double valueColumn = 40.0;
constexpr double clockOverhang = 2.5;
constexpr double sessionOpacity = 0.6;
constexpr double axisTop = 2.0;
constexpr double axisLine = 12.0;
constexpr double axisClearance = 14.0;

QString fromText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString percent(double fraction) {
    return QString::fromStdString(Figures::percent(fraction));
}

HUDFont axisFont() {
    return HUDType::mono(10.0);
}

struct Row {
    std::string_view key;
    double share = 0.0;
    Weight weight = Weight::medium;
    QColor valueColor;
};

void paintRow(QPainter& painter, const QRectF& place, const Row& row, const Palette& palette) {
    const LineBox box{.left = place.left(), .top = place.top(), .height = place.height()};
    painter.setPen(palette.dim);
    HUDType::text(11.0, Weight::medium).draw(painter, box, fromText(row.key));
    painter.setPen(row.valueColor);
    HUDType::text(13.5, row.weight).drawToRight(painter, box, place.right(), percent(row.share));
}

void paintLabel(QPainter& painter, const PaceRails::AxisLabel& label) {
    const LineBox box{.left = label.room.left(), .top = label.room.top(), .height = label.room.height()};
    if (label.side == Qt::AlignLeft) {
        axisFont().draw(painter, box, label.text);
    } else {
        axisFont().drawToRight(painter, box, label.room.right(), label.text);
    }
}

} // namespace

double PaceRails::height() const {
    const double rows = 2.0 * (railHeight + railGap);
    return axis ? rows + axisTop + axisLine : rows;
}

PaceRails::Layout PaceRails::layOut(const QPointF& corner, double width) const {
    const double pitch = railHeight + railGap;
    const double railWidth = std::max(width - keyColumn - valueColumn, 0.0);
    Layout layout;
    layout.tokensRow = {corner, QSizeF(width, pitch)};
    layout.sessionRow = layout.tokensRow.translated(0.0, pitch);
    layout.tokensTrack = {corner.x() + keyColumn, corner.y() + railGap / 2.0, railWidth, railHeight};
    layout.sessionTrack = layout.tokensTrack.translated(0.0, pitch);
    layout.clock = layout.tokensTrack.united(layout.sessionTrack).adjusted(0.0, -clockOverhang, 0.0, clockOverhang);
    if (axis) timeScale(*axis, layout);
    return layout;
}

void PaceRails::timeScale(const Axis& texts, Layout& layout) const {
    const QRectF& track = layout.sessionTrack;
    const double clock = ClockLine{.fraction = timeUsed}.place(track.left(), track.width());
    const double top = layout.sessionRow.bottom() + axisTop;
    const auto shown = Pace::axisLabels({.fraction = timeUsed, .length = track.width()});
    const QRectF startRoom(track.left(), top, clock - axisClearance - track.left(), axisLine);
    const QRectF endRoom(clock + axisClearance, top, track.right() - clock - axisClearance, axisLine);
    const HUDFont font = axisFont();
    if (shown.start) layout.start = {font.elided(texts.start, startRoom.width()), startRoom, Qt::AlignLeft};
    if (shown.end) layout.end = {font.elided(texts.end, endRoom.width()), endRoom, Qt::AlignRight};
}

Rail PaceRails::tokensRail(const Palette& palette) const {
    Rail rail{.fraction = tokensUsed, .colors = {palette.good, palette.cyan}, .height = railHeight};
    if (const auto hot = Pace::hotPart(shares())) {
        const Ramp colors = ramp(hot->severity, palette);
        rail.gate = hot->gate;
        rail.hotColors = {colors.from, colors.to};
    }
    return rail;
}

Rail PaceRails::sessionRail(const Palette& palette) const {
    return {.fraction = timeUsed, .colors = {withOpacity(palette.cyan, sessionOpacity)}, .height = railHeight};
}

void PaceRails::paint(QPainter& painter, const QPointF& corner, double width, const Look& look) const {
    const Palette& palette = look.palette();
    const Layout layout = layOut(corner, width);
    paintRow(painter, layout.tokensRow, {Pace::tokensKey, tokensUsed, Weight::bold, palette.ink}, palette);
    paintRow(painter, layout.sessionRow, {Pace::sessionKey, timeUsed, Weight::medium, palette.dim}, palette);
    tokensRail(palette).paint(painter, layout.tokensTrack.topLeft(), layout.tokensTrack.width(), look);
    sessionRail(palette).paint(painter, layout.sessionTrack.topLeft(), layout.sessionTrack.width(), look);
    ClockLine{.fraction = timeUsed, .height = layout.clock.height()}.paint(painter, layout.clock.topLeft(),
                                                                           layout.clock.width(), look);
    painter.setPen(palette.dim);
    if (layout.start) paintLabel(painter, *layout.start);
    if (layout.end) paintLabel(painter, *layout.end);
}

} // namespace HarrowlaneApp
