#pragma once

#include <vector>

#include "HarrowlaneApp/Alerts/Banner.h"
#include "HarrowlaneApp/Alerts/NotificationService.h"
#include "HarrowlaneApp/Alerts/PersistedState.h"
#include "UsageModel/UsageSnapshot.h"

namespace HarrowlaneApp {

/// What the user has set about alerts.
struct AlertSettings {
    /// While this is off the levels do not advance either: what was reached meanwhile is told when it goes on.
    bool thresholdAlertsEnabled = true;
};

/// Whether the process is a bundled program. The notification centre serves no other.
enum class Bundle { present, absent };

struct AlertQuestion {
    PersistedState state;
    const UsageModel::UsageSnapshot& snapshot;
    AlertSettings settings;
    Bundle bundle = Bundle::absent;
    AuthorizationStatus authorization = AuthorizationStatus::notDetermined;
};

struct AlertDecision {
    PersistedState state;
    /// To be posted in this order, after the state has been saved.
    std::vector<Banner> banners;
};

/// Runs both alert machines on a new snapshot. The state moves on whether or not banners may be posted: what could not
/// be shown counts as told. Pure.
[[nodiscard]] AlertDecision decide(AlertQuestion question);

} // namespace HarrowlaneApp
