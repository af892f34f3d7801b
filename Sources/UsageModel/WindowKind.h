#pragma once

#include <array>
#include <string_view>

#include "UsageModel/EnumText.h"

namespace UsageModel {

/// The three limit windows that the service imposes.
enum class WindowKind { session5h, weeklyAll, weeklyOpus };

template <>
struct EnumNames<WindowKind> {
    static constexpr std::array<std::string_view, 3> names{"session5h", "weeklyAll", "weeklyOpus"};
};

/// The window's name in the status line's JSON and in the gauge file.
[[nodiscard]] std::string_view statusLineKey(WindowKind kind);
[[nodiscard]] std::string_view displayName(WindowKind kind);
/// The window's length in seconds.
[[nodiscard]] double nominalDuration(WindowKind kind);

} // namespace UsageModel
