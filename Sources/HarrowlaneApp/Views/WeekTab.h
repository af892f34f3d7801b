#pragma once

#include "HarrowlaneApp/Copy/Readiness.h"
#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "HarrowlaneApp/Views/ChartLegend.h"
#include "HarrowlaneApp/Views/HUDButton.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/SessionLog.h"
#include "HarrowlaneApp/Views/TileRow.h"
#include "HarrowlaneApp/Views/WhatIfPanel.h"

class QStackedLayout;
class QVBoxLayout;

namespace HarrowlaneApp {

class GaugeBanner;
class WeekChartView;
class WeekHeader;

/// The dashboard's first tab: the week in words, as a chart, in figures, and session by session.
class WeekTab : public QWidget {
    Q_OBJECT

public:
    /// What the tab shows; kept by nobody.
    struct Content {
        /// Absent where there is not enough to draw.
        const UsageModel::WeekSeries* series = nullptr;
        Readiness readiness = Readiness::ready;
        bool isSample = false;
        UsageModel::ModelAndEffort choice;
    };

    WeekTab(const ApplicationLook& look, const UsageModel::Calendar& calendar, QWidget* parent = nullptr);

    void setContent(const Content& content);

Q_SIGNALS:
    void chosen(const UsageModel::ModelAndEffort& choice);
    void openSettings();

private:
    void addWeek(const ApplicationLook& look);
    void addEmpty(const ApplicationLook& look);
    void addChartPanel(QVBoxLayout& column, const ApplicationLook& look);
    void setWeek(const Content& content);

    UsageModel::Calendar calendar_;
    QWidget* week_ = nullptr;
    QWidget* empty_ = nullptr;
    HUDLabel* emptyText_ = nullptr;
    WeekHeader* header_ = nullptr;
    GaugeBanner* banner_ = nullptr;
    WeekChartView* chart_ = nullptr;
    ChartLegend* legend_ = nullptr;
    TileRow* tiles_ = nullptr;
    WhatIfPanel* whatIf_ = nullptr;
    SessionLog* log_ = nullptr;
};

} // namespace HarrowlaneApp
