#include "UsageEngine/TimeText.h"

#include <limits>

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::Calendar;

struct DurationRow {
    double seconds;
    const char* text;
};

class Duration : public testing::TestWithParam<DurationRow> {};

TEST_P(Duration, IsShortAndCoarse) {
    EXPECT_EQ(TimeText::duration(GetParam().seconds), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Rows, Duration,
                         testing::Values(DurationRow{0, "1m"}, DurationRow{59, "1m"}, DurationRow{60, "1m"},
                                         DurationRow{120, "2m"}, DurationRow{3599, "59m"}, DurationRow{3599.5, "1h"},
                                         DurationRow{3600, "1h"}, DurationRow{3660, "1h 1m"},
                                         DurationRow{7500, "2h 5m"}, DurationRow{21540, "5h 59m"},
                                         DurationRow{21600, "6h"}, DurationRow{21660, "6h"}, DurationRow{86399.6, "1d"},
                                         DurationRow{86400, "1d"}, DurationRow{90000, "1d 1h"},
                                         DurationRow{3 * 86400 + 59 * 60, "3d"}, DurationRow{-5, "1m"},
                                         DurationRow{-1e300, "1m"},
                                         DurationRow{std::numeric_limits<double>::quiet_NaN(), "1m"},
                                         DurationRow{1e300, "104166666666d 16h"}));

TEST(TimeText, UntilNothingIsADash) {
    EXPECT_EQ(TimeText::until(sunday, {}), "—");
    EXPECT_EQ(TimeText::until(sunday, sunday + 120.0), "2m");
}

TEST(TimeText, StampsHaveATwelveHourClock) {
    const Calendar utc = Calendar::utc();
    EXPECT_EQ(TimeText::shortStamp(sunday + 2 * day + 15 * hour + 300, utc), "Tue 3:05 PM");
    EXPECT_EQ(TimeText::dayAndTime(sunday + 2 * day + 15 * hour + 300, utc), "Tuesday at 3:05 PM");
    EXPECT_EQ(TimeText::clock(sunday, utc), "12:00 AM");
    EXPECT_EQ(TimeText::clock(sunday + 12 * hour, utc), "12:00 PM");
    EXPECT_EQ(TimeText::clock(sunday + 59.9, utc), "12:00 AM");
    EXPECT_EQ(TimeText::shortStamp(sunday, *Calendar::inZone("Asia/Kathmandu")), "Sun 5:45 AM");
    EXPECT_EQ(TimeText::shortStamp(sunday, *Calendar::inZone("America/New_York")), "Sat 7:00 PM");
}

TEST(TimeText, AnHourStampTellsTheHourThatHasBegun) {
    const Calendar utc = Calendar::utc();
    EXPECT_EQ(TimeText::hourStamp(sunday + 2 * day + 15 * hour + 3599.9, utc), "Tue 3 PM");
    EXPECT_EQ(TimeText::hourStamp(sunday, utc), "Sun 12 AM");
    EXPECT_EQ(TimeText::hourStamp(sunday + 12 * hour, utc), "Sun 12 PM");
    EXPECT_EQ(TimeText::hourStamp(sunday, *Calendar::inZone("Asia/Kathmandu")), "Sun 5 AM");
}

TEST(TimeText, AWeekdayHasThreeLetters) {
    std::string names;
    for (int i = 0; i < 7; ++i) names += TimeText::shortWeekday(sunday + i * day, Calendar::utc());
    EXPECT_EQ(names, "SunMonTueWedThuFriSat");
}

} // namespace
} // namespace UsageEngine
