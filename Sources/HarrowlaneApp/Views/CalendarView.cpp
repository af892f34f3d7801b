#include "HarrowlaneApp/Views/CalendarView.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QPaintEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Views/Headings.h"

namespace HarrowlaneApp {

namespace {

using UsageModel::Calendar;
using UsageModel::DayCell;

constexpr int padTop = 16;
constexpr int padSide = 16;
constexpr int padBottom = 14;
constexpr int rowNameColumn = 36;
constexpr double cellRadius = 6.0;
constexpr double nameLine = 14.0;
constexpr int gridHeight = CalendarCanvas::pitch * 7 - CalendarCanvas::gap;
constexpr double outlineReach = 2.0;
constexpr double outlineRadius = 8.0;
constexpr double outlineWidth = 1.2;
constexpr double outlineOpacity = 0.55;
constexpr double legendCell = 12.0;
constexpr double legendRadius = 3.0;
constexpr double legendGap = 5.0;
constexpr double legendTextGap = 8.0;
constexpr int legendDistance = 10;
// Ten years: far more than anyone scrolls through, and what a broken clock dates back to 1970 is left out.
constexpr int mostDays = 3653;

const std::array<double, 4> levelOpacities{0.24, 0.45, 0.70, 1.0};

QColor levelColor(std::int64_t level, const Palette& colors) {
    if (level <= 0) return colors.trackFill;
    const auto place = std::min(static_cast<std::size_t>(level) - 1, levelOpacities.size() - 1);
    return withOpacity(colors.cyan, levelOpacities.at(place));
}

HUDFont nameFont() {
    return HUDType::text(10, HUDType::Weight::medium);
}

std::span<const DayCell> recent(std::span<const DayCell> cells, const Calendar& calendar) {
    if (cells.empty()) return cells;
    const UsageModel::Date oldest = calendar.addDays(cells.back().day, -mostDays);
    const auto first = std::ranges::find_if(cells, [&](const DayCell& cell) { return cell.day >= oldest; });
    return {first, cells.end()};
}

} // namespace

void CalendarCanvas::setDays(std::span<const DayCell> cells, const Calendar& calendar) {
    days_ = CalendarGrid::days(cells, calendar);
    months_ = CalendarGrid::months(cells, calendar);
    std::vector<Item> items;
    for (const CalendarGrid::Day& day : days_)
        items.push_back({.box = box(day), .text = QString::fromStdString(day.text)});
    const bool isGrown = items.size() != this->items().size();
    setItems(std::move(items));
    if (isGrown && !days_.empty()) setCurrentItem(days_.size() - 1);
    resize(sizeHint());
    update();
}

std::size_t CalendarCanvas::columnCount() const {
    return days_.empty() ? 0 : days_.back().column + 1;
}

int CalendarCanvas::widthOf(std::size_t columns) {
    return std::max(static_cast<int>(columns) * pitch - gap, 0) + 2 * margin;
}

QSize CalendarCanvas::sizeHint() const {
    return {widthOf(columnCount()), header + gridHeight + margin};
}

QRectF CalendarCanvas::box(const CalendarGrid::Day& day) {
    return {margin + static_cast<double>(day.column) * pitch, header + static_cast<double>(day.row) * pitch, 1.0 * cell,
            1.0 * cell};
}

void CalendarCanvas::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const CalendarGrid::Day& day : days_) {
        if (!event->rect().intersects(box(day).toAlignedRect())) continue;
        fillRounded(painter, box(day), cellRadius, levelColor(day.level, colors()));
    }
    painter.setPen(colors().dim);
    for (const CalendarGrid::Month& month : months_) {
        const double left = margin + static_cast<double>(month.column) * pitch;
        nameFont().draw(painter, {.left = left, .height = nameLine}, shown(month.name));
    }
    if (days_.empty()) return;
    const QRectF last = box(days_.back()).adjusted(-outlineReach, -outlineReach, outlineReach, outlineReach);
    const QRectF around = last.adjusted(-outlineWidth, -outlineWidth, outlineWidth, outlineWidth);
    strokeInside(painter, around, outlineRadius, withOpacity(colors().ink, outlineOpacity), outlineWidth);
}

