#include "HarrowlaneApp/Views/WeekChartView.h"

#include <algorithm>
#include <cmath>

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "HarrowlaneApp/Copy/WeekChartGeometry.h"
#include "HarrowlaneApp/Drawing/Images.h"
#include "HarrowlaneApp/Views/HUDLabel.h"

namespace HarrowlaneApp {

namespace {

constexpr double secondsPerHour = 3600.0;
constexpr double hoursPerDay = 24.0;

/// "Sat 6:30 AM, forecast, Projected 83%, Typical week 66%": a card as it is read aloud.
QString spoken(const ChartTooltip::Content& content) {
    QStringList parts{QString::fromStdString(content.header)};
    if (!content.mark.empty()) parts.append(shown(content.mark));
    for (const BucketShare& part : content.mix) parts.append(QString::fromStdString(mixText(part)));
    for (const ChartTooltip::Row& row : content.rows) {
        parts.append(QString::fromStdString(row.label + " " + row.value));
    }
    if (content.note) parts.append(shown(*content.note));
    return parts.join(QStringLiteral(", "));
}

} // namespace

WeekChartView::WeekChartView(const ApplicationLook& look, const UsageModel::Calendar& calendar, QWidget* parent)
    : HUDWidget(look, parent),
      calendar_(calendar) {
    setObjectName(QStringLiteral("weekChart"));
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    speak();
}

QSize WeekChartView::sizeHint() const {
    return {656, static_cast<int>(WeekChart::chartHeight)};
}

QSize WeekChartView::minimumSizeHint() const {
    return {240, static_cast<int>(WeekChart::chartHeight)};
}

void WeekChartView::setWeek(const UsageModel::WeekSeries& series, std::optional<double> whatIfFactor) {
    if (series == series_ && whatIfFactor == whatIfFactor_) return;
    series_ = series;
    whatIfFactor_ = whatIfFactor;
    picture_.reset();
    readOut(place_);
    update();
}

Size WeekChartView::viewSize() const {
    return {.width = static_cast<double>(width()), .height = static_cast<double>(height())};
}

WeekChart::Geometry WeekChartView::geometryOfChart() const {
    return WeekChart::geometry(series_, viewSize());
}

ChartTooltipCard WeekChartView::card() const {
    return {.content = ChartTooltip::content(*hover_, series_, calendar_)};
}

std::optional<QRectF> WeekChartView::tooltipRect() const {
    if (!hover_ || !place_) return std::nullopt;
    const ChartTooltip::Frame frame{.height = card().height(), .view = viewSize()};
    return WeekChart::in(ChartTooltip::place({.x = place_->x(), .y = place_->y()}, frame));
}

QRegion WeekChartView::hoverRegion() const {
    const auto tooltip = tooltipRect();
    if (!tooltip) return {};
    const WeekChart::Geometry geometry = geometryOfChart();
    const QRectF marks = WeekChart::extent(WeekChart::hoverOf(*hover_, series_, geometry), geometry);
    return QRegion(marks.toAlignedRect()) | ChartTooltipCard::extent(*tooltip).toAlignedRect();
}

void WeekChartView::readOut(std::optional<QPointF> place) {
    const QRegion before = hoverRegion();
    place_ = place;
    hover_.reset();
    if (place_) hover_ = WeekChart::hoverTarget({.x = place_->x(), .y = place_->y()}, series_, geometryOfChart());
    update(before | hoverRegion());
    speak();
}

void WeekChartView::speak() {
    const QString summary = QString::fromStdString(WeekChart::accessibilitySummary(series_, calendar_));
    setAccessibleName(summary);
    setAccessibleDescription(hover_ ? spoken(card().content) : summary);
}

const WeekChartView::Picture& WeekChartView::picture(double pixelsPerPoint) {
    const bool isFresh = picture_ && picture_->look == look() && picture_->layout.pixelsPerPoint == pixelsPerPoint;
    if (isFresh) return *picture_;
    picture_ = Picture{.layout = WeekChart::layOut({.series = series_,
                                                    .calendar = calendar_,
                                                    .size = viewSize(),
                                                    .pixelsPerPoint = pixelsPerPoint,
                                                    .whatIfFactor = whatIfFactor_}),
                       .look = look()};
    picture_->image = Images::drawn(size(), pixelsPerPoint,
                                    [&](QPainter& painter) { WeekChart::paint(painter, picture_->layout, look()); });
    return *picture_;
}

void WeekChartView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Picture& made = picture(painter.deviceTransform().m11());
    painter.drawImage(QPointF(), made.image);
    const auto tooltip = tooltipRect();
    if (!tooltip) return;
    WeekChart::paint(painter, WeekChart::hoverOf(*hover_, series_, made.layout.geometry), made.layout, look());
    card().paint(painter, *tooltip, look());
}

void WeekChartView::resizeEvent(QResizeEvent* event) {
    picture_.reset();
    readOut(place_);
    if (ring_) ring_->setOutline({.box = rect(), .radius = 0.0});
    HUDWidget::resizeEvent(event);
}

void WeekChartView::mouseMoveEvent(QMouseEvent* event) {
    readOut(event->position());
}

void WeekChartView::leaveEvent(QEvent* event) {
    readOut(std::nullopt);
    HUDWidget::leaveEvent(event);
}

void WeekChartView::focusInEvent(QFocusEvent* event) {
    if (showsFocusRing(event->reason())) ring_ = new FocusRing(applicationLook(), *this, {.box = rect()});
    HUDWidget::focusInEvent(event);
}

void WeekChartView::focusOutEvent(QFocusEvent* event) {
    delete ring_;
    readOut(std::nullopt);
    HUDWidget::focusOutEvent(event);
}

void WeekChartView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left: return step(-1.0);
    case Qt::Key_Right: return step(1.0);
    case Qt::Key_PageUp: return step(-hoursPerDay);
    case Qt::Key_PageDown: return step(hoursPerDay);
    case Qt::Key_Escape:
        if (!hover_) break;
        return readOut(std::nullopt);
    default: break;
    }
    HUDWidget::keyPressEvent(event);
}

void WeekChartView::step(double hours) {
    const WeekChart::Geometry geometry = geometryOfChart();
    const auto* place = hover_ ? std::get_if<WeekChart::CurvePlace>(&*hover_) : nullptr;
    // The first key begins at the present.
    const UsageModel::Date at = place != nullptr ? place->at + hours * secondsPerHour : series_.now;
    const Rect& panel = geometry.top.panel;
    const double y = geometry.top.heldY(WeekChart::curveValue(series_, at).value_or(0.0));
    readOut(QPointF(geometry.x(at), std::clamp(y, panel.y, panel.bottom())));
}

} // namespace HarrowlaneApp
