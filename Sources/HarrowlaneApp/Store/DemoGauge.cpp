#include "HarrowlaneApp/Store/DemoGauge.h"

#include "UsageModel/WindowKind.h"

namespace HarrowlaneApp {

UsageModel::GaugeReading demoGauge(UsageModel::Date now) {
    using enum UsageModel::WindowKind;
    const auto window = [&](double percent, double secondsToReset) {
        return UsageModel::GaugeWindow{.usedPercentage = percent, .resetsAt = (now + secondsToReset).secondsSince1970};
    };
    constexpr double sessionLeft = 9000.0;
    constexpr double weekLeft = 259200.0;
    return {
        .capturedAt = now.secondsSince1970,
        .source = "statusLine",
        .windows = {{std::string(statusLineKey(session5h)), window(34, sessionLeft)},
                    {std::string(statusLineKey(weeklyAll)), window(58, weekLeft)},
                    {std::string(statusLineKey(weeklyOpus)), window(74, weekLeft)}},
    };
}

} // namespace HarrowlaneApp
