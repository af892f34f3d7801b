#pragma once

#include <string>

#include <QImage>

#include "UsageModel/UsageSnapshot.h"

/// The job that writes every view as a PNG file. Needs a QApplication, and no display.
namespace HarrowlaneApp::DumpUI {

/// The snapshot with a calm week: its series, but for the typical week, lowered by 0.22 of the cap, though not below 0.
[[nodiscard]] UsageModel::UsageSnapshot comfortable(UsageModel::UsageSnapshot snapshot);

/// Pace rails with their burn rates and notes, from a window hardly begun to one far over its pace.
[[nodiscard]] QImage paceStrip();

/// Writes the pictures into a folder that is made where it is missing, and prints a line a file. Never fails.
void render(const std::string& folder);

} // namespace HarrowlaneApp::DumpUI
