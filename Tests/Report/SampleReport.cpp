#include "Report/SampleReport.h"

namespace Report {

using UsageModel::ModelClass;
using UsageModel::UsageEvent;

UsageEvent turn(double secondsBeforeNow, ModelClass modelClass, Tokens tokens) {
    return {
        .ts = sampleNow - secondsBeforeNow,
        .modelClass = modelClass,
        .input = tokens.input,
        .output = tokens.output,
        .cacheCreation = tokens.cacheCreation,
        .cacheRead = tokens.cacheRead,
    };
}

std::vector<UsageEvent> sampleTurns() {
    constexpr double hour = 3600;
    constexpr double day = 86400;
    return {
        turn(10 * day, ModelClass::haiku, {.input = 1'000'000}),
        turn(day, ModelClass::opus, {.input = 12'345'678, .output = 9'999}),
        turn(hour, ModelClass::opus, {.input = 1, .output = 2, .cacheCreation = 3, .cacheRead = 4}),
    };
}

UsageModel::GaugeReading sampleGauge() {
    const double now = sampleNow.secondsSince1970;
    return {
        .capturedAt = now - 240,
        .source = "oauth",
        .windows = {{"five_hour", {.usedPercentage = 42, .resetsAt = now + 7980}},
                    {"seven_day", {.usedPercentage = 91.5}},
                    {"seven_day_opus", {.resetsAt = now + 60}}},
    };
}

UsageReport sampleReport() {
    const std::vector<UsageEvent> turns = sampleTurns();
    return makeReport({
        .events = turns,
        .gauge = sampleGauge(),
        .now = sampleNow,
        .calendar = UsageModel::Calendar::utc(),
        .logFiles = 2,
        .helper = UsageGauge::StatusLineInstaller::State::installed,
    });
}

} // namespace Report
