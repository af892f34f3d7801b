#include "Report/ProgressBar.h"

#include <gtest/gtest.h>

namespace Report {
namespace {

using UsageModel::IngestProgress;

std::string drawn(double fraction) {
    return std::string("\r").append(progressLine(fraction));
}

class ProgressBarTest : public testing::Test {
protected:
    ProgressBar::Write toShown() {
        return [this](std::string_view text) { shown += text; };
    }
    ProgressBar::Clock toClock() {
        return [this] { return now; };
    }

    std::string shown;
    double now = 1000;
};

TEST(ProgressLine, FillsFromTheLeft) {
    EXPECT_EQ(progressLine(0), "reading the logs [........................................]   0%");
    EXPECT_EQ(progressLine(0.5), "reading the logs [####################....................]  50%");
    EXPECT_EQ(progressLine(1), "reading the logs [########################################] 100%");
    EXPECT_EQ(progressLine(7), progressLine(1));
    EXPECT_EQ(progressLine(-7), progressLine(0));
}

TEST_F(ProgressBarTest, AShortImportShowsNothing) {
    {
        ProgressBar bar(toShown(), toClock());
        now += 0.29;
        bar.show({.bytesDone = 1, .bytesTotal = 2});
    }
    EXPECT_EQ(shown, "");
}

TEST_F(ProgressBarTest, ALongImportShowsALineAndErasesIt) {
    {
        ProgressBar bar(toShown(), toClock());
        now += 0.31;
        bar.show({.bytesDone = 1, .bytesTotal = 2});
        EXPECT_EQ(shown, drawn(0.5));
        shown.clear();
    }
    EXPECT_EQ(shown, std::string("\r").append(progressLine(0.5).size(), ' ').append("\r"));
}

TEST_F(ProgressBarTest, LinesComeNoFasterThanTheEyeFollows) {
    ProgressBar bar(toShown(), toClock());
    now += 0.31;
    bar.show({.bytesDone = 1, .bytesTotal = 4});
    now += 0.05;
    bar.show({.bytesDone = 2, .bytesTotal = 4});
    EXPECT_EQ(shown, drawn(0.25));
    now += 0.06;
    bar.show({.bytesDone = 3, .bytesTotal = 4});
    EXPECT_EQ(shown, drawn(0.25) + drawn(0.75));
}

TEST_F(ProgressBarTest, AFinishedImportDrawsNoMore) {
    ProgressBar bar(toShown(), toClock());
    now += 10;
    bar.show({.bytesDone = 2, .bytesTotal = 2, .complete = true});
    EXPECT_EQ(shown, "");
}

TEST_F(ProgressBarTest, WithoutATerminalNothingIsAsked) {
    ProgressBar bar({}, [this] {
        ADD_FAILURE() << "the clock was read";
        return now;
    });
    bar.show({.bytesDone = 1, .bytesTotal = 2});
}

} // namespace
} // namespace Report
