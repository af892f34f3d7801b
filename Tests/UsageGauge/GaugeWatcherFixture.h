#pragma once

#include <chrono>
#include <condition_variable>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "Support/TemporaryFolder.h"
#include "UsageGauge/GaugeWatcher.h"

namespace GaugeWatcherTesting {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using TestSupport::TemporaryFolder;
using TestSupport::writeFile;
using UsageGauge::GaugeWatcher;

constexpr auto patience = 20s;
constexpr auto debounce = 200ms;

/// What a watcher's thread has done so far, as seen from one of its calls.
struct Effort {
    pid_t thread = 0;
    long switches = 0;
    std::chrono::nanoseconds processorTime{};
};

inline long voluntarySwitches(pid_t thread) {
    std::ifstream status("/proc/self/task/" + std::to_string(thread) + "/status");
    for (std::string word; status >> word;) {
        long count = 0;
        if (word == "voluntary_ctxt_switches:" && status >> count) return count;
    }
    throw std::runtime_error("no count of context switches");
}

inline Effort effortOfThisThread() {
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    const auto thread = static_cast<pid_t>(syscall(SYS_gettid));
    return {thread, voluntarySwitches(thread),
            std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec)};
}

/// Notes the calls of one watcher, and lets a test wait for them.
class Calls {
public:
    void note() {
        const std::scoped_lock lock(mutex_);
        ++count_;
        last_ = Clock::now();
        effort_ = effortOfThisThread();
        changed_.notify_all();
    }
    /// Waits until there have been this many; tells whether there have been.
    [[nodiscard]] bool reach(int count) const {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, patience, [&] { return count_ >= count; });
    }
    [[nodiscard]] int count() const { return read(count_); }
    [[nodiscard]] Clock::time_point last() const { return read(last_); }
    [[nodiscard]] Effort effort() const { return read(effort_); }

private:
    template <typename T>
    T read(const T& value) const {
        const std::scoped_lock lock(mutex_);
        return value;
    }

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    int count_ = 0;
    Clock::time_point last_;
    Effort effort_;
};

class GaugeWatcherTest : public testing::Test {
protected:
    void SetUp() override { tick_.start(); }

    void changeGauge(std::string_view content = "{}") const { writeFile(gauge_, content); }

    /// Lets more than the span of the debounce go by: a second watcher, of another folder, makes a whole call. Whatever
    /// was on its way to the first before has arrived when its second one does.
    void letSpansPass(int spans = 2) {
        for (int i = 0; i < spans; ++i) {
            const int next = ticks_.count() + 1;
            writeFile(clockFolder_ / "gauge.json", "");
            ASSERT_TRUE(ticks_.reach(next));
        }
    }

    /// Makes a call due, beyond the mere change: comes back once the thread of a watcher that notes its calls here has
    /// seen the change and sleeps over the span.
    void makeCallDue(GaugeWatcher& watcher) {
        watcher.start();
        changeGauge();
        ASSERT_TRUE(calls_.reach(1));
        const Effort inCall = calls_.effort();
        awaitSwitches(inCall.thread, inCall.switches + 1);
        changeGauge();
        awaitSwitches(inCall.thread, inCall.switches + 2);
        ASSERT_EQ(calls_.count(), 1);
    }

    static void awaitSwitches(pid_t thread, long switches) {
        const auto end = Clock::now() + patience;
        while (voluntarySwitches(thread) < switches && Clock::now() < end) std::this_thread::yield();
    }

    void expectChangesAreToldAfter(int calls) {
        EXPECT_EQ(calls_.count(), calls);
        changeGauge();
        EXPECT_TRUE(calls_.reach(calls + 1));
    }

    TemporaryFolder folder_;
    TemporaryFolder clockFolder_;
    std::filesystem::path support_ = folder_ / "support";
    std::filesystem::path gauge_ = support_ / "gauge.json";
    std::filesystem::path other_ = support_ / "other";
    // The watchers stand last: their threads end before what they call goes away.
    Calls calls_;
    Calls ticks_;
    GaugeWatcher watcher_{gauge_, [this] { calls_.note(); }};
    GaugeWatcher tick_{clockFolder_ / "gauge.json", [this] { ticks_.note(); }};
};

} // namespace GaugeWatcherTesting
