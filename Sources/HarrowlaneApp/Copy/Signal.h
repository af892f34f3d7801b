#pragma once

#include <array>
#include <string_view>

#include "UsageModel/EnumText.h"

namespace HarrowlaneApp {

/// The signal colours, by what they tell.
enum class Signal { good, warn, crit };

} // namespace HarrowlaneApp

template <>
struct UsageModel::EnumNames<HarrowlaneApp::Signal> {
    static constexpr std::array<std::string_view, 3> names{"good", "warn", "crit"};
};
