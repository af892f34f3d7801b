#pragma once

#include <array>

#include "UsageModel/UsageSnapshot.h"

/// The week of the sample: its sessions, and the curves through them.
namespace HarrowlaneApp::PreviewData {

inline constexpr double sessionSeconds = 18000.0;
inline constexpr double weekSeconds = 604800.0;
/// How long the week has been going on.
inline constexpr double weekGoneSeconds = 249300.0;
inline constexpr double weekUsed = 0.577;
inline constexpr double weekLanding = 1.053;
inline constexpr double typicalTotal = 0.86;
/// Log units of a full week.
inline constexpr double weekCapInLogUnits = 2.4;

/// A session of the sample.
struct Session {
    double secondsBack = 0.0;
    /// Of the weekly limit.
    double cost = 0.0;
    double fill = 0.0;
    UsageModel::SessionCapBasis basis = UsageModel::SessionCapBasis::learnedScale;
    /// The parts of Opus, Fable, Sonnet and Haiku.
    std::array<double, 4> mix{};
};

/// The oldest first; the last one runs.
[[nodiscard]] const std::array<Session, 6>& sessions();
[[nodiscard]] UsageModel::EnumMap<UsageModel::ModelClass, double> mixOf(const Session& session);

[[nodiscard]] UsageModel::WeekSeries week(UsageModel::Date now);

} // namespace HarrowlaneApp::PreviewData
