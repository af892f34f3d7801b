#pragma once

#include <vector>

#include "HarrowlaneApp/Copy/DashboardTexts.h"
#include "HarrowlaneApp/Views/HUDWidget.h"

namespace HarrowlaneApp {

/// The keys to the week chart: its lines first, its families below. What does not fit into a row goes on in the next.
class ChartLegend : public HUDWidget {
    Q_OBJECT

public:
    /// Where the chart's own axis begins.
    static constexpr int indent = 42;

    explicit ChartLegend(const ApplicationLook& look, QWidget* parent = nullptr);

    void setLegend(const DashboardTexts::Legend& legend);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// A key and where it begins.
    struct Key {
        std::optional<DashboardTexts::LineKey::Line> line;
        ChartBucket family = ChartBucket::other;
        QString name;
        double left = 0.0;
        int row = 0;
    };

    enum class WithGhost { asDrawn, always };

    [[nodiscard]] std::vector<Key> keys(WithGhost ghost = WithGhost::asDrawn) const;
    [[nodiscard]] static std::vector<Key> placed(std::vector<Key> keys, int width);
    [[nodiscard]] static double widthOf(const Key& key);
    void paintLine(QPainter& painter, const Key& key, double middle) const;

    DashboardTexts::Legend legend_;
};

} // namespace HarrowlaneApp
