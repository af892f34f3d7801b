#include "UsageIngest/OversizedNumbers.h"

#include <string>

#include <gtest/gtest.h>

namespace {

std::string masked(std::string text) {
    UsageIngest::maskOversizedNumbers(text);
    return text;
}

TEST(OversizedNumbers, AreReplacedAtTheirLength) {
    EXPECT_EQ(masked("[99999999999999999999]"), "[1e99                ]");
    EXPECT_EQ(masked("{\"a\":-1e400,\"b\":1}"), "{\"a\":1e99  ,\"b\":1}");
    EXPECT_EQ(masked("9223372036854775808"), "1e99               ");
}

TEST(OversizedNumbers, EverythingElseStays) {
    for (const char* text :
         {"9223372036854775807", "-9223372036854775808", "1e308", "\"1e400 99999999999999999999\"", "\"\\\"\" 1",
          "\"\\\\\"", "0999999999999999999999", "1e400e", "-", "1.", ".5", "\"torn 1e400", ""}) {
        std::string copy = text;
        EXPECT_FALSE(UsageIngest::maskOversizedNumbers(copy)) << text;
        EXPECT_EQ(copy, text);
    }
}

} // namespace
