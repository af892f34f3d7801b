#pragma once

#include <optional>

#include "HarrowlaneApp/Platform/StatusItem.h"
#include "UsageModel/UsageSnapshot.h"

namespace HarrowlaneApp {

/// The lines of the status item's menu, by what the item tells when one is chosen.
namespace MenuEntries {

inline constexpr const char* open = "open";
inline constexpr const char* refresh = "refresh";
inline constexpr const char* settings = "settings";
inline constexpr const char* startAtLogin = "start-at-login";
inline constexpr const char* quit = "quit";

} // namespace MenuEntries

struct StatusFaceQuestion {
    const UsageModel::UsageSnapshot& snapshot;
    /// Whether the desktop starts the program at login; absent where that cannot be decided: the menu leaves it out.
    std::optional<bool> startsAtLogin;
};

/// What the desktop's panel shows: the meter, wide and square, and the verdict as its tooltip. Needs a QGuiApplication.
[[nodiscard]] StatusItemFace statusFace(const StatusFaceQuestion& question);

} // namespace HarrowlaneApp
