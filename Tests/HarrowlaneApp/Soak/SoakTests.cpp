// The whole program through many refreshes. The short form is part of the test suite; BRINDLEWICK_SOAK_RUNS gives the
// number of refreshes of a longer one, 2000 for the figures in Docs/Reliability.md.

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Soak/ProcessFigures.h"
#include "HarrowlaneApp/Soak/SoakedProgram.h"

namespace {

using HarrowlaneApp::ProcessFigures;

constexpr long shortForm = 150;
// Until then threads begin, windows are built, and caches of glyphs and pictures fill.
constexpr long warmUp = 50;

long wantedRuns() {
    const char* wanted = std::getenv("BRINDLEWICK_SOAK_RUNS");
    return wanted == nullptr ? shortForm : std::max(std::strtol(wanted, nullptr, 10), 2 * warmUp);
}

class Soak : public testing::Test {
protected:
    void live(long runs) {
        for (long run = 0; run < runs; ++run) {
            ASSERT_TRUE(program.liveOnePeriod()) << "run " << run;
            if (run % 100 == 99) std::cout << run + 1 << " runs: " << ProcessFigures::now() << "\n" << std::flush;
        }
    }

    /// With everything on the screen and all answers in, so that one moment can be held against another.
    ProcessFigures figuresAtRest() {
        EXPECT_TRUE(program.bringDesktopBack());
        program.openWindows();
        (void)HarrowlaneApp::becomes([] { return false; }, 1);
        return ProcessFigures::now();
    }

    HarrowlaneApp::SoakedProgram program{20260301};
};

TEST_F(Soak, TakesNoMoreInTheEndThanItDidAfterItsWarmUp) {
    const long runs = wantedRuns();
    program.openWindows();
    ASSERT_NO_FATAL_FAILURE(live(warmUp));
    const ProcessFigures before = figuresAtRest();
    const long turnsBefore = program.tally().turns;
    ASSERT_NO_FATAL_FAILURE(live(runs - warmUp));
    const ProcessFigures after = figuresAtRest();
    const long turns = program.tally().turns - turnsBefore;
    std::cout << "before: " << before << "\nafter:  " << after << "\n";

    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_EQ(after.threads, before.threads);
    // A turn takes 72 bytes in the list of turns, which has room for twice as many, and about 200 among the pages of
    // the database that SQLite holds, until these come to its 2 MB. The slack is for the picture of a window more
    // or less.
    constexpr std::int64_t bytesPerTurn = 512;
    constexpr std::int64_t slack = 1024 * 1024;
    EXPECT_LE(after.heap - before.heap, bytesPerTurn * turns + slack);
    EXPECT_EQ(program.tally().errors, 0);

    program.changeBetweenRefreshes();
    const UsageModel::UsageSnapshot fresh = program.seenAfresh();
    EXPECT_TRUE(HarrowlaneApp::becomes([&] { return program.store().snapshot() == fresh; })) << "a change was missed";
    EXPECT_TRUE(program.panelShowsSnapshot());
    std::cout << program.tally();
}

} // namespace
