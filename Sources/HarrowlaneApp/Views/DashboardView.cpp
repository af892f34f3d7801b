#include "HarrowlaneApp/Views/DashboardView.h"

#include <algorithm>
#include <utility>

#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "HarrowlaneApp/Views/HUDScrollArea.h"

namespace HarrowlaneApp {

namespace {

constexpr int sidePadding = 20;
constexpr int bottomPadding = 20;
constexpr int tabsTop = 14;
// Between tabs and page; half of it scrolls with the page, so that nothing is cut close to the tabs.
constexpr int tabsGap = 16;
constexpr int fixedGap = 4;
// Wider, figures and their names drift too far apart to be read as one.
constexpr int widestContent = 1320;

} // namespace

DashboardView::DashboardView(const ApplicationLook& look, Surroundings surroundings, QWidget* parent)
    : GroundView(look, parent),
      given_(surroundings),
      tabs_(new DashboardTabs(look)),
      pages_(new QStackedWidget),
      week_(new WeekTab(look, given_.calendar)),
      models_(new ModelsView(look)),
      history_(new CalendarView(look)) {
    setObjectName(QStringLiteral("dashboardView"));
    setMinimumSize(leastSize);
    resize(firstSize);
    week_->setMaximumWidth(widestContent);
    models_->setMaximumWidth(widestContent);
    pages_->addWidget(page(week_));
    pages_->addWidget(page(models_));
    pages_->addWidget(page(history_));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, tabsTop, 0, 0);
    column->setSpacing(fixedGap);
    column->addWidget(tabs_, 0, Qt::AlignHCenter);
    column->addWidget(pages_, 1);

    connect(tabs_, &DashboardTabs::currentChanged, this, [this](DashboardTabs::Tab tab) {
        freshen();
        pages_->setCurrentIndex(static_cast<int>(tab));
    });
    connect(week_, &WeekTab::chosen, this, &DashboardView::setChoice);
    connect(week_, &WeekTab::openSettings, this, &DashboardView::openSettings);
    connect(&given_.store, &UsageStore::snapshotChanged, this, &DashboardView::follow);
    connect(&given_.store, &UsageStore::sampleSnapshotChanged, this, &DashboardView::follow);
    connect(&given_.store, &UsageStore::readinessChanged, this, &DashboardView::follow);
    freshen();
}

/// The content in the middle of what scrolls.
QWidget* DashboardView::page(QWidget* content) {
    auto* sheet = new QWidget;
    auto* row = new QHBoxLayout(sheet);
    row->setContentsMargins(sidePadding, tabsGap - fixedGap, sidePadding - HUDScrollBar::thickness, bottomPadding);
    // The room beside content that takes no more is shared between both sides.
    constexpr int all = 1000;
    row->addStretch();
    row->addWidget(content, all);
    row->addStretch();
    auto* area = new HUDScrollArea(applicationLook(), HUDScrollArea::Way::down);
    area->setContent(sheet);
    return area;
}

const UsageModel::UsageSnapshot& DashboardView::snapshot() const {
    const auto& sample = given_.store.sampleSnapshot();
    return sample ? *sample : given_.store.snapshot();
}

void DashboardView::follow() {
    isStale_.fill(true);
    if (isVisible()) freshen();
}

/// Nobody looks at the other tabs, nor at any while the window is hidden: each is brought up to date when it is shown.
void DashboardView::freshen() {
    const DashboardTabs::Tab tab = tabs_->current();
    if (!std::exchange(isStale_.at(static_cast<std::size_t>(tab)), false)) return;
    switch (tab) {
    case DashboardTabs::Tab::week: return showWeek();
    case DashboardTabs::Tab::models: return models_->setModels(snapshot().models);
    case DashboardTabs::Tab::history: return history_->setDays(snapshot().calendar, given_.calendar);
    }
}

void DashboardView::showEvent(QShowEvent* event) {
    freshen();
    GroundView::showEvent(event);
}

void DashboardView::showWeek() {
    const auto& series = snapshot().weekSeries;
    week_->setContent({.series = series ? &*series : nullptr,
                       .readiness = given_.store.readiness(),
                       .isSample = given_.store.isShowingSample(),
                       .choice = choice_});
}

void DashboardView::setChoice(const UsageModel::ModelAndEffort& choice) {
    choice_ = choice;
    showWeek();
}

} // namespace HarrowlaneApp
