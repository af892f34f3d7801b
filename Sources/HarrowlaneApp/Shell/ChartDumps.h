#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "UsageModel/AppPaths.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/UsageSnapshot.h"

/// The jobs that write the week as PNG files, in light and in dark. Each prints a line a file; none of them fails. Need
/// a QApplication, and no display.
namespace HarrowlaneApp::DumpChart {

/// Every scenario, into a folder that is made where it is missing.
void render(const std::string& folder);

/// What one of the pictures shows.
struct Shown {
    const UsageModel::UsageSnapshot& snapshot;
    std::string_view name;
    const UsageModel::Calendar& calendar;
};

/// The week tab's content on a snapshot, once in each appearance: "week-over-light.png" and its like. Says so where the
/// snapshot has no week.
void render(const Shown& shown, const std::string& folder);

/// The user's own week as it is now: reads in what is new in the logs, as the program does. Prints
/// "live dump failed: " and why, and is absent, where that cannot be done. May block.
[[nodiscard]] std::optional<UsageModel::UsageSnapshot> liveSnapshot(const UsageModel::AppPaths& paths,
                                                                    const UsageModel::Calendar& calendar);

/// The current user's week as the scenario "live"; nothing where there is no snapshot of it.
void renderLive(const std::string& folder);

} // namespace HarrowlaneApp::DumpChart
