#include "HarrowlaneApp/Copy/Figures.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace HarrowlaneApp {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Percent, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(Figures::percent(0.625), "63%");
    EXPECT_EQ(Figures::percent(0.125), "13%");
    EXPECT_EQ(Figures::percent(-0.125), "-13%");
    EXPECT_EQ(Figures::percent(0.0), "0%");
    EXPECT_EQ(Figures::percentNumber(1.053), "105");
    EXPECT_EQ(Figures::wholePercent(0.645), 65.0);
}

TEST(Percent, HasNoNegativeZero) {
    EXPECT_EQ(Figures::percent(-0.001), "0%");
    EXPECT_FALSE(std::signbit(Figures::wholePercent(-0.001)));
}

TEST(Percent, OfAHugeNumberHasAllItsDigits) {
    EXPECT_EQ(Figures::percent(1e20), "10000000000000000000000%");
    EXPECT_EQ(Figures::percentNumber(std::numeric_limits<double>::max()), "—");
    EXPECT_EQ(Figures::fixed(std::numeric_limits<double>::max(), 2).size(), 312U);
}

TEST(Fixed, HasSoManyDigitsBehindThePoint) {
    EXPECT_EQ(Figures::fixed(1.336, 2), "1.34");
    EXPECT_EQ(Figures::fixed(0.125, 2), "0.12") << "a tie goes to the even digit, as printf has it";
    EXPECT_EQ(Figures::fixed(9.96, 1), "10.0");
    EXPECT_EQ(Figures::fixed(3.0, 0), "3");
    EXPECT_EQ(Figures::multiple(0.0207), "0.02×");
    EXPECT_EQ(Figures::finePercent(0.2788), "27.9%");
}

TEST(Fixed, OfWhatIsNoNumberIsADash) {
    EXPECT_EQ(Figures::fixed(std::nan(""), 1), "—");
    EXPECT_EQ(Figures::multiple(infinity), "—×");
    EXPECT_EQ(Figures::percent(-infinity), "—%");
}

} // namespace
} // namespace HarrowlaneApp
