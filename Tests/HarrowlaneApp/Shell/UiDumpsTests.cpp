#include "HarrowlaneApp/Shell/UiDumps.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <QImage>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "HarrowlaneApp/Samples/PreviewData.h"
#include "ProgramRun.h"
#include "Support/TemporaryFolder.h"

namespace {

using ShellTests::Outcome;
using ShellTests::runProgramIn;
using namespace HarrowlaneApp;

const std::vector<std::string> names{
    "now-light.png",
    "now-dark.png",
    "models-dark.png",
    "history-dark.png",
    "settings.png",
    "now-first-run-no-logs.png",
    "now-first-run-no-usage.png",
    "bars.png",
    "week-tab-dark.png",
    "week-tab-light.png",
    "week-tab-calm-dark.png",
    "week-tab-calm-light.png",
    "now-sample.png",
};

std::string lines(const std::string& before) {
    std::string text;
    for (const std::string& name : names) text.append(before).append(name).append("\n");
    return text;
}

TEST(UiDumps, WritesEveryViewInOrderWithoutADisplay) {
    const TestSupport::TemporaryFolder folder;
    const Outcome outcome = runProgramIn(folder.path(), "--dump-ui deep/er");
    EXPECT_EQ(outcome.output, lines("wrote "));
    EXPECT_EQ(outcome.status, 0);
    for (const std::string& name : names) {
        const QImage image(QString::fromStdString((folder.path() / "deep/er" / name).string()));
        EXPECT_GT(image.width(), 600) << name;
        EXPECT_GT(image.height(), 400) << name;
    }
}

TEST(UiDumps, TheSchemesAreTheirNames) {
    const TestSupport::TemporaryFolder folder;
    ASSERT_EQ(runProgramIn(folder.path(), "--dump-ui .").status, 0);
    const auto brightness = [&](const char* name) {
        const QImage image(QString::fromStdString((folder.path() / name).string()));
        return qGray(image.pixel(image.width() / 2, 8));
    };
    EXPECT_LT(brightness("week-tab-dark.png"), 60);
    EXPECT_GT(brightness("week-tab-light.png"), 200);
    EXPECT_LT(brightness("now-dark.png"), 60);
    EXPECT_GT(brightness("now-light.png"), 200);
}

TEST(UiDumps, FailFileByFileWhereTheFolderCannotBeMade) {
    const TestSupport::TemporaryFolder folder;
    std::ofstream(folder.path() / "taken") << "a file";
    const Outcome outcome = runProgramIn(folder.path(), "--dump-ui taken");
    EXPECT_EQ(outcome.output, lines("could not write "));
    EXPECT_EQ(outcome.status, 0);
}

TEST(UiDumps, TheComfortableWeekReadsAsCalm) {
    const auto sample = PreviewData::overPace(UsageModel::Date{1763648100});
    const auto calm = DumpUI::comfortable(sample);
    EXPECT_EQ(WeekCopy::standing(*sample.weekSeries), WeekCopy::Standing::over);
    EXPECT_EQ(WeekCopy::standing(*calm.weekSeries), WeekCopy::Standing::comfortable);
    EXPECT_NEAR(calm.weekSeries->coneLikelyEnd.used, sample.weekSeries->coneLikelyEnd.used - 0.22, 1e-9);
    EXPECT_NEAR(calm.weekSeries->usedNow, sample.weekSeries->usedNow - 0.22, 1e-9);
    EXPECT_EQ(calm.weekSeries->crossing, std::nullopt);
    EXPECT_EQ(calm.weekSeries->baseline, sample.weekSeries->baseline);
    for (const auto& point : calm.weekSeries->actual) EXPECT_GE(point.used, 0.0);
    EXPECT_EQ(DumpUI::comfortable(UsageModel::UsageSnapshot::warmingUp({})), UsageModel::UsageSnapshot::warmingUp({}));
}

} // namespace
