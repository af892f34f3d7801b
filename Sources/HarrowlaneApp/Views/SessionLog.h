#pragma once

#include <vector>

#include "HarrowlaneApp/Copy/SessionDetail.h"
#include "HarrowlaneApp/Views/ItemCanvas.h"

namespace HarrowlaneApp {

/// The week's sessions on a panel, the newest first, with what they cost and came to. Only rows in sight are drawn.
class SessionLog : public ItemCanvas {
    Q_OBJECT

public:
    explicit SessionLog(const ApplicationLook& look, QWidget* parent = nullptr);

    void setSessions(const UsageModel::WeekSeries& series, const UsageModel::Calendar& calendar);
    [[nodiscard]] const std::vector<SessionDetail::LogRow>& rows() const { return rows_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] double itemRadius() const override { return 6.0; }
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QRectF rowBox(std::size_t index) const;
    [[nodiscard]] QRectF costBox(const QRectF& row) const;
    [[nodiscard]] QRectF timesBox(const QRectF& row) const;
    void tellRows();
    void paintHeader(QPainter& painter) const;
    void paintRow(QPainter& painter, const SessionDetail::LogRow& row, const QRectF& box) const;
    void paintTimes(QPainter& painter, const SessionDetail::LogRow& row, const QRectF& box) const;
    void paintMix(QPainter& painter, const SessionDetail::LogRow& row, const QRectF& box) const;
    void paintCost(QPainter& painter, const SessionDetail::LogRow& row, const QRectF& box) const;
    void paintTotal(QPainter& painter, const SessionDetail::LogRow& row, const QRectF& box) const;

    std::vector<SessionDetail::LogRow> rows_;
    double widestCost_ = 0.0;
    QString note_;
};

} // namespace HarrowlaneApp
