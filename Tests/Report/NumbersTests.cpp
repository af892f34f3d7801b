#include "Report/Numbers.h"

#include <limits>

#include <gtest/gtest.h>

namespace Report {
namespace {

TEST(Numbers, AreGroupedByThousands) {
    EXPECT_EQ(grouped(0), "0");
    EXPECT_EQ(grouped(999), "999");
    EXPECT_EQ(grouped(1000), "1,000");
    EXPECT_EQ(grouped(1234567), "1,234,567");
    EXPECT_EQ(grouped(-123), "-123");
    EXPECT_EQ(grouped(-1234), "-1,234");
    EXPECT_EQ(grouped(std::numeric_limits<std::int64_t>::min()), "-9,223,372,036,854,775,808");
}

TEST(Numbers, CompactKeepsEveryDigitOfSmallOnes) {
    EXPECT_EQ(compact(0), "0");
    EXPECT_EQ(compact(9999), "9,999");
    EXPECT_EQ(compact(-9999), "-9,999");
}

TEST(Numbers, CompactTakesTheLetterThatFits) {
    EXPECT_EQ(compact(10'000), "10.0k");
    EXPECT_EQ(compact(12'345'678), "12.3M");
    EXPECT_EQ(compact(-12'345'678), "-12.3M");
    EXPECT_EQ(compact(4'000'000'000), "4.0B");
    EXPECT_EQ(compact(7'100'000'000'000), "7.1T");
    EXPECT_EQ(compact(std::numeric_limits<std::int64_t>::max()), "9223.4Q");
}

TEST(Numbers, CompactNeverRoundsUpToAThousand) {
    EXPECT_EQ(compact(999'949), "999.9k");
    EXPECT_EQ(compact(999'951), "1.0M");
    EXPECT_EQ(compact(999'999'999), "1.0B");
}

TEST(Numbers, UnitsHaveDecimalsWhileTheyMatter) {
    EXPECT_EQ(unitsText(0), "0.0000");
    EXPECT_EQ(unitsText(0.12344), "0.1234");
    EXPECT_EQ(unitsText(-2), "-2.0000");
    EXPECT_EQ(unitsText(1234.4), "1,234");
    EXPECT_EQ(unitsText(1e13), "1e+13");
}

TEST(Numbers, PercentagesHaveADecimalWhereThereIsOne) {
    EXPECT_EQ(percentText(42), "42%");
    EXPECT_EQ(percentText(99.4), "99%");
    EXPECT_EQ(percentText(99.96), "100%");
    EXPECT_EQ(percentText(140), "140%");
    EXPECT_EQ(percentText(1e300), "1e+300%");
}

TEST(Numbers, DurationsNameTheirTwoLargestParts) {
    EXPECT_EQ(durationText(-5), "less than a minute");
    EXPECT_EQ(durationText(59.9), "less than a minute");
    EXPECT_EQ(durationText(60), "1 min");
    EXPECT_EQ(durationText(3599), "59 min");
    EXPECT_EQ(durationText(2 * 3600 + 13 * 60), "2 h 13 min");
    EXPECT_EQ(durationText(3 * 86400 + 4 * 3600 + 59), "3 d 4 h");
    EXPECT_EQ(durationText(1e300), "3703703 d 16 h");
}

TEST(Numbers, OneLineTakesAwayWhatATerminalWouldObey) {
    EXPECT_EQ(oneLine("a\nb\x1b[31m\x7f\tc"), "a?b?[31m??c");
    EXPECT_EQ(oneLine("Größe"), "Größe");
}

TEST(Numbers, ColumnsAreCountedByCharacters) {
    EXPECT_EQ(columnsOf(""), 0U);
    EXPECT_EQ(columnsOf("abc"), 3U);
    EXPECT_EQ(columnsOf("Session · 5h"), 12U);
}

} // namespace
} // namespace Report
