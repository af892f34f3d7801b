#include "UsageIngest/TimeParsing.h"

#include <gtest/gtest.h>

namespace {

using UsageIngest::TimeParsing::civilToEpochDays;
using UsageIngest::TimeParsing::iso8601UTC;

struct Row {
    const char* text;
    double seconds;
};

class GoodTimestamp : public testing::TestWithParam<Row> {};

TEST_P(GoodTimestamp, IsRead) {
    const auto date = iso8601UTC(GetParam().text);
    ASSERT_TRUE(date) << GetParam().text;
    EXPECT_EQ(date->secondsSince1970, GetParam().seconds) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Forms, GoodTimestamp,
    testing::Values(Row{"1970-01-01T00:00:00Z", 0}, Row{"2026-03-01T10:20:30Z", 1772360430},
                    Row{"2026-03-01 10:20:30+09:00", 1772360430}, Row{"2026-03-01T10:20:30", 1772360430},
                    Row{"2026-03-01T10:20:30.5Z", 1772360430.5}, Row{"2026-03-01T10:20:30.12Z", 1772360430.12},
                    Row{"2026-03-01T10:20:30.123456Z", 1772360430.123},
                    Row{"2026-03-01T10:20:30.9999Z", 1772360430.999}, Row{"2026-03-01T10:20:30.", 1772360430},
                    Row{"2026-03-01T10:20:30.x5", 1772360430}, Row{"2026-03-01T10:20:30,5", 1772360430},
                    Row{"1969-12-31T23:59:59.5Z", -0.5}, Row{"2024-02-29T00:00:00Z", 1709164800},
                    Row{"2026-01-31T25:61:61Z", 1769911321}, Row{"0000-03-01T00:00:00Z", -62162035200.0}));

class BadTimestamp : public testing::TestWithParam<const char*> {};

TEST_P(BadTimestamp, IsNone) {
    EXPECT_FALSE(iso8601UTC(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Forms, BadTimestamp,
                         testing::Values("", "2026-03-01T10:20", "2026-03-01T10:20:3", "2026/03/01T10:20:30",
                                         "2026-03-01t10:20:30", "2026-03-01T10-20-30", "x026-03-01T10:20:30",
                                         " 2026-03-01T10:20:30", "2026-3-01T10:20:30Z", "+026-03-01T10:20:30",
                                         "٢026-03-01T10:20:3"));

TEST(CivilToEpochDays, CountsLikeTheCalendar) {
    EXPECT_EQ(civilToEpochDays({1970, 1, 1}), 0);
    EXPECT_EQ(civilToEpochDays({2000, 3, 1}), 11017);
    EXPECT_EQ(civilToEpochDays({1969, 12, 31}), -1);
    EXPECT_EQ(civilToEpochDays({1600, 2, 29}), -135081);
    EXPECT_EQ(civilToEpochDays({-1, 12, 31}), -719529);
    EXPECT_EQ(civilToEpochDays({2026, 2, 31}), civilToEpochDays({2026, 3, 3}));
}

} // namespace
