#pragma once

#include <array>
#include <string_view>

#include "UsageModel/EnumText.h"

namespace HarrowlaneApp {

/// Which of the first-run states the views show.
enum class Readiness { warmingUp, noLogsFound, noUsageYet, ready };

} // namespace HarrowlaneApp

template <>
struct UsageModel::EnumNames<HarrowlaneApp::Readiness> {
    static constexpr std::array<std::string_view, 4> names{"warmingUp", "noLogsFound", "noUsageYet", "ready"};
};
