#include "HarrowlaneApp/Views/WeekTab.h"

#include <QVBoxLayout>

#include "HarrowlaneApp/Copy/DashboardTexts.h"
#include "HarrowlaneApp/Views/Headings.h"
#include "HarrowlaneApp/Views/WeekChartView.h"
#include "HarrowlaneApp/Views/WeekHeader.h"

namespace HarrowlaneApp {

namespace {

constexpr int blockGap = 12;
constexpr int chartPadding = 12;
constexpr int legendGap = 8;

} // namespace

WeekTab::WeekTab(const ApplicationLook& look, const UsageModel::Calendar& calendar, QWidget* parent)
    : QWidget(parent),
      calendar_(calendar) {
    setObjectName(QStringLiteral("weekView"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    addWeek(look);
    addEmpty(look);
    column->addWidget(week_);
    column->addWidget(empty_, 1);
    column->addStretch();
    setContent({});
}

void WeekTab::addWeek(const ApplicationLook& look) {
    week_ = new QWidget;
    week_->setObjectName(QStringLiteral("weekBody"));
    auto* column = new QVBoxLayout(week_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(blockGap);
    header_ = new WeekHeader(look);
    banner_ = new GaugeBanner(look);
    column->addWidget(header_);
    column->addWidget(banner_);
    addChartPanel(*column, look);
    tiles_ = new TileRow(look);
    whatIf_ = new WhatIfPanel(look);
    log_ = new SessionLog(look);
    column->addWidget(tiles_);
    column->addWidget(whatIf_);
    column->addWidget(log_);
    connect(banner_, &GaugeBanner::openSettings, this, &WeekTab::openSettings);
    connect(whatIf_, &WhatIfPanel::chosen, this, &WeekTab::chosen);
}

void WeekTab::addChartPanel(QVBoxLayout& column, const ApplicationLook& look) {
    auto* panel = new PanelBox(look);
    panel->setObjectName(QStringLiteral("chartPanel"));
    auto* inside = new QVBoxLayout(panel);
    inside->setContentsMargins(chartPadding, chartPadding, chartPadding, chartPadding);
    inside->setSpacing(legendGap);
    chart_ = new WeekChartView(look, calendar_);
    chart_->setFixedHeight(static_cast<int>(WeekChart::chartHeight));
    legend_ = new ChartLegend(look);
    inside->addWidget(chart_);
    inside->addWidget(legend_);
    column.addWidget(panel);
}

void WeekTab::addEmpty(const ApplicationLook& look) {
    empty_ = new QWidget;
    empty_->setObjectName(QStringLiteral("weekEmpty"));
    emptyText_ = new HUDLabel(look, Headings::detail(), Overflow::wrap);
    emptyText_->setObjectName(QStringLiteral("weekEmptyText"));
    emptyText_->setAlignment(Qt::AlignHCenter);
    auto* column = new QVBoxLayout(empty_);
    column->setContentsMargins(0, 96, 0, 96);
    column->setSpacing(blockGap);
    column->addStretch();
    column->addWidget(new GlyphLabel(look, {.glyph = Glyph::gauge, .size = 34, .color = &Palette::dim}), 0,
                      Qt::AlignHCenter);
    column->addWidget(emptyText_);
    column->addStretch();
}

void WeekTab::setContent(const Content& content) {
    week_->setVisible(content.series != nullptr);
    empty_->setVisible(content.series == nullptr);
    emptyText_->setText(shown(DashboardTexts::emptyWeekText(content.readiness)));
    if (content.series != nullptr) setWeek(content);
}

void WeekTab::setWeek(const Content& content) {
    const UsageModel::WeekSeries& series = *content.series;
    const WeekCopy::Content words = WeekCopy::content(series, calendar_);
    header_->setWords({.headline = words.headline,
                       .detail = words.detail,
                       .state = {.isSample = content.isSample, .scale = series.scale}});
    banner_->setVisible(DashboardTexts::showsBanner(series.scale));
    const auto factor = WhatIfTexts::chartFactor(series, content.choice);
    chart_->setWeek(series, factor);
    legend_->setLegend(DashboardTexts::legend(series, factor));
    tiles_->setTiles(words.tiles);
    const auto panel = WhatIfTexts::panel(series, content.choice, calendar_);
    whatIf_->setVisible(panel.has_value());
    if (panel) whatIf_->setPanel(*panel, content.choice);
    log_->setVisible(!series.sessions.empty());
    log_->setSessions(series, calendar_);
}

} // namespace HarrowlaneApp
