#include "UsageGauge/GaugeWatcher.h"

#include <future>
#include <iterator>
#include <memory>
#include <optional>
#include <thread>

#include <sys/stat.h>

#include "UsageGauge/GaugeWatcherFixture.h"

namespace GaugeWatcherTesting {
namespace {

using GaugeWatcherStart = GaugeWatcherTest;
using GaugeWatcherStop = GaugeWatcherTest;
using GaugeWatcherEnd = GaugeWatcherTest;

TEST_F(GaugeWatcherStart, MakesThePrivateFolderWithItsParents) {
    GaugeWatcher deep(folder_ / "a/b/gauge.json", [] {});
    deep.start();
    for (const char* made : {"a", "a/b"}) {
        struct stat attributes {};
        ASSERT_EQ(stat((folder_ / made).c_str(), &attributes), 0);
        EXPECT_EQ(attributes.st_mode & 07777U, 0700U) << made;
    }
}

TEST_F(GaugeWatcherStart, SeesTheFirstGaugeEver) {
    watcher_.start();
    expectChangesAreToldAfter(0);
}

TEST_F(GaugeWatcherStart, TellsNothingOfWhatWasBefore) {
    changeGauge();
    watcher_.start();
    letSpansPass();
    EXPECT_EQ(calls_.count(), 0);
    expectChangesAreToldAfter(0);
}

TEST_F(GaugeWatcherStart, TwiceGivesNoSecondCall) {
    watcher_.start();
    watcher_.start();
    expectChangesAreToldAfter(0);
    watcher_.stop();
    changeGauge();
    letSpansPass();
    EXPECT_EQ(calls_.count(), 1) << "one stop ends it";
}

TEST_F(GaugeWatcherStart, OnAFileInPlaceOfTheFolderIsSilentUntilTheNextStart) {
    writeFile(support_, "in the way");
    watcher_.start();
    std::filesystem::remove(support_);
    changeGauge();
    letSpansPass();
    EXPECT_EQ(calls_.count(), 0) << "no retry of its own";
    watcher_.start();
    expectChangesAreToldAfter(0);
}

TEST_F(GaugeWatcherStart, TakesAFileNameWithoutAFolderAsTheWorkingDirectorys) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());
    GaugeWatcher here("gauge.json", [this] { calls_.note(); });
    here.start();
    std::filesystem::current_path(before);
    writeFile(folder_ / "gauge.json", "{}");
    EXPECT_TRUE(calls_.reach(1));
}

