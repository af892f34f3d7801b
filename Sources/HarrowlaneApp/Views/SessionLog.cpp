#include "HarrowlaneApp/Views/SessionLog.h"

#include <algorithm>
#include <utility>

#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>

#include "HarrowlaneApp/Drawing/BucketColors.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Views/Headings.h"

namespace HarrowlaneApp {

namespace {

using SessionDetail::LogRow;

constexpr int padTop = 13;
constexpr int padSide = 16;
constexpr int padBottom = 6;
constexpr int headerHeight = 31;
constexpr double titleLine = 14.0;
constexpr int rowHeight = 51;
constexpr int pitch = rowHeight + 1;
constexpr double rowPad = 9.0;
constexpr double upperLine = 16.0;
constexpr double lowerGap = 3.0;
constexpr double lowerLine = 14.0;
constexpr double costColumn = 172.0;
constexpr double totalColumn = 116.0;
// Below this the cost column is as wide as its texts, for the sake of the times.
constexpr int narrow = 640;
constexpr double columnGap = 16.0;
constexpr double railLength = 64.0;
constexpr double railHeight = 5.0;
constexpr double beforeOpacity = 0.34;
constexpr double leastPart = 2.0;
constexpr double swatch = 6.0;
constexpr double swatchGap = 5.0;
constexpr double partGap = 12.0;
// A week has some thirty sessions; a widget has no more rows than this.
constexpr std::size_t mostRows = 20000;

HUDFont upperFont(HUDType::Weight weight) {
    return HUDType::text(12.5, weight);
}

HUDFont lowerFont() {
    return HUDType::text(10.5);
}

LineBox upperLineIn(const QRectF& box) {
    return {.left = box.left(), .top = box.top() + rowPad, .height = upperLine};
}

LineBox lowerLineIn(const QRectF& box) {
    return {.left = box.left(), .top = box.top() + rowPad + upperLine + lowerGap, .height = lowerLine};
}

QRectF totalBox(const QRectF& row) {
    return {row.right() - totalColumn, row.top(), totalColumn, row.height()};
}

double costWidth(const LogRow& row) {
    const double cap = row.capText ? lowerFont().width(QString::fromStdString(*row.capText)) : 0.0;
    return std::max(upperFont(HUDType::Weight::semibold).width(QString::fromStdString(row.cost)), cap);
}

} // namespace

SessionLog::SessionLog(const ApplicationLook& look, QWidget* parent) : ItemCanvas(look, parent) {
    setObjectName(QStringLiteral("sessionLog"));
    setAccessibleName(QString::fromUtf8(SessionDetail::logTitle.data()));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void SessionLog::setSessions(const UsageModel::WeekSeries& series, const UsageModel::Calendar& calendar) {
    auto rows = SessionDetail::log(series, calendar);
    if (rows.size() > mostRows) rows.resize(mostRows);
    const auto note = QString::fromStdString(SessionDetail::logNote(series.sessions).value_or(""));
    if (rows == rows_ && note == note_) return;
    rows_ = std::move(rows);
    note_ = note;
    setAccessibleDescription(note_);
    widestCost_ = 0.0;
    for (const LogRow& row : rows_) widestCost_ = std::max(widestCost_, costWidth(row));
    tellRows();
    updateGeometry();
    update();
}

QSize SessionLog::sizeHint() const {
    return {680, headerHeight + std::max(static_cast<int>(rows_.size()) * pitch - 1, 0) + padBottom};
}

QSize SessionLog::minimumSizeHint() const {
    return {320, sizeHint().height()};
}

QRectF SessionLog::rowBox(std::size_t index) const {
    return {1.0 * padSide, headerHeight + static_cast<double>(index) * pitch, width() - 2.0 * padSide, 1.0 * rowHeight};
}

/// The columns come from the right; what is left is the first one's.
QRectF SessionLog::costBox(const QRectF& row) const {
    const double wide = width() < narrow ? std::min(widestCost_ + 1.0, costColumn) : costColumn;
    return {totalBox(row).left() - columnGap - wide, row.top(), wide, row.height()};
}

QRectF SessionLog::timesBox(const QRectF& row) const {
    return {row.left(), row.top(), std::max(costBox(row).left() - columnGap - row.left(), 0.0), row.height()};
}

void SessionLog::resizeEvent(QResizeEvent* /*event*/) {
    tellRows();
}

void SessionLog::tellRows() {
    std::vector<Item> items;
    items.reserve(rows_.size());
    for (const LogRow& row : rows_) {
        items.push_back(
            {.box = rowBox(items.size()).adjusted(-8, 5, 8, -5), .text = QString::fromStdString(row.plainText)});
    }
    setItems(std::move(items));
}

void SessionLog::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    HUDPanel{}.paint(painter, rect(), look());
    paintHeader(painter);
    const QRect& dirty = event->rect();
    const int first = std::max((dirty.top() - headerHeight) / pitch, 0);
    const int last = std::min((dirty.bottom() - headerHeight) / pitch, static_cast<int>(rows_.size()) - 1);
    for (int index = first; index <= last; ++index) {
        const QRectF box = rowBox(static_cast<std::size_t>(index));
        if (index > 0) painter.fillRect(QRectF(box.left(), box.top() - 1.0, box.width(), 1.0), colors().edge);
        paintRow(painter, rows_[static_cast<std::size_t>(index)], box);
    }
}

void SessionLog::paintHeader(QPainter& painter) const {
    const HUDFont font = Headings::card().font;
    const LineBox line{.left = 1.0 * padSide, .top = 1.0 * padTop, .height = titleLine};
    painter.setPen(colors().dim);
    const QString title = shown(SessionDetail::logTitle);
    font.draw(painter, line, title);
    const HUDFont small = HUDType::text(10);
    const double room = width() - 2.0 * padSide - font.width(title) - columnGap;
    small.drawToRight(painter, line, width() - padSide, small.elided(note_, std::max(room, 1.0)));
}

void SessionLog::paintRow(QPainter& painter, const LogRow& row, const QRectF& box) const {
    paintTimes(painter, row, timesBox(box));
    paintMix(painter, row, timesBox(box));
    paintCost(painter, row, costBox(box));
    paintTotal(painter, row, totalBox(box));
}

void SessionLog::paintTimes(QPainter& painter, const LogRow& row, const QRectF& box) const {
    const HUDFont font = upperFont(HUDType::Weight::medium);
    const QString mark = row.isRunning ? shown(SessionDetail::runningMark) : QString();
    const QString times = font.elided(QString::fromStdString(row.times), std::max(box.width() - font.width(mark), 1.0));
    LineBox line = upperLineIn(box);
    painter.setPen(colors().ink);
    font.draw(painter, line, times);
    line.left += font.width(times);
    painter.setPen(colors().cyan);
    font.draw(painter, line, font.elided(mark, std::max(box.right() - line.left, 1.0)));
}

void SessionLog::paintMix(QPainter& painter, const LogRow& row, const QRectF& box) const {
    const HUDFont font = lowerFont();
    LineBox line = lowerLineIn(box);
    for (const BucketShare& part : row.mix) {
        const QString text = QString::fromStdString(mixText(part));
        // What does not fit is told by the row's text; half a part would tell something else.
        if (line.left + swatch + swatchGap + font.width(text) > box.right()) break;
        fillRounded(painter, {line.left, line.top + (lowerLine - swatch) / 2.0, swatch, swatch}, 1.5,
                    bucketColor(part.bucket, look().appearance));
        line.left += swatch + swatchGap;
        painter.setPen(colors().dim);
        font.draw(painter, line, text);
        line.left += font.width(text) + partGap;
    }
}

void SessionLog::paintCost(QPainter& painter, const LogRow& row, const QRectF& box) const {
    const HUDFont font = upperFont(HUDType::Weight::semibold);
    LineBox line = upperLineIn(box);
    if (!row.capText) line.top = box.center().y() - upperLine / 2.0;
    painter.setPen(colors().ink);
    font.drawToRight(painter, line, box.right(), font.elided(QString::fromStdString(row.cost), box.width()));
    if (!row.capText) return;
    painter.setPen(colors().dim);
    const QString cap = lowerFont().elided(QString::fromStdString(*row.capText), box.width());
    lowerFont().drawToRight(painter, lowerLineIn(box), box.right(), cap);
}

void SessionLog::paintTotal(QPainter& painter, const LogRow& row, const QRectF& box) const {
    const QRectF track(box.left(), box.center().y() - railHeight / 2.0, railLength, railHeight);
    const auto place = [&](double share) { return railLength * (share > 0.0 ? std::min(share, 1.0) : 0.0); };
    const double end = place(row.total);
    const double start = std::min(place(row.totalBefore), std::max(end - leastPart, 0.0));
    painter.save();
    QPainterPath capsule;
    capsule.addRoundedRect(track, railHeight / 2.0, railHeight / 2.0);
    painter.setClipPath(capsule, Qt::IntersectClip);
    painter.fillRect(track, colors().trackFill);
    painter.fillRect(QRectF(track.left(), track.top(), start, railHeight), withOpacity(colors().cyan, beforeOpacity));
    painter.fillRect(QRectF(track.left() + start, track.top(), end - start, railHeight), colors().cyan);
    painter.restore();

    const HUDFont font = upperFont(HUDType::Weight::semibold);
    const LineBox line{.top = box.center().y() - upperLine / 2.0, .height = upperLine};
    const double room = box.width() - railLength - 4.0;
    painter.setPen(colors().ink);
    font.drawToRight(painter, line, box.right(), font.elided(QString::fromStdString(row.totalText), room));
}

} // namespace HarrowlaneApp
