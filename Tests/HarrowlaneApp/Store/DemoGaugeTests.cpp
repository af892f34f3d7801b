#include "HarrowlaneApp/Store/DemoGauge.h"

#include <gtest/gtest.h>

namespace HarrowlaneApp {
namespace {

TEST(DemoGauge, ShowsAllThreeWindowsWellInUse) {
    const UsageModel::GaugeReading expected{
        .capturedAt = 1000,
        .source = "statusLine",
        .windows = {{"five_hour", {.usedPercentage = 34, .resetsAt = 10000}},
                    {"seven_day", {.usedPercentage = 58, .resetsAt = 260200}},
                    {"seven_day_opus", {.usedPercentage = 74, .resetsAt = 260200}}}};
    EXPECT_EQ(demoGauge(UsageModel::Date{1000}), expected);
}

} // namespace
} // namespace HarrowlaneApp
