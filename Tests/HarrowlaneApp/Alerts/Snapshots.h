#pragma once

#include <vector>

#include "UsageModel/UsageSnapshot.h"

namespace HarrowlaneApp {

/// A moment of 2026, and the snapshots that alerts are decided on.
inline constexpr UsageModel::Date moment{1772323200.75};

/// All is well.
inline UsageModel::UsageSnapshot calm(UsageModel::Date now = moment) {
    UsageModel::UsageSnapshot snapshot;
    snapshot.generatedAt = now;
    snapshot.verdict = {.headline = "On pace", .subtext = "Nothing to do"};
    return snapshot;
}

/// The limit runs out before its reset, nobody knows when.
inline UsageModel::UsageSnapshot breaching(UsageModel::Date now = moment) {
    UsageModel::UsageSnapshot snapshot = calm(now);
    snapshot.verdict = {
        .headline = "Weekly runs out Tuesday", .severity = UsageModel::Severity::amber, .subtext = "A day early"};
    snapshot.bindingProjection.willBreachBeforeReset = true;
    return snapshot;
}

/// So it does, and soon.
inline UsageModel::UsageSnapshot red(UsageModel::Date now = moment) {
    UsageModel::UsageSnapshot snapshot = breaching(now);
    snapshot.verdict.severity = UsageModel::Severity::red;
    return snapshot;
}

/// An official reading.
inline UsageModel::WindowState meter(UsageModel::WindowKind kind, double used) {
    return {.kind = kind,
            .used = used,
            .windowStart = moment - 3600.0,
            .resetsAt = moment + 7200.0,
            .confidence = {.anchored = true}};
}

inline UsageModel::UsageSnapshot metered(std::vector<UsageModel::WindowState> meters,
                                         UsageModel::UsageSnapshot snapshot = calm()) {
    snapshot.meters = std::move(meters);
    return snapshot;
}

} // namespace HarrowlaneApp
