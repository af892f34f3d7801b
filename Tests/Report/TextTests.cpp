#include "Report/Text.h"

#include <limits>

#include <gtest/gtest.h>

namespace Report {
namespace {

TEST(Text, APercentageIsWhole) {
    EXPECT_EQ(percentText(0.42), "42%");
    EXPECT_EQ(percentText(0.994), "99%");
    EXPECT_EQ(percentText(0.125), "13%");
    EXPECT_EQ(percentText(-0.125), "-13%");
    EXPECT_EQ(percentText(-0.004), "0%");
    EXPECT_EQ(percentText(1.4), "140%");
    EXPECT_EQ(percentText(1e300), "1e+302%");
}

TEST(Text, AMultipleHasTwoDecimals) {
    EXPECT_EQ(multipleText(1.236), "1.24×");
    EXPECT_EQ(multipleText(0), "0.00×");
}

TEST(Text, NumbersAreGroupedByThousands) {
    EXPECT_EQ(grouped(0), "0");
    EXPECT_EQ(grouped(999), "999");
    EXPECT_EQ(grouped(1000), "1,000");
    EXPECT_EQ(grouped(1234567), "1,234,567");
    EXPECT_EQ(grouped(-123), "-123");
    EXPECT_EQ(grouped(std::numeric_limits<std::int64_t>::min()), "-9,223,372,036,854,775,808");
}

TEST(Text, OneLineTakesAwayWhatATerminalWouldObey) {
    EXPECT_EQ(oneLine("a\nb\x1b[31m\x7f\tc"), "a?b?[31m??c");
    EXPECT_EQ(oneLine("csi \u009b31m"), "csi ?31m");
    EXPECT_EQ(oneLine(std::string_view("nul\0!", 5)), "nul?!");
}

TEST(Text, OneLineTakesAwayWhatHidesOrTurnsText) {
    EXPECT_EQ(oneLine("a\u202eb\u200bc\u2028d\ufeffe"), "a?b?c?d?e");
}

TEST(Text, OneLineTakesAwayWhatIsNoUtf8) {
    EXPECT_EQ(oneLine("\x9b"
                      "31m"),
              "?31m");
    EXPECT_EQ(oneLine("\xc0\xaf"), "??");
    EXPECT_EQ(oneLine("\xed\xa0\x80"), "???");
    EXPECT_EQ(oneLine("cut \xe2\x82"), "cut ??");
    EXPECT_EQ(oneLine("\xf4\x90\x80\x80"), "????");
}

TEST(Text, OneLineKeepsWords) {
    EXPECT_EQ(oneLine("Größe · 大きさ 🙂"), "Größe · 大きさ 🙂");
}

TEST(Text, ColumnsAreCountedAsTheyAreDrawn) {
    EXPECT_EQ(columnsOf(""), 0U);
    EXPECT_EQ(columnsOf("Session · 5h"), 12U);
    EXPECT_EQ(columnsOf("大きさ"), 6U);
    EXPECT_EQ(columnsOf("e\u0301"), 1U);
    EXPECT_EQ(columnsOf("🙂"), 2U);
}

TEST(Text, ABeginningNeverCutsACharacter) {
    EXPECT_EQ(beginning("Größe", 3), "Grö");
    EXPECT_EQ(beginning("大きさ", 3), "大");
    EXPECT_EQ(beginning("e\u0301e", 1), "e\u0301");
    EXPECT_EQ(beginning("abc", 9), "abc");
    EXPECT_EQ(beginning("abc", 0), "");
}

TEST(Text, IsShortenedWhereItMustBe) {
    EXPECT_EQ(shortened("abc", 3), "abc");
    EXPECT_EQ(shortened("abcd", 3), "ab…");
    EXPECT_EQ(shortened("abcd", 1), "…");
    EXPECT_EQ(shortened("abcd", 0), "");
}

TEST(Text, IsFilledUpToAWidth) {
    EXPECT_EQ(padded("é", 3), "é  ");
    EXPECT_EQ(padded("abcd", 3), "abcd");
    EXPECT_EQ(rightAligned("7%", 4), "  7%");
    EXPECT_EQ(rightAligned("100%", 3), "100%");
}

TEST(Text, AsciiTakesTheSameColumns) {
    EXPECT_EQ(asciiOf("Opus · weekly — ≈34% 1.2×…"), "Opus - weekly - ~34% 1.2x.");
    EXPECT_EQ(asciiOf("Größe 大"), "Gr??e ??");
    EXPECT_EQ(asciiOf("█▌▍░┃"), "##..|");
}

} // namespace
} // namespace Report
