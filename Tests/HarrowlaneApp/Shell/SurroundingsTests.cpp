// The jobs of the program that draw, in homes and environments that nobody should have.

#include <filesystem>
#include <string>
#include <vector>

#include <QImage>

#include <gmock/gmock.h>

#include "ProgramRun.h"
#include "Support/CommaLocale.h"
#include "Support/LoggedTurn.h"
#include "Support/Quoted.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"
#include "UsageIngest/IngestStore.h"
#include "UsageModel/AppPaths.h"

namespace {

using ShellTests::Outcome;
using ShellTests::outcomeOf;
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

const std::vector<std::string> darkCharts{"week-over-dark.png", "week-track-dark.png", "week-under-dark.png",
                                          "week-nogauge-dark.png"};

void expectTheSameCharts(const fs::path& folder, const fs::path& expected) {
    for (const std::string& name : darkCharts) {
        ASSERT_FALSE(picture(expected / name).isNull()) << name;
        EXPECT_EQ(picture(folder / name), picture(expected / name)) << name;
    }
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
        expectTheSameCharts(folder / "other", folder / "plain");
        fs::remove_all(folder / "other");
    }
}

// The library that the program is built on makes the C library write its numbers as the locale says.
TEST(Surroundings, WithACommaInTheirNumbersChangeNoChartAndNoTurn) {
    const TestSupport::TemporaryFolder folder;
    const auto locale = TestSupport::localeWithAComma(folder / "locales");
    if (!locale) GTEST_SKIP() << "no locale with a comma in its numbers can be made";
    ASSERT_EQ(outcomeOf("env " + *locale + " /usr/bin/printf %.1f 0,5").output, "0,5") << "others follow it";
    const AppPaths paths(folder / "home");
    for (int i = 1; i <= 20; ++i)
        TestSupport::appendFile(paths.sessionLogs() / "p/1.jsonl", TestSupport::loggedTurn({1772360430.0 + 60 * i}, i));

    std::vector<std::vector<UsageModel::UsageEvent>> turns;
    for (const std::string& environment : {std::string("LC_ALL=C"), *locale}) {
        const std::string into = turns.empty() ? "plain" : "comma";
        EXPECT_EQ(runProgramIn(folder.path(), "--dump-chart " + into, environment).output, chartsWritten);
        EXPECT_EQ(
            runProgramIn(folder.path(), "--dump-chart-live " + into, environment + " HOME=" + quoted(folder / "home"))
                .output,
            liveChartWritten);
        turns.push_back(*UsageIngest::IngestStore(paths.database()).allEvents());
        EXPECT_EQ(turns.back().size(), 20U) << into;
        fs::remove_all(paths.support());
    }
    expectTheSameCharts(folder / "comma", folder / "plain");
    EXPECT_EQ(turns.at(1), turns.at(0));
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

TEST_F(HomeOfTheLiveChart, ThatIsNotThereIsMade) {
    EXPECT_EQ(draw(home_ / "not/there").output, liveChartWritten);
    EXPECT_EQ(turnsIn(home_ / "not/there"), 0);
}

TEST_F(HomeOfTheLiveChart, OnAFullFileSystemIsToldAndNoPictureIsHalf) {
    const TestSupport::SmallDisk disk(home_);
    if (!disk.isMounted()) GTEST_SKIP() << "no right to mount a small disk here";
    writeLog();
    disk.fill();
    EXPECT_THAT(draw(home_).output, HasSubstr("live dump failed: "));
    disk.makeRoom();
    EXPECT_EQ(draw(home_).output, liveChartWritten);
    EXPECT_EQ(turnsIn(home_), 1);

    fs::create_directory(home_ / "icons");
    disk.fill(60'000); // for the small ones, and for a part of each large one
    const Outcome outcome = runProgramIn(home_, "--dump-iconset icons");
    EXPECT_THAT(outcome.output, HasSubstr("could not write icon_512x512.png\n"));
    EXPECT_GT(std::distance(fs::directory_iterator(home_ / "icons"), {}), 1);
    for (const auto& entry : fs::directory_iterator(home_ / "icons")) {
        EXPECT_FALSE(picture(entry.path()).isNull()) << entry.path();
        EXPECT_THAT(outcome.output, HasSubstr("wrote " + entry.path().filename().string() + "\n"));
    }
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
