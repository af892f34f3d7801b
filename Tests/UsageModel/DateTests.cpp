#include "UsageModel/Date.h"

#include <limits>

#include <gtest/gtest.h>

#include "UsageModel/Printing.h"

namespace UsageModel {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Date, IsTheBeginningOf1970UnlessTold) {
    EXPECT_EQ(Date{}, Date{0.0});
}

TEST(Date, DifferenceOfTwoIsASpanInSeconds) {
    EXPECT_EQ(Date{100.5} - Date{40.25}, 60.25);
    EXPECT_EQ(Date{-10} - Date{10}, -20.0);
}

TEST(Date, MovesBySeconds) {
    EXPECT_EQ(Date{10} + 5.5, Date{15.5});
    EXPECT_EQ(Date{10} - 5.5, Date{4.5});
    EXPECT_EQ(Date{10} + -15.0, Date{-5});
}

TEST(Date, IsOrderedByTime) {
    EXPECT_LT(Date{1}, Date{2});
    EXPECT_LE(Date{2}, Date{2});
    EXPECT_GT(Date{2}, Date{-2});
    EXPECT_NE(Date{1}, Date{1.0000001});
    EXPECT_LT(Date{-infinity}, Date{0});
    EXPECT_GT(Date{infinity}, Date{1e300});
}

TEST(Date, ThatIsNoNumberIsUnordered) {
    EXPECT_FALSE(Date{notANumber} == Date{notANumber});
    EXPECT_FALSE(Date{notANumber} < Date{0});
    EXPECT_FALSE(Date{notANumber} >= Date{0});
}

} // namespace
} // namespace UsageModel