CalendarPanel::CalendarPanel(const ApplicationLook& look, QWidget* parent)
    : HUDWidget(look, parent),
      scroll_(new HUDScrollArea(look, HUDScrollArea::Way::sideways, this)),
      canvas_(new CalendarCanvas(look)) {
    canvas_->setObjectName(QStringLiteral("calendarDays"));
    canvas_->setAccessibleName(shown(CalendarGrid::heading));
    scroll_->setObjectName(QStringLiteral("calendarScroll"));
    scroll_->setContent(canvas_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    QScrollBar* bar = scroll_->horizontalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int /*least*/, int most) {
        if (isAtNewest_) bar->setValue(most);
    });
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { isAtNewest_ = value == bar->maximum(); });
}

void CalendarPanel::setDays(std::span<const DayCell> cells, const Calendar& calendar) {
    const std::size_t before = canvas_->columnCount();
    canvas_->setDays(recent(cells, calendar), calendar);
    if (canvas_->columnCount() == before) return;
    placeCanvas();
}

QSize CalendarPanel::sizeHint() const {
    constexpr int legend = legendDistance + CalendarCanvas::margin + static_cast<int>(legendCell);
    return {680, padTop + CalendarCanvas::header + gridHeight + legend + padBottom};
}

QSize CalendarPanel::minimumSizeHint() const {
    return {rowNameColumn + CalendarCanvas::widthOf(4) + 2 * padSide, sizeHint().height()};
}

QRectF CalendarPanel::block() const {
    const int room = width() - 2 * padSide - rowNameColumn + CalendarCanvas::gap;
    const int fitting = std::max(room / CalendarCanvas::pitch, 1);
    const double wide = rowNameColumn + fitting * CalendarCanvas::pitch - CalendarCanvas::gap;
    return {std::floor((width() - wide) / 2.0), 1.0 * padTop, wide, 1.0 * CalendarCanvas::header + gridHeight};
}

void CalendarPanel::resizeEvent(QResizeEvent* /*event*/) {
    placeCanvas();
}

void CalendarPanel::placeCanvas() {
    const QRectF grid = block();
    const int left = static_cast<int>(grid.left()) + rowNameColumn - CalendarCanvas::margin;
    const int wide = static_cast<int>(grid.width()) - rowNameColumn + 2 * CalendarCanvas::margin;
    const int bar = canvas_->width() > wide ? HUDScrollBar::thickness : 0;
    scroll_->setGeometry(left, padTop, wide, canvas_->height() + bar);
}

void CalendarPanel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    HUDPanel{}.paint(painter, rect(), look());
    paintRowNames(painter);
    paintLegend(painter);
}

void CalendarPanel::paintRowNames(QPainter& painter) const {
    painter.setPen(colors().dim);
    double top = padTop + CalendarCanvas::header;
    for (const std::string_view name : CalendarGrid::rowNames) {
        nameFont().draw(painter, {.left = block().left(), .top = top, .height = CalendarCanvas::cell}, shown(name));
        top += CalendarCanvas::pitch;
    }
}

void CalendarPanel::paintLegend(QPainter& painter) const {
    const HUDFont font = HUDType::text(10.5);
    const QString less = shown(CalendarGrid::legendLess);
    const QString more = shown(CalendarGrid::legendMore);
    const double top = height() - padBottom - legendCell;
    const auto line = [&](double left) { return LineBox{.left = left, .top = top, .height = legendCell}; };
    const std::size_t cells = levelOpacities.size() + 1;
    double left = block().right() - font.width(more);
    painter.setPen(colors().dim);
    font.draw(painter, line(left), more);
    left -= legendTextGap - legendGap;
    for (std::size_t index = cells; index-- > 0;) {
        left -= legendCell + legendGap;
        fillRounded(painter, {left, top, legendCell, legendCell}, legendRadius,
                    levelColor(static_cast<std::int64_t>(index), colors()));
    }
    font.draw(painter, line(left - legendTextGap - font.width(less)), less);
}

CalendarView::CalendarView(const ApplicationLook& look, QWidget* parent)
    : QWidget(parent),
      panel_(new CalendarPanel(look)) {
    setObjectName(QStringLiteral("calendarView"));
    auto* heading = new HUDLabel(look, Headings::headline());
    heading->setObjectName(QStringLiteral("calendarHeading"));
    heading->setText(shown(CalendarGrid::heading));
    panel_->setObjectName(QStringLiteral("calendarPanel"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(heading);
    column->addSpacing(12);
    column->addWidget(panel_);
    column->addStretch();
}

void CalendarView::setDays(std::span<const DayCell> cells, const Calendar& calendar) {
    panel_->setDays(cells, calendar);
}

} // namespace HarrowlaneApp
