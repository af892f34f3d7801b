#include "Shim/StatusText.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "UsageModel/EnumText.h"
#include "UsageModel/WindowKind.h"

namespace Shim {

namespace {

using UsageModel::WindowKind;

constexpr double greatestShown = 9999.0; // a status line is short, whatever the document says

std::string_view shortName(WindowKind window) {
    switch (window) {
    case WindowKind::session5h: return "5h";
    case WindowKind::weeklyAll: return "7d";
    case WindowKind::weeklyOpus: return "Opus 7d";
    }
    return "";
}

std::string percentText(double percentage) {
    return std::to_string(std::lround(std::clamp(percentage, -greatestShown, greatestShown))) + "%";
}

} // namespace

std::string statusText(const UsageModel::GaugeReading& reading) {
    std::string text;
    for (const WindowKind window : UsageModel::allCases<WindowKind>) {
        const auto found = reading.windows.find(std::string(UsageModel::statusLineKey(window)));
        if (found == reading.windows.end() || !found->second.usedPercentage) continue;
        if (!text.empty()) text += " · ";
        text += std::string(shortName(window)) + " " + percentText(*found->second.usedPercentage);
    }
    return text;
}

} // namespace Shim
