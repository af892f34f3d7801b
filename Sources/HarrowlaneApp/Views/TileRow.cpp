#include "HarrowlaneApp/Views/TileRow.h"

#include <algorithm>

#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp {

namespace {

constexpr int gap = 8;
constexpr double radius = 10.0;
constexpr double padTop = 10.0;
constexpr double padSide = 12.0;
constexpr double valueLine = 26.0;
constexpr double valueSize = 24.0;
constexpr double unitSize = 13.0;
constexpr double unitGap = 1.5;
constexpr double unitOpacity = 0.80;
constexpr double labelGap = 3.0;
constexpr double labelLine = 13.0;
constexpr int oneLineHeight = 63;
constexpr std::size_t mostLines = 3;
// Narrower ones cut figures such as "1.22×" short.
constexpr int leastTile = 100;

HUDFont labelFont() {
    return HUDType::text(10.5);
}

QColor colorOf(const std::optional<WeekCopy::Standing>& standing, const Palette& colors) {
    if (!standing) return colors.ink;
    switch (WeekCopy::signal(*standing)) {
    case Signal::good: return colors.good;
    case Signal::warn: return colors.warn;
    case Signal::crit: break;
    }
    return colors.crit;
}

QStringList labelLines(const WeekCopy::Tile& tile, double width) {
    QStringList lines = labelFont().wrapped(QString::fromStdString(tile.label), std::max(width, 1.0));
    if (lines.size() > static_cast<qsizetype>(mostLines)) lines.resize(static_cast<qsizetype>(mostLines));
    return lines;
}

} // namespace

TileRow::TileRow(const ApplicationLook& look, QWidget* parent) : ItemCanvas(look, parent) {
    setObjectName(QStringLiteral("tiles"));
    setAccessibleName(QStringLiteral("This week in figures"));
    setFocusPolicy(Qt::NoFocus);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TileRow::setTiles(std::vector<WeekCopy::Tile> tiles) {
    if (tiles == tiles_) return;
    tiles_ = std::move(tiles);
    tellTiles();
    updateGeometry();
    update();
}

QSize TileRow::sizeHint() const {
    return {680, heightForWidth(680)};
}

QSize TileRow::minimumSizeHint() const {
    return {2 * leastTile + gap, oneLineHeight};
}

int TileRow::perRow(int width) const {
    const int all = std::max(static_cast<int>(tiles_.size()), 1);
    const int fitting = std::max((width + gap) / (leastTile + gap), 1);
    if (fitting >= all) return all;
    // Rows of one length look meant.
    const int rows = (all + fitting - 1) / fitting;
    return (all + rows - 1) / rows;
}

double TileRow::tileWidth(int width) const {
    const int count = perRow(width);
    return (width - 1.0 * gap * (count - 1)) / count;
}

int TileRow::tileHeight(int width) const {
    qsizetype lines = 1;
    for (const WeekCopy::Tile& tile : tiles_) {
        lines = std::max(lines, labelLines(tile, tileWidth(width) - 2.0 * padSide).size());
    }
    return oneLineHeight + static_cast<int>(labelLine) * static_cast<int>(lines - 1);
}

int TileRow::heightForWidth(int width) const {
    if (tiles_.empty()) return 0;
    const int rows = (static_cast<int>(tiles_.size()) + perRow(width) - 1) / perRow(width);
    return rows * (tileHeight(width) + gap) - gap;
}

void TileRow::resizeEvent(QResizeEvent* /*event*/) {
    tellTiles();
}

void TileRow::tellTiles() {
    const auto count = static_cast<std::size_t>(perRow(width()));
    const QSizeF size(tileWidth(width()), tileHeight(width()));
    std::vector<Item> items;
    for (const WeekCopy::Tile& tile : tiles_) {
        const std::size_t column = items.size() % count;
        const std::size_t row = items.size() / count;
        const QPointF corner(static_cast<double>(column) * (size.width() + gap),
                             static_cast<double>(row) * (size.height() + gap));
        items.push_back(
            {.box = {corner, size}, .text = QString::fromStdString(tile.value + tile.unit + " " + tile.label)});
    }
    setItems(std::move(items));
}

void TileRow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t index = 0; index < tiles_.size(); ++index) paintTile(painter, tiles_[index], items()[index].box);
}

void TileRow::paintTile(QPainter& painter, const WeekCopy::Tile& tile, const QRectF& box) const {
    HUDPanel{.radius = radius}.paint(painter, box, look());
    const QString value = QString::fromStdString(tile.value);
    const QString unit = QString::fromStdString(tile.unit);
    const double room = std::max(box.width() - 2.0 * padSide, 1.0);
    const double wanted = HUDType::text(valueSize, HUDType::Weight::bold).width(value) + unitGap +
                          HUDType::text(unitSize, HUDType::Weight::semibold).width(unit);
    // A figure beyond all bounds is set smaller, not cut: it would be another figure.
    const double shrink = std::min(room / wanted, 1.0);
    const HUDFont large = HUDType::text(valueSize * shrink, HUDType::Weight::bold);
    const HUDFont small = HUDType::text(unitSize * shrink, HUDType::Weight::semibold);
    const double left = box.left() + padSide;
    const double baseline = large.baseline({.top = box.top() + padTop, .height = valueLine});
    const QColor color = colorOf(tile.standing, colors());
    painter.setPen(color);
    large.draw(painter, QPointF(left, baseline), value);
    painter.setPen(withOpacity(color, unitOpacity));
    small.draw(painter, QPointF(left + large.width(value) + unitGap, baseline), unit);

    painter.setPen(colors().dim);
    double top = box.top() + padTop + valueLine + labelGap;
    for (const QString& line : labelLines(tile, room)) {
        labelFont().draw(painter, {.left = left, .top = top, .height = labelLine}, labelFont().elided(line, room));
        top += labelLine;
    }
}

} // namespace HarrowlaneApp
