#include "HarrowlaneApp/Alerts/AlertDecision.h"

#include <utility>

namespace HarrowlaneApp {

namespace {

using UsageEngine::NotificationDecision;
using UsageEngine::ThresholdAlert;
using UsageModel::UsageSnapshot;

NotificationDecision paceDecision(const UsageSnapshot& snapshot, PersistedState& state) {
    const UsageModel::Projection& projection = snapshot.bindingProjection;
    std::optional<double> secondsToEmpty;
    if (projection.likelyEmpty) secondsToEmpty = *projection.likelyEmpty - snapshot.generatedAt;
    return state.fsm.update({.breaching = projection.willBreachBeforeReset,
                             .severity = snapshot.verdict.severity,
                             .secondsToEmpty = secondsToEmpty,
                             .now = snapshot.generatedAt});
}

std::vector<ThresholdAlert> levelAlerts(const UsageSnapshot& snapshot, PersistedState& state) {
    return state.thresholds.update(
        {.meters = snapshot.meters, .now = snapshot.generatedAt, .snoozedUntil = state.fsm.snoozeUntil});
}

} // namespace

AlertDecision decide(AlertQuestion question) {
    const UsageSnapshot& snapshot = question.snapshot;
    AlertDecision decision{.state = std::move(question.state)};
    const NotificationDecision pace = paceDecision(snapshot, decision.state);
    const std::vector<ThresholdAlert> reached = question.settings.thresholdAlertsEnabled
                                                    ? levelAlerts(snapshot, decision.state)
                                                    : std::vector<ThresholdAlert>();

    if (question.bundle == Bundle::absent || !allowsBanners(question.authorization)) return decision;
    if (pace.fireBanner) decision.banners.push_back(Banners::pace(snapshot, pace.level));
    for (const ThresholdAlert& alert : reached) decision.banners.push_back(Banners::level(alert, snapshot.generatedAt));
    return decision;
}

} // namespace HarrowlaneApp
