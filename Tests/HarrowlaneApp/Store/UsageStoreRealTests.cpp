#include <gtest/gtest.h>

#include <QCoreApplication>

#include "HarrowlaneApp/Alerts/FakeNotificationService.h"
#include "HarrowlaneApp/Store/UsageStore.h"
#include "HarrowlaneApp/Store/UsageStoreFakes.h"
#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {
namespace {

using UsageModel::AppPaths;

/// A turn as the logs have it.
std::string line(int index, int outputTokens) {
    return R"({"type":"assistant","timestamp":"2026-03-01T00:00:)" + std::to_string(10 + index) +
           R"(.000Z","sessionId":"s1","requestId":"r)" + std::to_string(index) + R"(","message":{"id":"m)" +
           std::to_string(index) + R"(","model":"claude-opus-4-1","usage":{"input_tokens":1,"output_tokens":)" +
           std::to_string(outputTokens) + "}}}\n";
}

TEST(UsageStoreOnARealHome, FollowsGrowingLogsAndTheGauge) {
    const TestSupport::TemporaryFolder home;
    FakeNotificationService service;
    const AppPaths paths(home.path());
    const auto clock = std::make_shared<HandTurnedClock>(UsageModel::Date{1772323300});
    UsageStore store(
        {.paths = paths, .calendar = UsageModel::Calendar::utc(), .clock = clock, .notifications = service});
    ASSERT_TRUE(becomes([&] { return store.readiness() == Readiness::noLogsFound; }));
    EXPECT_TRUE(std::filesystem::exists(paths.database()));

    const auto log = paths.sessionLogs() / "project" / "s1.jsonl";
    TestSupport::writeFile(log, line(1, 1000));
    ASSERT_TRUE(becomes([&] { return clock->sleepers() == 1; }));
    clock->turn(30.0);
    ASSERT_TRUE(becomes([&] { return store.readiness() == Readiness::ready; }));
    ASSERT_TRUE(becomes([&] { return store.snapshot().live.turns == 1; }));

    TestSupport::appendFile(log, line(2, 2000));
    TestSupport::writeFile(paths.gaugeFile(),
                           R"({"capturedAt":1772323290,"source":"statusline","windows":{"five_hour":)"
                           R"({"usedPercentage":42,"resetsAt":1772330000}}})");
    ASSERT_TRUE(becomes([&] { return store.snapshot().live.turns == 2 && store.snapshot().meters.size() == 1; }));
    EXPECT_NEAR(store.snapshot().meters[0].used, 0.42, 1e-9);
    EXPECT_EQ(store.lastError(), std::nullopt);
}

TEST(UsageStoreOnARealHome, ALockedHomeTellsAndRecovers) {
    const TestSupport::TemporaryFolder home;
    FakeNotificationService service;
    const AppPaths paths(home.path());
    TestSupport::writeFile(home / "Library", "a file where a folder should be");
    const auto clock = std::make_shared<HandTurnedClock>(UsageModel::Date{1772323300});
    UsageStore store(
        {.paths = paths, .calendar = UsageModel::Calendar::utc(), .clock = clock, .notifications = service});
    ASSERT_TRUE(becomes([&] { return store.lastError().has_value(); }));
    std::filesystem::remove(home / "Library");
    store.refreshNow();
    ASSERT_TRUE(becomes([&] { return store.readiness() == Readiness::noLogsFound; }));
    ASSERT_TRUE(becomes([&] { return !store.lastError().has_value(); }));
}

} // namespace
} // namespace HarrowlaneApp
