#include "HarrowlaneApp/Views/WhatIfPanel.h"

#include <cmath>

#include <QPainter>
#include <QVBoxLayout>

#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Views/Headings.h"

namespace HarrowlaneApp {

namespace {

using UsageModel::ModelAndEffort;

constexpr int headerHeight = 16;
constexpr int resultHeight = 16;
constexpr int resultGap = 10;

TextStyle pickStyle() {
    return {.font = HUDType::text(12.5), .color = &Palette::dim, .lineHeight = resultHeight};
}

TextStyle landingStyle(Signal signal) {
    TextStyle style{.font = HUDType::text(12.5, HUDType::Weight::semibold), .lineHeight = resultHeight};
    switch (signal) {
    case Signal::good: style.color = &Palette::good; break;
    case Signal::warn: style.color = &Palette::warn; break;
    case Signal::crit: style.color = &Palette::crit; break;
    }
    return style;
}

HUDFont smallFont() {
    return HUDType::text(11);
}

template <typename Value>
std::vector<ChipButton::Face> facesOf(const std::vector<WhatIfTexts::Chip<Value>>& chips) {
    std::vector<ChipButton::Face> faces;
    faces.reserve(chips.size());
    for (const auto& chip : chips) {
        faces.push_back({
            .label = QString::fromStdString(chip.label),
            .isNow = chip.isNow,
            .isSelected = chip.isSelected,
            .costsMore = chip.costsMore,
            .tooltip = QString::fromStdString(chip.tooltip),
        });
    }
    return faces;
}

} // namespace

EstimateMark::EstimateMark(const ApplicationLook& look, QWidget* parent) : HUDWidget(look, parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(shown(WhatIfTexts::estimateMark));
    setAccessibleDescription(shown(WhatIfTexts::estimateTooltip));
    setToolTip(wrappedToolTip(shown(WhatIfTexts::estimateTooltip)));
}

QSize EstimateMark::sizeHint() const {
    return {static_cast<int>(std::ceil(smallFont().width(shown(WhatIfTexts::estimateMark)))), resultHeight};
}

void EstimateMark::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colors().dim);
    smallFont().draw(painter, {.height = 1.0 * height()}, shown(WhatIfTexts::estimateMark));
    QPen dots(withOpacity(colors().dim, 0.70), 1.0);
    dots.setDashPattern({1.0, 1.5});
    dots.setCapStyle(Qt::FlatCap);
    painter.setPen(dots);
    painter.drawLine(QPointF(0.0, height() - 0.5), QPointF(width(), height() - 0.5));
}

WhatIfPanel::WhatIfPanel(const ApplicationLook& look, QWidget* parent) : PanelBox(look, 12.0, nullptr, parent) {
    setObjectName(QStringLiteral("whatIfPanel"));
    setAccessibleName(shown(WhatIfTexts::title));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 13, 16, 12);
    column->setSpacing(0);
    addHeader(*column);
    column->addSpacing(10);
    models_ = new AxisRow(look, WhatIfTexts::modelAxis);
    models_->setObjectName(QStringLiteral("modelAxis"));
    efforts_ = new AxisRow(look, WhatIfTexts::effortAxis);
    efforts_->setObjectName(QStringLiteral("effortAxis"));
    column->addWidget(models_);
    column->addSpacing(8);
    column->addWidget(efforts_);
    column->addSpacing(12);
    column->addWidget(new Divider(look));
    column->addSpacing(11);
    addResultLine(*column);
    connect(models_, &AxisRow::clicked, this, [this](int index) { chooseModel(static_cast<std::size_t>(index)); });
    connect(efforts_, &AxisRow::clicked, this, [this](int index) { chooseEffort(static_cast<std::size_t>(index)); });
}

void WhatIfPanel::addHeader(QVBoxLayout& column) {
    auto* header = new QWidget;
    header->setFixedHeight(headerHeight);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    auto* title = new HUDLabel(applicationLook(), Headings::card());
    title->setText(shown(WhatIfTexts::title));
    row->addWidget(title);
    column.addWidget(header);
    // Its hit area is larger than the header, so it stands on the panel.
    reset_ = new TextButton(applicationLook(), shown(WhatIfTexts::resetButton), this);
    reset_->setObjectName(QStringLiteral("whatIfReset"));
    reset_->hide();
    connect(reset_, &QAbstractButton::clicked, this, [this] { Q_EMIT chosen({}); });
}

void WhatIfPanel::addResultLine(QVBoxLayout& column) {
    landing_ = new HUDLabel(applicationLook(), pickStyle());
    landing_->setObjectName(QStringLiteral("whatIfLanding"));
    consequence_ =
        new HUDLabel(applicationLook(), {.font = smallFont(), .color = &Palette::dim, .lineHeight = resultHeight});
    consequence_->setObjectName(QStringLiteral("whatIfConsequence"));
    estimate_ = new EstimateMark(applicationLook());
    estimate_->setObjectName(QStringLiteral("whatIfEstimate"));
    auto* row = new QHBoxLayout;
    row->setSpacing(resultGap);
    row->addWidget(landing_);
    row->addWidget(consequence_);
    row->addWidget(estimate_);
    row->addStretch();
    column.addLayout(row);
}

void WhatIfPanel::resizeEvent(QResizeEvent* event) {
    const QSize size = reset_->sizeHint();
    reset_->setGeometry(width() - 16 - size.width() + TextButton::reach, 13 - TextButton::reach, size.width(),
                        size.height());
    PanelBox::resizeEvent(event);
}

void WhatIfPanel::setPanel(const WhatIfTexts::Panel& panel, const ModelAndEffort& choice) {
    panel_ = panel;
    choice_ = choice;
    reset_->setVisible(panel.isChanged);
    models_->setNote(QString::fromStdString(panel.modelNote.value_or("")));
    models_->setChips(facesOf(panel.models));
    efforts_->setNote(QString::fromStdString(panel.effortNote));
    efforts_->setChips(facesOf(panel.efforts));
    const int widest = std::max(models_->chipsWidth(), efforts_->chipsWidth());
    models_->setWidestChips(widest);
    // A model without efforts leaves the rows as they are.
    efforts_->setWidestChips(widest);
    showResult(panel.result);
}

void WhatIfPanel::showResult(const WhatIfTexts::Result& result) {
    landing_->setStyle(result.signal ? landingStyle(*result.signal) : pickStyle());
    landing_->setText(result.texts.empty() ? QString() : QString::fromStdString(result.texts.front()));
    const bool hasMore = result.texts.size() > 1;
    consequence_->setText(hasMore ? QString::fromStdString(result.texts[1]) : QString());
    consequence_->setVisible(hasMore);
    estimate_->setVisible(result.isEstimate);
}

void WhatIfPanel::chooseModel(std::size_t index) {
    if (index >= panel_.models.size()) return;
    ModelAndEffort choice = choice_;
    choice.model = WhatIfTexts::toggled(choice.model, panel_.models[index].value);
    Q_EMIT chosen(choice);
}

void WhatIfPanel::chooseEffort(std::size_t index) {
    if (index >= panel_.efforts.size()) return;
    ModelAndEffort choice = choice_;
    choice.effort = WhatIfTexts::toggled(choice.effort, panel_.efforts[index].value);
    Q_EMIT chosen(choice);
}

} // namespace HarrowlaneApp
