#include "Conformance/Operations.h"

#include "UsageEngine/NotificationFSM.h"
#include "UsageEngine/ThresholdAlerts.h"

namespace Conformance {

namespace {

using namespace UsageEngine;
using namespace UsageModel;
using nlohmann::json;

NotificationFSM::Observation observation(const Arguments& step) {
    return {.breaching = step.get<bool>("breaching"),
            .severity = step.get<Severity>("severity"),
            .secondsToEmpty = step.find<double>("secondsToEmpty"),
            .now = step.get<Date>("now")};
}

json runMachine(const Arguments& args) {
    NotificationFSM machine{.sustainSeconds = args.get<double>("sustainSeconds"),
                            .criticalWithinSeconds = args.get<double>("criticalWithinSeconds")};
    json decisions = json::array();
    for (const json& form : args.raw("steps")) {
        const Arguments step(form);
        if (const auto until = step.find<Date>("snooze")) {
            machine.snooze(*until);
        } else {
            decisions.push_back(result(machine.update(observation(step))));
        }
    }
    return {{"decisions", decisions}, {"state", result(machine)}};
}

json alertForm(const ThresholdAlert& alert, Date now) {
    json form = result(alert);
    form["title"] = alert.title();
    form["body"] = alert.body(now);
    form["isCritical"] = alert.isCritical();
    return form;
}

json alertsOf(const Arguments& step, ThresholdAlerts& machine) {
    const auto meters = step.get<std::vector<WindowState>>("meters");
    const auto now = step.get<Date>("now");
    json alerts = json::array();
    for (const ThresholdAlert& alert :
         machine.update({.meters = meters, .now = now, .snoozedUntil = step.find<Date>("snoozedUntil")})) {
        alerts.push_back(alertForm(alert, now));
    }
    return alerts;
}

json runThresholds(const Arguments& args) {
    ThresholdAlerts machine{.thresholds = args.get<std::vector<std::int64_t>>("thresholds")};
    json alerts = json::array();
    for (const json& step : args.raw("steps")) alerts.push_back(alertsOf(Arguments(step), machine));
    return {{"alerts", alerts}, {"state", result(machine)}};
}

} // namespace

void addAlertOperations(Operations& operations) {
    operations["NotificationFSM.run"] = runMachine;
    operations["ThresholdAlerts.run"] = runThresholds;
}

} // namespace Conformance
