#pragma once

#include "HarrowlaneApp/Copy/ModelsTexts.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/ItemCanvas.h"

namespace HarrowlaneApp {

/// The bars of the model families, on their panel.
class ModelBars : public ItemCanvas {
    Q_OBJECT

public:
    using ItemCanvas::ItemCanvas;

    void setRows(std::vector<ModelsTexts::Row> rows);
    [[nodiscard]] const std::vector<ModelsTexts::Row>& rows() const { return rows_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] double itemRadius() const override { return 6.0; }
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QRectF rowBox(std::size_t index) const;
    void tellRows();
    void paintRow(QPainter& painter, const ModelsTexts::Row& row, const QRectF& box) const;
    void paintFigure(QPainter& painter, const ModelsTexts::Row& row, const QRectF& box) const;

    std::vector<ModelsTexts::Row> rows_;
};

/// What each family cost of the week.
class ModelsView : public QWidget {
    Q_OBJECT

public:
    explicit ModelsView(const ApplicationLook& look, QWidget* parent = nullptr);

    void setModels(const UsageModel::ModelBreakdown& models);

private:
    ModelBars* bars_;
    /// Below the bars, or in their place.
    HUDLabel* note_;
};

} // namespace HarrowlaneApp