TEST_F(GaugeWatcherStart, LeavesNoDescriptorsBehind) {
    const auto openDescriptors = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    const auto before = openDescriptors();
    {
        GaugeWatcher many(gauge_, [] {});
        many.start();
        const auto started = openDescriptors();
        for (int i = 0; i < 100; ++i) {
            many.start();
            many.stop();
            many.start();
        }
        EXPECT_EQ(openDescriptors(), started);
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(GaugeWatcherStop, LetsADueCallRunWithoutWaitingForIt) {
    watcher_.start();
    const auto begun = Clock::now();
    changeGauge();
    watcher_.stop();
    const int afterStop = calls_.count();
    // A machine that stalls for the whole span has rightly made the call by now.
    EXPECT_TRUE(afterStop == 0 || Clock::now() - begun >= debounce);
    EXPECT_TRUE(calls_.reach(1));
    changeGauge();
    letSpansPass();
    EXPECT_EQ(calls_.count(), 1) << "what comes after is not told";
}

TEST_F(GaugeWatcherStop, LetsACallRunThatWasLongDue) {
    makeCallDue(watcher_);
    watcher_.stop();
    EXPECT_TRUE(calls_.reach(2));
}

TEST_F(GaugeWatcherStop, TwiceAndWithoutStartDoesNothing) {
    watcher_.stop();
    watcher_.start();
    watcher_.stop();
    watcher_.stop();
    changeGauge();
    letSpansPass();
    EXPECT_EQ(calls_.count(), 0);
    watcher_.start();
    expectChangesAreToldAfter(0);
}

TEST_F(GaugeWatcherStop, AndStartWithinTheSpanKeepItOneCall) {
    watcher_.start();
    const auto begun = Clock::now();
    changeGauge();
    watcher_.stop();
    watcher_.start();
    changeGauge("after the new start");
    // Where the machine stalls until here, each whole span of that may rightly give a call of its own.
    const auto spans = (Clock::now() - begun) / debounce;
    ASSERT_TRUE(calls_.reach(1));
    EXPECT_GE(calls_.last() - begun, debounce);
    letSpansPass();
    EXPECT_LE(calls_.count(), 1 + spans);
    expectChangesAreToldAfter(calls_.count());
}

TEST_F(GaugeWatcherStop, FromWithinTheCallEndsTheWatch) {
    std::optional<GaugeWatcher> watcher;
    watcher.emplace(gauge_, [&] {
        watcher->stop();
        calls_.note();
    });
    watcher->start();
    changeGauge();
    ASSERT_TRUE(calls_.reach(1));
    changeGauge();
    letSpansPass();
    EXPECT_EQ(calls_.count(), 1);
}

TEST_F(GaugeWatcherStop, OnManyThreadsAtOnceIsOneStop) {
    for (int round = 0; round < 50; ++round) {
        watcher_.start();
        const std::jthread first([&] { watcher_.stop(); });
        const std::jthread second([&] { watcher_.stop(); });
    }
    changeGauge();
    letSpansPass();
    EXPECT_EQ(calls_.count(), 0);
}

TEST_F(GaugeWatcherEnd, DropsADueCall) {
    {
        GaugeWatcher gone(gauge_, [this] { calls_.note(); });
        makeCallDue(gone);
    }
    letSpansPass();
    EXPECT_EQ(calls_.count(), 1);
}

TEST_F(GaugeWatcherEnd, DropsADueCallOfAStoppedWatcherToo) {
    {
        GaugeWatcher gone(gauge_, [this] { calls_.note(); });
        makeCallDue(gone);
        gone.stop();
    }
    letSpansPass();
    EXPECT_EQ(calls_.count(), 1);
}

TEST_F(GaugeWatcherEnd, DropsAChangeThatWasNotLookedAtYet) {
    {
        GaugeWatcher gone(gauge_, [this] { calls_.note(); });
        gone.start();
        changeGauge();
    }
    letSpansPass();
    EXPECT_EQ(calls_.count(), 0);
}

TEST_F(GaugeWatcherEnd, WaitsForARunningCall) {
    std::promise<void> entered;
    bool finished = false;
    {
        GaugeWatcher busy(gauge_, [&] {
            entered.set_value();
            while (!std::filesystem::exists(other_)) std::this_thread::yield();
            finished = true;
        });
        busy.start();
        changeGauge();
        ASSERT_EQ(entered.get_future().wait_for(patience), std::future_status::ready);
        writeFile(other_, "");
    }
    EXPECT_TRUE(finished);
}

TEST_F(GaugeWatcherEnd, MayComeFromWithinTheCall) {
    std::unique_ptr<GaugeWatcher> watcher;
    watcher = std::make_unique<GaugeWatcher>(gauge_, [&] {
        watcher.reset();
        calls_.note();
    });
    watcher->start();
    changeGauge();
    ASSERT_TRUE(calls_.reach(1));
    changeGauge();
    letSpansPass();
    EXPECT_EQ(calls_.count(), 1);
    EXPECT_FALSE(watcher);
}

TEST_F(GaugeWatcherEnd, OfAWatcherThatNeverStartedMakesNoFolder) {
    {
        const GaugeWatcher never(folder_ / "never/gauge.json", [] {});
    }
    EXPECT_FALSE(std::filesystem::exists(folder_ / "never"));
}

TEST_F(GaugeWatcherStart, AfterTheFolderWasDeletedNeedsAStopFirst) {
    watcher_.start();
    std::filesystem::remove_all(support_);
    ASSERT_TRUE(calls_.reach(1));
    changeGauge();
    watcher_.start();
    changeGauge();
    letSpansPass();
    EXPECT_EQ(calls_.count(), 1) << "the watch is dead";
    watcher_.stop();
    watcher_.start();
    expectChangesAreToldAfter(1);
}

TEST_F(GaugeWatcherStart, AfterTheFolderWasRenamedNeedsAStopFirst) {
    watcher_.start();
    std::filesystem::rename(support_, folder_ / "moved");
    ASSERT_TRUE(calls_.reach(1));
    writeFile(folder_ / "moved/gauge.json", "{}");
    changeGauge();
    letSpansPass();
    EXPECT_EQ(calls_.count(), 1) << "neither the old place nor the new one is watched";
    watcher_.stop();
    watcher_.start();
    expectChangesAreToldAfter(1);
}

} // namespace
} // namespace GaugeWatcherTesting
