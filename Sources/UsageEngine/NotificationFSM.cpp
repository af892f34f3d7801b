#include "UsageEngine/NotificationFSM.h"

#include <limits>

namespace UsageEngine {

namespace {

AlertLevel levelInBreach(const NotificationFSM& machine, const NotificationFSM::Observation& seen) {
    const double empty = seen.secondsToEmpty.value_or(std::numeric_limits<double>::max());
    if (machine.criticalWithinSeconds > empty || seen.severity == UsageModel::Severity::red)
        return AlertLevel::critical;
    return seen.now - *machine.overSince >= machine.sustainSeconds ? AlertLevel::headsUp : AlertLevel::advisory;
}

} // namespace

NotificationDecision NotificationFSM::update(const Observation& seen) {
    if (!seen.breaching) {
        level = AlertLevel::normal;
        overSince.reset();
        highestFired = AlertLevel::normal;
        return {};
    }
    if (!overSince) overSince = StoredInstant{seen.now};
    level = levelInBreach(*this, seen);
    if (level < AlertLevel::headsUp || highestFired >= level) return {.level = level};

    highestFired = level;
    const bool snoozed = snoozeUntil && seen.now < *snoozeUntil;
    return {.level = level, .fireBanner = !snoozed};
}

} // namespace UsageEngine
