#include "UsageGauge/GaugeWatcher.h"

#include <array>
#include <csignal>
#include <future>
#include <iterator>
#include <thread>

#include "UsageGauge/GaugeWatcherFixture.h"

namespace GaugeWatcherTesting {
namespace {

using GaugeWatcherDebounce = GaugeWatcherTest;
using GaugeWatcherIdle = GaugeWatcherTest;

struct ChangeRow {
    const char* story;
    void (*change)(const std::filesystem::path& gauge, const std::filesystem::path& other);
    bool told;
};

void PrintTo(const ChangeRow& row, std::ostream* out) {
    *out << row.story;
}

class GaugeWatcherChange : public GaugeWatcherTest, public testing::WithParamInterface<ChangeRow> {};

// A call that this change had caused would have come before the spans are over; one more then shows that the watch
// still lives.
TEST_P(GaugeWatcherChange, IsToldOrNot) {
    changeGauge();
    writeFile(other_, "x");
    writeFile(folder_ / "beside", "new");
    watcher_.start();
    GetParam().change(gauge_, other_);
    const int expected = GetParam().told ? 1 : 0;
    EXPECT_TRUE(calls_.reach(expected));
    letSpansPass();
    EXPECT_EQ(calls_.count(), expected);
    expectChangesAreToldAfter(expected);
}

using Path = std::filesystem::path;

INSTANTIATE_TEST_SUITE_P(
    All, GaugeWatcherChange,
    testing::Values(
        ChangeRow{"the gauge is written in place", [](const Path& gauge, const Path&) { writeFile(gauge, "{1}"); },
                  true},
        ChangeRow{"the gauge is appended to",
                  [](const Path& gauge, const Path&) { TestSupport::appendFile(gauge, "x"); }, true},
        ChangeRow{"a file from elsewhere is renamed over the gauge",
                  [](const Path& gauge, const Path&) { rename(gauge.parent_path().parent_path() / "beside", gauge); },
                  true},
        ChangeRow{"a file of the folder is renamed over the gauge",
                  [](const Path& gauge, const Path& other) { rename(other, gauge); }, true},
        ChangeRow{"the gauge is deleted", [](const Path& gauge, const Path&) { remove(gauge); }, true},
        ChangeRow{"the gauge is moved away",
                  [](const Path& gauge, const Path&) { rename(gauge, gauge.parent_path().parent_path() / "away"); },
                  true},
        ChangeRow{"another file appears",
                  [](const Path&, const Path& other) { writeFile(other.parent_path() / "third", "x"); }, true},
        ChangeRow{"another file is replaced",
                  [](const Path&, const Path& other) { rename(other.parent_path().parent_path() / "beside", other); },
                  true},
        ChangeRow{"another file is deleted", [](const Path&, const Path& other) { remove(other); }, true},
        ChangeRow{"a folder appears",
                  [](const Path&, const Path& other) { create_directory(other.parent_path() / "bin"); }, true},
        ChangeRow{"a link to the gauge appears",
                  [](const Path& gauge, const Path& other) { create_hard_link(gauge, other.parent_path() / "link"); },
                  true},
        ChangeRow{"another file is written in place, as the program's own are on every refresh",
                  [](const Path&, const Path& other) { writeFile(other, "state"); }, false},
        ChangeRow{"the gauge and the folder are read",
                  [](const Path& gauge, const Path& other) {
                      std::string content;
                      std::ifstream(gauge) >> content;
                      EXPECT_EQ(content, "{}");
                      EXPECT_EQ(std::distance(std::filesystem::directory_iterator(other.parent_path()), {}), 2);
                  },
                  false},
        ChangeRow{"a file is written two folders down",
                  [](const Path& gauge, const Path&) { writeFile(gauge.parent_path().parent_path() / "x/y", "z"); },
                  false}));

TEST_F(GaugeWatcherDebounce, TenChangesGiveOneCallAfterTheSpan) {
    watcher_.start();
    const auto begun = Clock::now();
    for (int i = 0; i < 10; ++i) changeGauge(std::to_string(i));
    // Where the machine stalls within the ten writes, each whole span of that may rightly give a call of its own.
    const auto spans = (Clock::now() - begun) / debounce;
    ASSERT_TRUE(calls_.reach(1));
    EXPECT_GE(calls_.last() - begun, debounce);
    letSpansPass();
    EXPECT_LE(calls_.count(), 1 + spans);
}

TEST_F(GaugeWatcherDebounce, IsNotRenewedByASteadyStream) {
    watcher_.start();
    // A span that each change renewed would never be over here.
    const auto end = Clock::now() + patience;
    while (calls_.count() < 3 && Clock::now() < end) {
        changeGauge();
        std::this_thread::sleep_for(5ms);
    }
    EXPECT_GE(calls_.count(), 3);
}

TEST_F(GaugeWatcherDebounce, BeginsAnewAfterTheCall) {
    watcher_.start();
    for (int call = 1; call <= 3; ++call) {
        const auto begun = Clock::now();
        changeGauge();
        ASSERT_TRUE(calls_.reach(call));
        EXPECT_GE(calls_.last() - begun, debounce);
    }
}

TEST_F(GaugeWatcherDebounce, AChangeDuringTheCallGivesAnother) {
    std::promise<void> entered;
    std::promise<void> release;
    GaugeWatcher slow(gauge_, [&] {
        if (calls_.count() == 0) {
            entered.set_value();
            release.get_future().wait();
        }
        calls_.note();
    });
    slow.start();
    changeGauge();
    ASSERT_EQ(entered.get_future().wait_for(patience), std::future_status::ready);
    changeGauge("during the call");
    const auto released = Clock::now();
    release.set_value();
    ASSERT_TRUE(calls_.reach(2));
    EXPECT_GE(calls_.last() - released, debounce);
}

TEST_F(GaugeWatcherDebounce, SurvivesSignals) {
    struct sigaction interrupt {};
    struct sigaction before {};
    interrupt.sa_handler = [](int) {};
    ASSERT_EQ(sigaction(SIGUSR1, &interrupt, &before), 0);
    watcher_.start();
    changeGauge();
    ASSERT_TRUE(calls_.reach(1));

    const auto interruptWatcher = [&] { ASSERT_EQ(syscall(SYS_tgkill, getpid(), calls_.effort().thread, SIGUSR1), 0); };
    interruptWatcher();
    const auto begun = Clock::now();
    changeGauge();
    while (calls_.count() < 2 && Clock::now() < begun + patience) {
        interruptWatcher();
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_EQ(calls_.count(), 2);
    EXPECT_GE(calls_.last() - begun, debounce);
    sigaction(SIGUSR1, &before, nullptr);
}

TEST_F(GaugeWatcherDebounce, LostEventsCountAsAChange) {
    int capacity = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> capacity;
    if (capacity <= 0 || capacity > 100000) GTEST_SKIP() << "the queue is too long to fill: " << capacity;
    std::promise<void> entered;
    std::promise<void> release;
    GaugeWatcher slow(gauge_, [&] {
        if (calls_.count() == 0) {
            entered.set_value();
            release.get_future().wait();
        }
        calls_.note();
    });
    changeGauge();
    const std::array<std::filesystem::path, 2> others{other_, support_ / "third"};
    for (const auto& path : others) writeFile(path, "");
    slow.start();
    changeGauge();
    ASSERT_EQ(entered.get_future().wait_for(patience), std::future_status::ready);
    // None of these is a change; but equal neighbours in the queue would be merged, hence the two in turn.
    for (int i = 0; i <= capacity; ++i) writeFile(others[static_cast<std::size_t>(i % 2)], "");
    release.set_value();
    EXPECT_TRUE(calls_.reach(2));
}

// Two calls five spans apart: the thread goes to sleep, wakes for the change, sleeps through the span, and wakes for
// the call. A few switches more are the sanitizers' locks; a thread that looked every now and then would have dozens.
TEST_F(GaugeWatcherIdle, WakesForNothing) {
    watcher_.start();
    changeGauge();
    ASSERT_TRUE(calls_.reach(1));
    const Effort before = calls_.effort();
    letSpansPass(5);
    changeGauge();
    ASSERT_TRUE(calls_.reach(2));
    const Effort after = calls_.effort();
    EXPECT_EQ(after.thread, before.thread);
    EXPECT_GE(after.switches - before.switches, 2);
    EXPECT_LE(after.switches - before.switches, 6);
}

TEST_F(GaugeWatcherIdle, DoesNotSpinOnceTheFolderIsGone) {
    watcher_.start();
    std::filesystem::remove_all(support_);
    ASSERT_TRUE(calls_.reach(1));
    const Effort before = calls_.effort();
    letSpansPass(5);
    watcher_.stop();
    watcher_.start();
    changeGauge();
    ASSERT_TRUE(calls_.reach(2));
    const Effort after = calls_.effort();
    EXPECT_LE(after.switches - before.switches, 8);
    EXPECT_LT(after.processorTime - before.processorTime, 100ms);
}

TEST_F(GaugeWatcherIdle, ABurstWakesItOnce) {
    watcher_.start();
    changeGauge();
    ASSERT_TRUE(calls_.reach(1));
    const Effort before = calls_.effort();
    const auto begun = Clock::now();
    while (Clock::now() < begun + debounce / 2) changeGauge();
    ASSERT_TRUE(calls_.reach(2));
    EXPECT_LE(calls_.effort().switches - before.switches, 6);
}

} // namespace
} // namespace GaugeWatcherTesting
