#include "Shim/StatusText.h"

#include <gtest/gtest.h>

namespace {

using Shim::statusText;
using UsageModel::GaugeReading;

TEST(StatusText, TellsTheWindowsThatReportInTheirOrder) {
    const GaugeReading reading{.capturedAt = 0,
                               .source = "statusLine",
                               .windows = {{"seven_day_opus", {.usedPercentage = 7.5, .resetsAt = {}}},
                                           {"seven_day", {.usedPercentage = 18.4, .resetsAt = {}}},
                                           {"five_hour", {.usedPercentage = 42.0, .resetsAt = {}}}}};
    EXPECT_EQ(statusText(reading), "5h 42% · 7d 18% · Opus 7d 8%");
}

TEST(StatusText, LeavesOutWhatHasNoPercentageOrIsNoWindow) {
    const GaugeReading reading{.capturedAt = 0,
                               .source = "",
                               .windows = {{"five_hour", {.usedPercentage = {}, .resetsAt = 5.0}},
                                           {"monthly", {.usedPercentage = 3.0, .resetsAt = {}}},
                                           {"seven_day", {.usedPercentage = 0.0, .resetsAt = {}}}}};
    EXPECT_EQ(statusText(reading), "7d 0%");
    EXPECT_EQ(statusText({}), "");
}

TEST(StatusText, StaysShortWhateverTheDocumentSays) {
    const auto of = [](double percentage) {
        return statusText({.capturedAt = 0,
                           .source = "",
                           .windows = {{"five_hour", {.usedPercentage = percentage, .resetsAt = {}}}}});
    };
    EXPECT_EQ(of(1e300), "5h 9999%");
    EXPECT_EQ(of(-1e300), "5h -9999%");
    EXPECT_EQ(of(99.5), "5h 100%");
}

} // namespace
