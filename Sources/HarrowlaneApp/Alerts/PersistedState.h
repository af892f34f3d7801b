#pragma once

#include "UsageEngine/NotificationFSM.h"
#include "UsageEngine/ThresholdAlerts.h"

namespace HarrowlaneApp {

/// What the alerts remember from one run of the program to the next, so that a restart repeats no banner.
struct PersistedState {
    UsageEngine::NotificationFSM fsm;
    UsageEngine::ThresholdAlerts thresholds;

    friend bool operator==(const PersistedState&, const PersistedState&) = default;
};

template <UsageModel::FieldsOf<PersistedState> Self>
void visitFields(Self& self, auto&& visit) {
    visit("fsm", self.fsm);
    visit("thresholds", self.thresholds);
}

} // namespace HarrowlaneApp
