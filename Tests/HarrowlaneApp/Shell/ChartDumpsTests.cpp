#include "HarrowlaneApp/Shell/ChartDumps.h"

#include <fstream>

#include <QImage>

#include <gmock/gmock.h>

#include "ProgramRun.h"
#include "Support/TemporaryFolder.h"

namespace {

using namespace HarrowlaneApp;
using ShellTests::Outcome;
using ShellTests::runProgramIn;
using testing::HasSubstr;
using testing::StartsWith;
using UsageModel::Calendar;

class ChartJobs : public testing::Test {
protected:
    TestSupport::TemporaryFolder folder;

    [[nodiscard]] QImage image(const std::string& name) const {
        return QImage(QString::fromStdString((folder.path() / name).string()));
    }
};

TEST_F(ChartJobs, WriteEveryScenarioInBothAppearances) {
    const Outcome outcome = runProgramIn(folder.path(), "--dump-chart deep/er");
    EXPECT_EQ(outcome.output, "wrote week-over-light.png\nwrote week-over-dark.png\n"
                              "wrote week-track-light.png\nwrote week-track-dark.png\n"
                              "wrote week-under-light.png\nwrote week-under-dark.png\n"
                              "wrote week-nogauge-light.png\nwrote week-nogauge-dark.png\n");
    EXPECT_EQ(outcome.status, 0);
    for (const char* name : {"over", "track", "under", "nogauge"}) {
        const QImage dark = image(std::string("deep/er/week-") + name + "-dark.png");
        const QImage light = image(std::string("deep/er/week-") + name + "-light.png");
        EXPECT_EQ(dark.width(), 1440) << name;
        EXPECT_EQ(dark.size(), light.size()) << name;
        EXPECT_LT(dark.pixelColor(4, 4).lightness(), 40) << name;
        EXPECT_GT(light.pixelColor(4, 4).lightness(), 200) << name;
    }
    EXPECT_NE(image("deep/er/week-over-dark.png"), image("deep/er/week-track-dark.png"));
}

TEST_F(ChartJobs, DrawTheSameAgain) {
    runProgramIn(folder.path(), "--dump-chart a");
    runProgramIn(folder.path(), "--dump-chart b");
    EXPECT_EQ(image("a/week-over-dark.png"), image("b/week-over-dark.png"));
}

TEST_F(ChartJobs, FailFileByFileWhereTheFolderCannotBeMade) {
    std::ofstream(folder.path() / "taken") << "a file";
    const Outcome outcome = runProgramIn(folder.path(), "--dump-chart taken");
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 8);
    EXPECT_THAT(outcome.output, StartsWith("could not write week-over-light.png\n"));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(ChartJobs, DrawTheUsersOwnWeekAlsoWhereThereIsNothingYet) {
    const Outcome outcome = runProgramIn(folder.path(), "--dump-chart-live out");
    EXPECT_EQ(outcome.output, "wrote week-live-light.png\nwrote week-live-dark.png\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_FALSE(image("out/week-live-dark.png").isNull());
}

TEST_F(ChartJobs, RunTheScenariosWhereBothAreAskedFor) {
    const Outcome outcome = runProgramIn(folder.path(), "--dump-chart-live x --dump-chart y");
    EXPECT_THAT(outcome.output, StartsWith("wrote week-over-light.png\n"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "x"));
}

TEST_F(ChartJobs, SayThatASnapshotHasNoWeek) {
    testing::internal::CaptureStdout();
    const UsageModel::UsageSnapshot snapshot;
    DumpChart::render({.snapshot = snapshot, .name = "empty", .calendar = Calendar::utc()}, folder.path().string());
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "no weekSeries for empty\nno weekSeries for empty\n");
}

TEST_F(ChartJobs, MakeTheDatabasesFolder) {
    const UsageModel::AppPaths paths(folder.path());
    const auto snapshot = DumpChart::liveSnapshot(paths, Calendar::utc());
    ASSERT_TRUE(snapshot);
    EXPECT_TRUE(snapshot->weekSeries);
    EXPECT_TRUE(std::filesystem::exists(paths.database()));
}

TEST_F(ChartJobs, SayWhyThereIsNoWeekOfTheUsersOwn) {
    const UsageModel::AppPaths paths(folder.path());
    std::filesystem::create_directories(paths.database()); // a folder is no database
    testing::internal::CaptureStdout();
    const auto snapshot = DumpChart::liveSnapshot(paths, Calendar::utc());
    std::fflush(stdout);
    EXPECT_FALSE(snapshot);
    EXPECT_THAT(testing::internal::GetCapturedStdout(), StartsWith("live dump failed: "));
}

TEST_F(ChartJobs, ReadTheUsersLogsAndGauge) {
    const UsageModel::AppPaths paths(folder.path());
    std::filesystem::create_directories(paths.support());
    const auto now = std::time(nullptr);
    std::ofstream(paths.gaugeFile())
        << R"({"capturedAt":)" << now - 60
        << R"(,"source":"statusline","windows":{"seven_day":{"usedPercentage":42,"resetsAt":)" << now + 200000 << "}}}";
    const auto snapshot = DumpChart::liveSnapshot(paths, Calendar::utc());
    ASSERT_TRUE(snapshot && snapshot->weekSeries);
    EXPECT_EQ(snapshot->weekSeries->scale, UsageModel::SeriesScale::capFraction);
    EXPECT_NEAR(snapshot->weekSeries->usedNow, 0.42, 1e-9);
}

} // namespace
