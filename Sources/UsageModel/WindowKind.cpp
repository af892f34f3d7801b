#include "UsageModel/WindowKind.h"

namespace UsageModel {

namespace {

constexpr double sessionSeconds = 18000.0;
constexpr double weekSeconds = 604800.0;

} // namespace

std::string_view statusLineKey(WindowKind kind) {
    constexpr std::array<std::string_view, 3> keys{"five_hour", "seven_day", "seven_day_opus"};
    return keys[caseIndex(kind)];
}

std::string_view displayName(WindowKind kind) {
    constexpr std::array<std::string_view, 3> names{"Session · 5h", "Weekly · all", "Opus · weekly"};
    return names[caseIndex(kind)];
}

double nominalDuration(WindowKind kind) {
    return kind == WindowKind::session5h ? sessionSeconds : weekSeconds;
}

} // namespace UsageModel
