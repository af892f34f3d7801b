#pragma once

#include <array>

#include "HarrowlaneApp/Store/UsageStore.h"
#include "HarrowlaneApp/Views/CalendarView.h"
#include "HarrowlaneApp/Views/DashboardTabs.h"
#include "HarrowlaneApp/Views/GroundView.h"
#include "HarrowlaneApp/Views/ModelsView.h"
#include "HarrowlaneApp/Views/WeekTab.h"

class QStackedWidget;

namespace HarrowlaneApp {

/// The dashboard window's content: three tabs on the store's snapshot, or on its sample while there is one. The what-if
/// choice is kept here, whichever tab is in front.
class DashboardView : public GroundView {
    Q_OBJECT

public:
    static constexpr QSize firstSize{720, 620};
    static constexpr QSize leastSize{560, 480};

    struct Surroundings {
        /// Outlives the view.
        UsageStore& store;
        UsageModel::Calendar calendar = UsageModel::Calendar::local();
    };

    DashboardView(const ApplicationLook& look, Surroundings surroundings, QWidget* parent = nullptr);

    [[nodiscard]] const UsageModel::ModelAndEffort& choice() const { return choice_; }
    void setChoice(const UsageModel::ModelAndEffort& choice);
    [[nodiscard]] DashboardTabs& tabs() { return *tabs_; }

Q_SIGNALS:
    /// The user wants to see the settings.
    void openSettings();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* page(QWidget* content);
    [[nodiscard]] const UsageModel::UsageSnapshot& snapshot() const;
    void follow();
    void freshen();
    void showWeek();

    Surroundings given_;
    UsageModel::ModelAndEffort choice_;
    /// Which tabs show less than the store knows.
    std::array<bool, 3> isStale_{true, true, true};
    DashboardTabs* tabs_;
    QStackedWidget* pages_;
    WeekTab* week_;
    ModelsView* models_;
    CalendarView* history_;
};

} // namespace HarrowlaneApp
