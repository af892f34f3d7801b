#pragma once

#include <string>

#include "UsageEngine/NotificationFSM.h"
#include "UsageEngine/ThresholdAlerts.h"
#include "UsageModel/UsageSnapshot.h"

namespace HarrowlaneApp {

/// A notification to show.
struct Banner {
    enum class Urgency {
        /// With the usual sound.
        active,
        /// To be shown at once, with the sound of a critical one.
        timeSensitive,
    };

    /// A later banner of the same identifier takes its place.
    std::string identifier;
    std::string title;
    std::string body;
    Urgency urgency = Urgency::active;
    /// How long after it is posted it is to be shown.
    double delaySeconds = 0.0;

    friend bool operator==(const Banner&, const Banner&) = default;
};

/// The banners of the program.
namespace Banners {

/// The forecast's: its words are the verdict's.
[[nodiscard]] Banner pace(const UsageModel::UsageSnapshot& snapshot, UsageEngine::AlertLevel level);

/// A reached level's. Its identifier differs by the hour, so that the level's next occurrence has another.
[[nodiscard]] Banner level(const UsageEngine::ThresholdAlert& alert, UsageModel::Date now);

/// The one by which users see that banners come through.
[[nodiscard]] Banner test(UsageModel::Date now);

} // namespace Banners

/// Seconds or hours since 1970 as whole ones, fractions cut off.
[[nodiscard]] std::string wholeNumber(double value);

} // namespace HarrowlaneApp
