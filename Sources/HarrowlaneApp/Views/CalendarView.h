#pragma once

#include <optional>
#include <span>

#include "HarrowlaneApp/Copy/CalendarDays.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/HUDScrollArea.h"
#include "HarrowlaneApp/Views/ItemCanvas.h"

namespace HarrowlaneApp {

/// The days of the history, a column a week.
class CalendarCanvas : public ItemCanvas {
    Q_OBJECT

public:
    static constexpr int cell = 28;
    static constexpr int gap = 6;
    static constexpr int pitch = cell + gap;
    /// Around the cells, for the outline of the last day and the focus ring.
    static constexpr int margin = 5;
    /// Above the first row, for the names of the months.
    static constexpr int header = 20;

    using ItemCanvas::ItemCanvas;

    void setDays(std::span<const UsageModel::DayCell> cells, const UsageModel::Calendar& calendar);
    [[nodiscard]] std::size_t columnCount() const;
    [[nodiscard]] QSize sizeHint() const override;

    /// So many columns, with the margins.
    [[nodiscard]] static int widthOf(std::size_t columns);

protected:
    [[nodiscard]] double itemRadius() const override { return 6.0; }
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] static QRectF box(const CalendarGrid::Day& day);

    std::vector<CalendarGrid::Day> days_;
    std::vector<CalendarGrid::Month> months_;
};

/// The history: the canvas on its panel with the names of the rows and the legend. What does not fit scrolls sideways,
/// and begins at the newest week.
class CalendarPanel : public HUDWidget {
    Q_OBJECT

public:
    explicit CalendarPanel(const ApplicationLook& look, QWidget* parent = nullptr);

    void setDays(std::span<const UsageModel::DayCell> cells, const UsageModel::Calendar& calendar);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// The grid with the names of its rows, as wide as whole columns allow.
    [[nodiscard]] QRectF block() const;
    void placeCanvas();
    void paintRowNames(QPainter& painter) const;
    void paintLegend(QPainter& painter) const;

    HUDScrollArea* scroll_;
    CalendarCanvas* canvas_;
    /// Until the user scrolls back; new weeks and new sizes then leave the view where it is.
    bool isAtNewest_ = true;
};

/// The tab of the history.
class CalendarView : public QWidget {
    Q_OBJECT

public:
    explicit CalendarView(const ApplicationLook& look, QWidget* parent = nullptr);

    void setDays(std::span<const UsageModel::DayCell> cells, const UsageModel::Calendar& calendar);

private:
    CalendarPanel* panel_;
};

} // namespace HarrowlaneApp
