#include "UsageModel/JsonNumbers.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

std::vector<std::string> numbersIn(std::string_view json) {
    std::vector<std::string> numbers;
    UsageModel::forEachNumber(json, [&](std::string_view number) { numbers.emplace_back(number); });
    return numbers;
}

using Numbers = std::vector<std::string>;

TEST(JsonNumbers, AreFoundWhereverTheyStand) {
    EXPECT_EQ(numbersIn(R"({"a":1,"b":[-2.5e+3 ,0],"c":{"d":1e400}})"), (Numbers{"1", "-2.5e+3", "0", "1e400"}));
    EXPECT_EQ(numbersIn("7"), Numbers{"7"});
    EXPECT_EQ(numbersIn(""), Numbers{});
}

TEST(JsonNumbers, TextsHoldNone) {
    EXPECT_EQ(numbersIn(R"({"1":"2","a":"\" 3","b":"\\","c":4,"d":"5)"), Numbers{"4"});
    EXPECT_EQ(numbersIn("\"\\"), Numbers{});
}

TEST(JsonNumbers, WhatTheGrammarDoesNotReadIsNone) {
    EXPECT_EQ(numbersIn("[01, +1, 1., .5, 1e, --1, 1-2, -, e5, 1.2.3]"), Numbers{});
}

TEST(JsonNumbers, ArePartsOfTheText) {
    const std::string json = "[ 12]";
    UsageModel::forEachNumber(json, [&](std::string_view number) { EXPECT_EQ(number.data(), json.data() + 2); });
}

} // namespace
