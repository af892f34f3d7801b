#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"
#include "UsageIngest/FaultPoints.h"
#include "UsageIngest/TurnLog.h"

namespace {

TEST(OpenCount, SyncWithNothingNewOpensNoLog) {
    const TestSupport::TemporaryFolder folder;
    for (long i = 1; i <= 50; ++i) {
        TestSupport::writeFile(folder / ("logs/" + std::to_string(i) + ".jsonl"), TurnLog::line(i));
    }
    UsageIngest::IngestStore store(folder / "usage.db");
    const long openedBefore = FaultPoints::logsOpened();
    TurnLog::syncAll(store, folder / "logs");
    const long opened = FaultPoints::logsOpened();
    EXPECT_EQ(opened, openedBefore + 50);

    TurnLog::syncAll(store, folder / "logs");
    EXPECT_EQ(FaultPoints::logsOpened(), opened);

    TestSupport::appendFile(folder / "logs/7.jsonl", TurnLog::line(51));
    TurnLog::syncAll(store, folder / "logs");
    EXPECT_EQ(FaultPoints::logsOpened(), opened + 1);
}

} // namespace
