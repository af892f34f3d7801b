#include "HarrowlaneApp/Platform/Linux/BootAlarm.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <QElapsedTimer>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <time.h>

#include "HarrowlaneApp/Platform/Later.h"
#include "HarrowlaneApp/Waiting.h"

namespace HarrowlaneApp {

namespace {

/// The clocks of the timers that this process holds.
std::vector<int> clocksOfTimers() {
    std::vector<int> clocks;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
        std::ifstream lines(entry.path());
        for (std::string word; lines >> word;) {
            if (int clock = 0; word == "clockid:" && lines >> clock) clocks.push_back(clock);
        }
    }
    return clocks;
}

TEST(BootAlarm, RingsOnceWhenTheSpanIsOver) {
    QElapsedTimer timer;
    timer.start();
    int rings = 0;
    const BootAlarm alarm(0.05, [&] { ++rings; });
    EXPECT_EQ(rings, 0);
    ASSERT_TRUE(becomes([&] { return rings > 0; }));
    EXPECT_GE(timer.elapsed(), 50);
    EXPECT_FALSE(becomes([&] { return rings > 1; }, 1));
}

TEST(BootAlarm, CountsTheTimeAsleep) {
    const std::vector<int> before = clocksOfTimers();
    const BootAlarm alarm(1000.0, [] {});
    const std::vector<int> after = clocksOfTimers();
    EXPECT_EQ(std::ranges::count(after, CLOCK_BOOTTIME), std::ranges::count(before, CLOCK_BOOTTIME) + 1);
}

TEST(BootAlarm, RingsAtTheNextChanceWhereTheSpanIsNone) {
    for (const double span : {0.0, -5.0}) {
        bool rang = false;
        const BootAlarm alarm(span, [&] { rang = true; });
        EXPECT_FALSE(rang) << "not before it is made";
        EXPECT_TRUE(becomes([&] { return rang; })) << span;
    }
}

TEST(BootAlarm, StaysSilentOnceItIsGone) {
    bool rang = false;
    auto alarm = std::make_unique<BootAlarm>(0.01, [&] { rang = true; });
    alarm.reset();
    EXPECT_FALSE(becomes([&] { return rang; }, 1));
}

TEST(BootAlarm, MayEndWhenItRings) {
    std::unique_ptr<BootAlarm> alarm;
    alarm = std::make_unique<BootAlarm>(0.01, [&] { alarm.reset(); });
    EXPECT_TRUE(becomes([&] { return alarm == nullptr; }));
}

TEST(BootAlarm, RingsWhereTheProcessMayOpenNothingMore) {
    // The sanitizers open a pipe to look at the first object of a type; these are the first.
    const BootAlarm silent(1000.0, [] {});
    QObject anyone;
    later(anyone, std::chrono::milliseconds(0), [] {});
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    const rlimit none{.rlim_cur = 0, .rlim_max = usual.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    bool rang = false;
    const BootAlarm alarm(0.01, [&] { rang = true; });
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &usual), 0);
    EXPECT_TRUE(becomes([&] { return rang; }));
}

} // namespace

} // namespace HarrowlaneApp
