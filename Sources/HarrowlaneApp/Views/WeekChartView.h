#pragma once

#include <optional>

#include <QImage>
#include <QPointer>

#include "HarrowlaneApp/Drawing/ChartTooltipCard.h"
#include "HarrowlaneApp/Drawing/WeekChartPainter.h"
#include "HarrowlaneApp/Views/FocusRing.h"
#include "HarrowlaneApp/Views/HUDWidget.h"

namespace HarrowlaneApp {

/// The week as a chart, on whatever panel lies below. The pointer reads it out, and so do the arrow keys, hour by hour;
/// a screen reader is told what the chart comes to, and what is read out.
class WeekChartView : public HUDWidget {
    Q_OBJECT

public:
    WeekChartView(const ApplicationLook& look, const UsageModel::Calendar& calendar, QWidget* parent = nullptr);

    /// What is under the pointer then is read out anew. An equal week changes nothing.
    void setWeek(const UsageModel::WeekSeries& series, std::optional<double> whatIfFactor = std::nullopt);
    [[nodiscard]] std::optional<double> whatIfFactor() const { return whatIfFactor_; }

    /// What is read out, and where its card stands; absent where nothing is.
    [[nodiscard]] const std::optional<WeekChart::HoverTarget>& hover() const { return hover_; }
    [[nodiscard]] std::optional<QRectF> tooltipRect() const;
    [[nodiscard]] WeekChart::Geometry geometryOfChart() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// The chart without what is read out: drawn when it changes, and laid under all that comes and goes.
    struct Picture {
        QImage image;
        WeekChart::Layout layout;
        Look look;
    };

    /// At so many pixels a point: a picture file may have more than the screen.
    [[nodiscard]] const Picture& picture(double pixelsPerPoint);
    [[nodiscard]] Size viewSize() const;
    [[nodiscard]] ChartTooltipCard card() const;
    /// All that the read-out colours.
    [[nodiscard]] QRegion hoverRegion() const;
    void readOut(std::optional<QPointF> place);
    /// By so many hours, along the curves.
    void step(double hours);
    void speak();

    UsageModel::Calendar calendar_;
    UsageModel::WeekSeries series_;
    std::optional<double> whatIfFactor_;
    std::optional<Picture> picture_;
    /// Where the pointer is, or where the keys have led.
    std::optional<QPointF> place_;
    std::optional<WeekChart::HoverTarget> hover_;
    QPointer<FocusRing> ring_;
};

} // namespace HarrowlaneApp
