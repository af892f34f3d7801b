#include "UsageEngine/WholePercent.h"

#include <limits>

#include <gtest/gtest.h>

namespace UsageEngine {
namespace {

struct PercentRow {
    double fraction;
    std::string text;
};

class WholePercentTest : public testing::TestWithParam<PercentRow> {};

TEST_P(WholePercentTest, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(wholePercent(GetParam().fraction), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Rows, WholePercentTest,
                         testing::Values(PercentRow{0, "0"}, PercentRow{-0.0, "0"}, PercentRow{0.004, "0"},
                                         PercentRow{0.00499999, "0"}, PercentRow{0.005, "1"}, PercentRow{0.015, "2"},
                                         PercentRow{0.025, "3"}, PercentRow{0.705, "71"}, PercentRow{0.99, "99"},
                                         PercentRow{0.994, "99"}, PercentRow{0.995, "100"}, PercentRow{1, "100"},
                                         PercentRow{1.5, "150"}, PercentRow{12.34, "1234"},
                                         PercentRow{1234567.0, "123456700"}, PercentRow{-0.004, "0"},
                                         PercentRow{-0.005, "-1"}, PercentRow{-0.254, "-25"}, PercentRow{1e-300, "0"}));

TEST(WholePercent, RoundsWhatAHundredTimesGives) {
    EXPECT_EQ(wholePercent(0.285), "28") << "a hundred times that is a little less than 28.5";
    EXPECT_EQ(wholePercent(0.145), "14") << "and than 14.5";
}

TEST(WholePercent, HasRoomForTheLongest) {
    const std::string longest = wholePercent(std::numeric_limits<double>::max() / 128.0);
    EXPECT_EQ(longest.size(), 309U);
    EXPECT_EQ(wholePercent(-std::numeric_limits<double>::max() / 128.0), "-" + longest);
}

} // namespace
} // namespace UsageEngine
