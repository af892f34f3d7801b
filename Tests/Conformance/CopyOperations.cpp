#include "Conformance/Operations.h"

#include "HarrowlaneApp/Copy/CalendarGrid.h"
#include "HarrowlaneApp/Copy/ChartTooltip.h"
#include "HarrowlaneApp/Copy/ModelsTexts.h"
#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Copy/Pace.h"
#include "HarrowlaneApp/Copy/SessionDetail.h"
#include "HarrowlaneApp/Copy/WeekChartGeometry.h"
#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "HarrowlaneApp/Copy/WhatIfTexts.h"

namespace Conformance {

namespace {

using namespace HarrowlaneApp;
using namespace UsageModel;
using nlohmann::json;

Calendar calendar(const Arguments& args) {
    const auto zone = args.get<std::string>("timeZone");
    const auto calendar = Calendar::inZone(zone);
    if (!calendar) throw UsageModel::Json::Error("no zone " + zone);
    return *calendar;
}

WeekSeries series(const Arguments& args) {
    return args.get<WeekSeries>("series");
}

SessionBar bar(const Arguments& args) {
    return args.get<SessionBar>("bar");
}

Pace::Shares shares(const Arguments& args) {
    return {.tokensUsed = args.get<double>("tokensUsed"), .timeUsed = args.get<double>("timeUsed")};
}

void addWeekCopy(Operations& to) {
    to["WeekCopy.standing"] = [](const Arguments& args) { return result(WeekCopy::standing(series(args))); };
    to["WeekCopy.content"] = [](const Arguments& args) {
        return result(WeekCopy::content(series(args), calendar(args)));
    };
    to["WeekCopy.compact"] = [](const Arguments& args) {
        return result(WeekCopy::compact(series(args), calendar(args)));
    };
}

void addPopover(Operations& to) {
    to["NowView.clockString"] = [](const Arguments& args) {
        return NowTexts::clockString({.at = args.find<Date>("resetsAt"), .isWeekly = args.get<bool>("isWeekly")},
                                     calendar(args));
    };
    to["NowView.timeLeft"] = [](const Arguments& args) {
        return NowTexts::timeLeft(args.find<Date>("resetsAt"), args.get<Date>("now"));
    };
    to["Pace.status"] = [](const Arguments& args) { return result(Pace::status(shares(args))); };
    to["Pace.explanation"] = [](const Arguments& args) { return Pace::explanation(shares(args)); };
}

json rectForm(const Rect& rect) {
    return json::array({rect.x, rect.y, rect.width, rect.height});
}

json geometryForm(const Arguments& args) {
    const WeekChart::Geometry geometry =
        WeekChart::geometry(series(args), {.width = args.get<double>("width"), .height = args.get<double>("height")});
    const auto value = args.get<double>("value");
    return {{"topPanel", rectForm(geometry.top.panel)},
            {"bottomPanel", rectForm(geometry.bottom.panel)},
            {"x", geometry.x(args.get<Date>("date"))},
            {"topY", geometry.topY(value)},
            {"botY", geometry.botY(value)}};
}

void addChart(Operations& to) {
    to["WeekChart.accessibilitySummary"] = [](const Arguments& args) {
        return WeekChart::accessibilitySummary(series(args), calendar(args));
    };
    to["WeekChart.barAxisTop"] = [](const Arguments& args) {
        return result(WeekChart::barAxisTop(args.get<std::vector<SessionBar>>("sessions")));
    };
    to["WeekChart.geometry"] = geometryForm;
    to["ChartTooltip.format"] = [](const Arguments& args) {
        return ChartTooltip::format(args.get<double>("value"), series(args));
    };
    to["SessionBar.capText"] = [](const Arguments& args) { return result(SessionDetail::capText(bar(args))); };
}

template <typename Value>
json chipForms(const std::vector<WhatIfTexts::Chip<Value>>& chips) {
    json forms = json::array();
    for (const auto& chip : chips) {
        forms.push_back({{"label", chip.label},
                         {"isNow", chip.isNow},
                         {"isSelected", chip.isSelected},
                         {"costsMore", chip.costsMore},
                         {"tooltip", chip.tooltip}});
    }
    return forms;
}

json panelForm(const WhatIfTexts::Panel& panel) {
    json models = json::array();
    for (const auto& chip : panel.models) models.push_back(text(chip.value));
    json form{{"models", models},
              {"blendedFamilyCost", panel.blendedFamilyCost},
              {"factor", panel.factor},
              {"changed", panel.isChanged},
              {"effortNote", panel.effortNote},
              {"modelChips", chipForms(panel.models)},
              {"effortChips", chipForms(panel.efforts)},
              {"resultTexts", panel.result.texts},
              {"isEstimate", panel.result.isEstimate}};
    if (panel.dominantFamily) form["dominantFamily"] = text(*panel.dominantFamily);
    if (panel.modelNote) form["modelNote"] = *panel.modelNote;
    if (panel.result.signal) form["resultColor"] = text(*panel.result.signal);
    return form;
}

void addWhatIf(Operations& to) {
    to["WhatIfPanel.texts"] = [](const Arguments& args) {
        const auto panel = WhatIfTexts::panel(
            series(args),
            {.model = args.find<ModelClass>("targetModel"), .effort = args.find<EffortLevel>("targetEffort")},
            calendar(args));
        return panel ? panelForm(*panel) : json();
    };
}

json columnForms(const std::vector<CalendarGrid::Column>& columns) {
    json forms = json::array();
    for (const auto& column : columns) forms.push_back({{"id", column.id}, {"levels", column.levels}});
    return forms;
}

void addDashboard(Operations& to) {
    to["SessionDetail.weekCost"] = [](const Arguments& args) {
        return SessionDetail::weekCost(bar(args), series(args));
    };
    to["SessionDetail.plainText"] = [](const Arguments& args) {
        return SessionDetail::plainText(bar(args), series(args), calendar(args));
    };
    to["ModelsView.note"] = [](const Arguments& args) {
        return result(ModelsTexts::note(args.get<ModelBreakdown>("models")));
    };
    to["CalendarView.columns"] = [](const Arguments& args) {
        return columnForms(CalendarGrid::columns(args.get<std::vector<DayCell>>("days"), calendar(args)));
    };
}

} // namespace

void addCopyOperations(Operations& operations) {
    addWeekCopy(operations);
    addPopover(operations);
    addChart(operations);
    addWhatIf(operations);
    addDashboard(operations);
}

} // namespace Conformance
