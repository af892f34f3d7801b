#pragma once

#include "HarrowlaneApp/Platform/StatusItem.h"
#include "UsageModel/UsageSnapshot.h"

namespace HarrowlaneApp {

/// The lines of the status item's menu, by what the item tells when one is chosen.
namespace MenuEntries {

inline constexpr const char* open = "open";
inline constexpr const char* refresh = "refresh";
inline constexpr const char* settings = "settings";
inline constexpr const char* quit = "quit";

} // namespace MenuEntries

/// What the desktop's panel shows of a snapshot: the meter, wide and square, and the verdict as its tooltip. Needs a
/// QGuiApplication.
[[nodiscard]] StatusItemFace statusFace(const UsageModel::UsageSnapshot& snapshot);

} // namespace HarrowlaneApp
