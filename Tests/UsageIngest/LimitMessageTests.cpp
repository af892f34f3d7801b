#include "UsageIngest/LimitMessage.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using UsageIngest::readLimitMessage;
using UsageModel::Date;
using UsageModel::WindowKind;

constexpr Date tenInTheMorning{1772359200}; // 2026-03-01T10:00:00Z
constexpr double hour = 3600;

struct Row {
    const char* text;
    WindowKind window;
    std::optional<double> hoursAfter;
};

class Recognised : public testing::TestWithParam<Row> {};

TEST_P(Recognised, WindowAndReset) {
    const auto message = readLimitMessage(GetParam().text, tenInTheMorning);
    ASSERT_TRUE(message) << GetParam().text;
    EXPECT_EQ(message->window, GetParam().window) << GetParam().text;
    const auto& hours = GetParam().hoursAfter;
    EXPECT_EQ(message->resetsAt, hours ? std::optional(tenInTheMorning + *hours * hour) : std::nullopt)
        << GetParam().text;
}

using enum WindowKind;
INSTANTIATE_TEST_SUITE_P(
    Texts, Recognised,
    testing::Values(Row{"You've hit your session limit · resets 3pm (Europe/Berlin)", session5h, 4},
                    Row{"You've hit your session limit · resets 9am (UTC)", session5h, 23},
                    Row{"session limit · resets 10am (UTC)", session5h, 24}, // an equal time is tomorrow's
                    Row{"Weekly limit reached · resets 12am (UTC)", weeklyAll, 14},
                    Row{"weekly limit · resets 12pm (UTC)", weeklyAll, 2},
                    Row{"weekly limit · resets 1:30pm (UTC)", weeklyAll, 3.5},
                    Row{"weekly limit · resets 1330 (UTC)", weeklyAll, 3.5},
                    Row{"WEEKLY LIMIT · RESETS 1:30PM ( Asia/Kolkata )", weeklyAll, 22},
                    Row{"Opus weekly limit · resets 5pm (UTC)", weeklyOpus, 7},
                    Row{"Weekly Opus limit · resets 5pm (UTC)", weeklyAll, 7},
                    Row{"session limit · resets 5pm (Mars/Base)", session5h, std::nullopt},
                    Row{"session limit · resets 5pm (/etc/passwd)", session5h, std::nullopt},
                    Row{"session limit · resets 5pm (../../etc/passwd)", session5h, std::nullopt},
                    Row{"session limit · it resets\n7 am (America/New_York)", session5h, 2},
                    Row{"first weekly limit · then session limit · resets 4pm (UTC)", weeklyAll, 6}));

class NotRecognised : public testing::TestWithParam<const char*> {};

TEST_P(NotRecognised, GivesNone) {
    EXPECT_FALSE(readLimitMessage(GetParam(), tenInTheMorning)) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(Texts, NotRecognised,
                         testing::Values("", "No response requested.", "session limit · resets Mon 5pm (UTC)",
                                         "Opus limit reached \u2219 resets 9am (UTC)",
                                         "session · limit · resets 9am (UTC)",
                                         "You have hit your limit · resets 5pm (UTC)", "session limit · resets 5pm UTC",
                                         "session limit · resets 5pm ()", "session limit · resets5pm (UTC)",
                                         "session limit \xff· resets 5pm (UTC)"));

TEST(LimitMessage, TomorrowKeepsTheClockTimeOverAClockChange) {
    const Date evening{1774724400}; // 2026-03-28T19:00:00Z, 20:00 in Berlin; the clocks go forward that night
    const auto message = readLimitMessage("session limit · resets 7pm (Europe/Berlin)", evening);
    ASSERT_TRUE(message);
    EXPECT_EQ(message->resetsAt, evening + 22 * hour);
}

TEST(LimitMessage, ContrivedTextsEnd) {
    std::string text;
    for (int i = 0; i < 40000; ++i) text += "session limit weekly ";
    EXPECT_FALSE(readLimitMessage(text, tenInTheMorning));
    EXPECT_FALSE(readLimitMessage(text + "· no", tenInTheMorning));
    EXPECT_TRUE(readLimitMessage(std::string(1 << 20, 'x') + "session limit · resets 3pm (UTC)", tenInTheMorning));
}

} // namespace
