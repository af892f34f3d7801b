#include "HarrowlaneApp/Store/DemoGauge.h"

#include <string_view>

namespace HarrowlaneApp {

bool wantsDemoGauge(const char* text) {
    return text != nullptr && std::string_view(text) == "1";
}

UsageModel::GaugeReading demoGauge(UsageModel::Date now) {
    constexpr double twoAndAHalfHours = 9000.0;
    constexpr double threeDays = 259200.0;
    const double seconds = now.secondsSince1970;
    return {
        .capturedAt = seconds,
        .source = "statusLine",
        .windows = {{"five_hour", {.usedPercentage = 34.0, .resetsAt = seconds + twoAndAHalfHours}},
                    {"seven_day", {.usedPercentage = 58.0, .resetsAt = seconds + threeDays}},
                    {"seven_day_opus", {.usedPercentage = 74.0, .resetsAt = seconds + threeDays}}},
    };
}

} // namespace HarrowlaneApp
