// The jobs of the program that draw, in homes and environments that nobody should have.

#include <filesystem>
#include <string>

#include <QImage>

#include <gmock/gmock.h>

#include "ProgramRun.h"
#include "Support/LoggedTurn.h"
#include "Support/Quoted.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"
#include "UsageIngest/IngestStore.h"
#include "UsageModel/AppPaths.h"

namespace {

using ShellTests::Outcome;
using ShellTests::runProgramIn;
using testing::EndsWith;
using testing::HasSubstr;
using TestSupport::quoted;
using UsageModel::AppPaths;
namespace fs = std::filesystem;

const std::string chartsWritten = "wrote week-over-light.png\nwrote week-over-dark.png\n"
                                  "wrote week-track-light.png\nwrote week-track-dark.png\n"
                                  "wrote week-under-light.png\nwrote week-under-dark.png\n"
                                  "wrote week-nogauge-light.png\nwrote week-nogauge-dark.png\n";
const std::string liveChartWritten = "wrote week-live-light.png\nwrote week-live-dark.png\n";

QImage picture(const fs::path& path) {
    return QImage(QString::fromStdString(path.string()));
}

// Several of each in one run, for eight pictures take their time.
TEST(Surroundings, ThatAreWrongChangeNoChart) {
    const TestSupport::TemporaryFolder folder;
    ASSERT_EQ(runProgramIn(folder.path(), "--dump-chart plain", "LC_ALL=C TZ=UTC").output, chartsWritten);
    for (const std::string environment :
         {"LC_ALL=xx_YY.UTF-8 LC_NUMERIC=de_DE.UTF-8 TZ=Nowhere/Nothing HOME=gone", "LC_ALL=/tmp TZ=: env -u HOME"}) {
        const Outcome outcome = runProgramIn(folder.path(), "--dump-chart other", environment);
        // The library that looks for fonts may complain of the locale first.
        EXPECT_THAT(outcome.output, EndsWith(chartsWritten)) << environment;
        EXPECT_EQ(outcome.status, 0) << environment;
        for (const std::string scenario : {"over", "track", "under", "nogauge"}) {
            const std::string name = "week-" + scenario + "-dark.png";
            ASSERT_FALSE(picture(folder / ("plain/" + name)).isNull());
            EXPECT_EQ(picture(folder / ("other/" + name)), picture(folder / ("plain/" + name))) << environment;
        }
        fs::remove_all(folder / "other");
    }
}

class HomeOfTheLiveChart : public testing::Test {
protected:
    void writeLog() const {
        TestSupport::writeFile(AppPaths(home_).sessionLogs() / "p/1.jsonl", TestSupport::loggedTurn({1772360430}, 1));
    }
    [[nodiscard]] Outcome draw(const std::string& home) const {
        return runProgramIn(folder_.path(), "--dump-chart-live pictures", "HOME=" + quoted(home));
    }
    [[nodiscard]] static std::int64_t turnsIn(const fs::path& home) {
        return UsageIngest::IngestStore(AppPaths(home).database()).eventSpan().count;
    }

    TestSupport::TemporaryFolder folder_;
    fs::path home_ = folder_ / "home";
};

TEST_F(HomeOfTheLiveChart, MayHaveAnyName) {
    for (const char* name : {"with blanks  in it", "it's a \"home\"", "Ünïcode 家\n", "no\xFFtext", "$HOME %s\\"}) {
        home_ = folder_ / name;
        writeLog();
        const Outcome outcome = draw(home_);
        EXPECT_EQ(outcome.output, liveChartWritten) << name;
        EXPECT_EQ(turnsIn(home_), 1) << name;
    }
}

TEST_F(HomeOfTheLiveChart, MayBeRelative) {
    writeLog();
    EXPECT_EQ(draw(home_).output, liveChartWritten);
    EXPECT_EQ(draw("home").output, liveChartWritten);
    EXPECT_EQ(turnsIn(home_), 1) << "once";
}

TEST_F(HomeOfTheLiveChart, ThatCannotBeWrittenToIsTold) {
    TestSupport::writeFile(home_, "in the way");
    const Outcome outcome = draw(home_);
    EXPECT_THAT(outcome.output, HasSubstr("live dump failed: "));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(HomeOfTheLiveChart, OnAReadOnlyFileSystemIsTold) {
    const TestSupport::SmallDisk disk(home_);
    if (!disk.isMounted()) GTEST_SKIP() << "no right to mount a small disk here";
    writeLog();
    disk.makeReadOnly();
    EXPECT_THAT(draw(home_).output, HasSubstr("live dump failed: "));
    disk.makeWritable();
    EXPECT_EQ(draw(home_).output, liveChartWritten);
    disk.makeReadOnly();
    EXPECT_THAT(draw(home_).output, HasSubstr("live dump failed: ")) << "with a database too";
}

} // namespace
