#include "HarrowlaneApp/Views/ModelsView.h"

#include <QPainter>
#include <QVBoxLayout>

#include "HarrowlaneApp/Drawing/BucketColors.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Drawing/Rail.h"
#include "HarrowlaneApp/Views/Headings.h"

namespace HarrowlaneApp {

namespace {

constexpr int rowHeight = 48;
constexpr int padTop = 8;
constexpr int padSide = 18;
constexpr double nameColumn = 84.0;
constexpr double percentColumn = 64.0;
constexpr double barHeight = 12.0;
constexpr double signOpacity = 0.75;
// Between figure and sign: they would touch at a one.
constexpr double signGap = 1.5;

/// The letters of two sizes stand on one line.
LineBox lineIn(const QRectF& box, double left) {
    return {.left = left, .top = box.top(), .height = box.height()};
}

} // namespace

void ModelBars::setRows(std::vector<ModelsTexts::Row> rows) {
    rows_ = std::move(rows);
    tellRows();
    updateGeometry();
    update();
}

QSize ModelBars::sizeHint() const {
    return {680, static_cast<int>(rows_.size()) * rowHeight + 2 * padTop};
}

QSize ModelBars::minimumSizeHint() const {
    return {320, sizeHint().height()};
}

QRectF ModelBars::rowBox(std::size_t index) const {
    const double top = padTop + static_cast<double>(index) * rowHeight;
    return {1.0 * padSide, top, width() - 2.0 * padSide, 1.0 * rowHeight};
}

void ModelBars::resizeEvent(QResizeEvent* /*event*/) {
    tellRows();
}

void ModelBars::tellRows() {
    std::vector<Item> items;
    for (const ModelsTexts::Row& row : rows_) {
        items.push_back({.box = rowBox(items.size()).adjusted(-6, 6, 6, -6),
                         .text = QString::fromStdString(row.name + " " + row.percentNumber + "%")});
    }
    setItems(std::move(items));
}

void ModelBars::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    HUDPanel{}.paint(painter, rect(), look());
    for (std::size_t index = 0; index < rows_.size(); ++index) {
        const QRectF box = rowBox(index);
        if (index > 0) painter.fillRect(QRectF(box.left(), box.top(), box.width(), 1.0), colors().edge);
        paintRow(painter, rows_[index], box);
    }
}

void ModelBars::paintRow(QPainter& painter, const ModelsTexts::Row& row, const QRectF& box) const {
    painter.setPen(row.isUsed ? colors().ink : colors().dim);
    HUDType::text(14, HUDType::Weight::semibold)
        .draw(painter, lineIn(box, box.left()), QString::fromStdString(row.name));
    paintFigure(painter, row, box);
    const QColor& color = bucketColor(chartBucket(row.modelClass), look().appearance);
    const Rail rail{.fraction = row.share, .colors = {color}, .height = barHeight};
    const QPointF corner(box.left() + nameColumn, box.center().y() - barHeight / 2.0);
    rail.paint(painter, corner, box.width() - nameColumn - percentColumn, look());
}

void ModelBars::paintFigure(QPainter& painter, const ModelsTexts::Row& row, const QRectF& box) const {
    const HUDFont large = HUDType::text(17, HUDType::Weight::bold);
    const HUDFont small = HUDType::text(11.5, HUDType::Weight::semibold);
    const QString figure = QString::fromStdString(row.percentNumber);
    const QString sign = QStringLiteral("%");
    const double signLeft = box.right() - small.width(sign);
    const double baseline = large.baseline(lineIn(box, 0.0));
    large.draw(painter, QPointF(signLeft - signGap - large.width(figure), baseline), figure);
    painter.setPen(withOpacity(painter.pen().color(), signOpacity));
    small.draw(painter, QPointF(signLeft, baseline), sign);
}

ModelsView::ModelsView(const ApplicationLook& look, QWidget* parent)
    : QWidget(parent),
      bars_(new ModelBars(look)),
      note_(new HUDLabel(look, Headings::detail(), Overflow::wrap)) {
    setObjectName(QStringLiteral("modelsView"));
    auto* heading = new HUDLabel(look, Headings::headline());
    heading->setObjectName(QStringLiteral("modelsHeading"));
    heading->setText(shown(ModelsTexts::heading));
    bars_->setObjectName(QStringLiteral("modelBars"));
    bars_->setAccessibleName(shown(ModelsTexts::heading));
    note_->setObjectName(QStringLiteral("modelsNote"));

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(heading);
    column->addSpacing(12);
    column->addWidget(bars_);
    column->addSpacing(14);
    auto* noteRow = new QHBoxLayout;
    noteRow->setContentsMargins(2, 0, 2, 0);
    noteRow->addWidget(note_);
    column->addLayout(noteRow);
    column->addStretch();
    setModels({});
}

void ModelsView::setModels(const UsageModel::ModelBreakdown& models) {
    bars_->setRows(ModelsTexts::rows(models));
    const bool isEmpty = bars_->rows().empty();
    bars_->setVisible(!isEmpty);
    const auto note = ModelsTexts::note(models);
    note_->setText(isEmpty ? shown(ModelsTexts::emptyText) : QString::fromStdString(note.value_or("")));
    note_->setVisible(isEmpty || note.has_value());
}

} // namespace HarrowlaneApp
