#pragma once

#include <vector>

#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "HarrowlaneApp/Drawing/StatusBadge.h"
#include "HarrowlaneApp/Views/HUDButton.h"
#include "UsageModel/WeekSeries.h"

namespace HarrowlaneApp {

/// Where the week is heading: its curve, and the words to it. The whole card is a button that opens the dashboard.
class WeekMiniCard : public HUDButton {
    Q_OBJECT

public:
    /// A line of text in its place.
    struct PlacedText {
        QString text;
        HUDFont font;
        QColor Palette::*color = &Palette::ink;
        LineBox box;
    };

    /// Everything on a card of one width.
    struct Layout {
        std::vector<PlacedText> texts;
        StatusBadge badge;
        QRectF badgePlace;
        QRectF chart;
        /// Between two figures; absent where there are not two.
        QRectF rule;
        int height = 0;
    };

    explicit WeekMiniCard(const ApplicationLook& look, QWidget* parent = nullptr);

    void setWeek(const WeekCopy::Compact& words, const UsageModel::WeekSeries& series);

    [[nodiscard]] static Layout layOut(const WeekCopy::Compact& words, int width);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override { return layOut(words_, width).height; }

protected:
    void paintFace(QPainter& painter) override;
    [[nodiscard]] FocusRing::Outline outline() const override;

private:
    WeekCopy::Compact words_;
    UsageModel::WeekSeries series_;
};

} // namespace HarrowlaneApp
