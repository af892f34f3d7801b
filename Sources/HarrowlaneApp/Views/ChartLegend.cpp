#include "HarrowlaneApp/Views/ChartLegend.h"

#include <algorithm>

#include <QPainter>

#include "HarrowlaneApp/Drawing/BucketColors.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/WeekChartStrokes.h"
#include "HarrowlaneApp/Views/HUDLabel.h"

namespace HarrowlaneApp {

namespace {

using Line = DashboardTexts::LineKey::Line;

constexpr int rowHeight = 14;
constexpr int rowGap = 5;
constexpr double keyGap = 16.0;
constexpr double nameGap = 6.0;
constexpr double lineLength = 18.0;
constexpr double swatch = 8.0;

HUDFont nameFont() {
    return HUDType::text(10.5);
}

} // namespace

ChartLegend::ChartLegend(const ApplicationLook& look, QWidget* parent) : HUDWidget(look, parent) {
    setObjectName(QStringLiteral("chartLegend"));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void ChartLegend::setLegend(const DashboardTexts::Legend& legend) {
    if (legend == legend_) return;
    legend_ = legend;
    QStringList names;
    for (const Key& key : keys()) names.append(key.name);
    setAccessibleName(names.join(QStringLiteral(", ")));
    updateGeometry();
    update();
}

std::vector<ChartLegend::Key> ChartLegend::keys(WithGhost ghost) const {
    std::vector<Key> keys;
    bool hasGhost = false;
    for (const auto& line : legend_.lines) {
        keys.push_back({.line = line.line, .name = shown(line.name)});
        hasGhost = hasGhost || line.line == Line::ghost;
    }
    if (ghost == WithGhost::always && !hasGhost) {
        keys.push_back({.line = Line::ghost, .name = shown(DashboardTexts::ghostName)});
    }
    for (const ChartBucket family : legend_.families) keys.push_back({.family = family, .name = shown(label(family))});
    return keys;
}

double ChartLegend::widthOf(const Key& key) {
    return (key.line ? lineLength : swatch) + nameGap + nameFont().width(key.name);
}

std::vector<ChartLegend::Key> ChartLegend::placed(std::vector<Key> keys, int width) {
    double left = indent;
    int row = 0;
    bool wasLine = true;
    for (Key& key : keys) {
        const bool isFull = left > indent && left + widthOf(key) > width;
        if (isFull || (wasLine && !key.line)) {
            left = indent;
            ++row;
        }
        wasLine = key.line.has_value();
        key.left = left;
        key.row = row;
        left += widthOf(key) + keyGap;
    }
    return keys;
}

QSize ChartLegend::sizeHint() const {
    return {656, heightForWidth(656)};
}

QSize ChartLegend::minimumSizeHint() const {
    return {200, 2 * rowHeight + rowGap};
}

int ChartLegend::heightForWidth(int width) const {
    // There is always room for the key that comes with a choice: it must not move what is below.
    const auto keys = placed(this->keys(WithGhost::always), width);
    const int rows = std::max(keys.empty() ? 0 : keys.back().row + 1, 2);
    return rows * (rowHeight + rowGap) - rowGap;
}

void ChartLegend::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Key& key : placed(keys(), width())) {
        const double top = key.row * (rowHeight + rowGap);
        const double middle = top + rowHeight / 2.0;
        if (key.line) {
            paintLine(painter, key, middle);
        } else {
            fillRounded(painter, {key.left, middle - swatch / 2.0, swatch, swatch}, 2.0,
                        bucketColor(key.family, look().appearance));
        }
        const double nameLeft = key.left + (key.line ? lineLength : swatch) + nameGap;
        painter.setPen(colors().dim);
        nameFont().draw(painter, {.left = nameLeft, .top = top, .height = rowHeight},
                        nameFont().elided(key.name, std::max(width() - nameLeft, 1.0)));
    }
}

void ChartLegend::paintLine(QPainter& painter, const Key& key, double middle) const {
    painter.setPen(WeekChart::strokeOf(*key.line, colors(), &Palette::cyan));
    painter.drawLine(QPointF(key.left + 1.0, middle), QPointF(key.left + lineLength - 1.0, middle));
}

} // namespace HarrowlaneApp
