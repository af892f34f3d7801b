#pragma once

#include <array>
#include <string_view>

#include "UsageModel/EnumText.h"

namespace HarrowlaneApp {

/// How far the program has come towards something to show.
enum class Readiness { warmingUp, noLogsFound, noUsageYet, ready };

/// Whether the status line helper is in place, as the user is told.
enum class HelperState { notInstalled, installed, conflict };

} // namespace HarrowlaneApp

template <>
struct UsageModel::EnumNames<HarrowlaneApp::Readiness> {
    static constexpr std::array<std::string_view, 4> names{"warmingUp", "noLogsFound", "noUsageYet", "ready"};
};

template <>
struct UsageModel::EnumNames<HarrowlaneApp::HelperState> {
    static constexpr std::array<std::string_view, 3> names{"notInstalled", "installed", "conflict"};
};
