#include "UsageGauge/SettingsDocument.h"

#include <gtest/gtest.h>

#include "UsageModel/Json.h"

namespace UsageGauge {
namespace {

using UsageModel::Json::Error;

std::string rewritten(const std::string& text) {
    return SettingsDocument::parse(text).text();
}

TEST(SettingsDocument, IsWrittenOneMemberALineWithSortedKeys) {
    EXPECT_EQ(rewritten(R"({"b":{"z":1,"a":[true,null]},"a":"x"})"),
              "{\n  \"a\": \"x\",\n  \"b\": {\n    \"a\": [\n      true,\n      null\n    ],\n    \"z\": 1\n  }\n}\n");
}

TEST(SettingsDocument, NumbersKeepTheirDigits) {
    for (const std::string number :
         {"0", "-0", "1", "1.0", "1.50", "9007199254740993", "123456789012345678901234567890", "1e400", "-1E-400",
          "0.1000000000000000055511151231257827", "1e+2", "12345678901234567890.125"}) {
        EXPECT_EQ(rewritten("{\"a\":[" + number + "]}"), "{\n  \"a\": [\n    " + number + "\n  ]\n}\n");
    }
}

TEST(SettingsDocument, DigitsInTextsAndKeysAreNoNumbers) {
    EXPECT_EQ(rewritten(R"({"1":"2","a":"x \" 3 \\","b":"\\"})"),
              "{\n  \"1\": \"2\",\n  \"a\": \"x \\\" 3 \\\\\",\n  \"b\": \"\\\\\"\n}\n");
}

TEST(SettingsDocument, ControlCharactersOfTheUserStayTexts) {
    EXPECT_EQ(rewritten(R"({"a":"\u00015","b":"\u0002\"\u00017","c":1})"),
              "{\n  \"a\": \"\\u00015\",\n  \"b\": \"\\u0002\\\"\\u00017\",\n  \"c\": 1\n}\n");
}

TEST(SettingsDocument, EscapedAndPlainLettersAreOneText) {
    EXPECT_EQ(rewritten(R"({"a":"\u00e9é\ud83d\ude00"})"), "{\n  \"a\": \"éé😀\"\n}\n");
}

TEST(SettingsDocument, TheLastMemberOfANameCounts) {
    EXPECT_EQ(rewritten(R"({"a":1,"a":2})"), "{\n  \"a\": 2\n}\n");
}

TEST(SettingsDocument, EmptyTextAMarkAndOtherTopLevelsAreEmpty) {
    for (const char* text : {"", "\xEF\xBB\xBF", "[1]", "null", "5", "\"x\"", "{}", "\xEF\xBB\xBF{}"}) {
        EXPECT_TRUE(SettingsDocument::parse(text).empty()) << text;
    }
    EXPECT_FALSE(SettingsDocument::parse("\xEF\xBB\xBF{\"a\":1}").empty());
}

TEST(SettingsDocument, WhatIsNoJsonThrows) {
    for (const std::string text :
         {"{", " ", "{\"a\":1,}", "{} x", "// c\n{}", "{\"a\":01}", "{\"a\":\"\xFF\"}", "{'a':1}"}) {
        EXPECT_THROW(SettingsDocument::parse(text), Error) << text;
    }
    EXPECT_THROW(SettingsDocument::parse(std::string("{}\0", 3)), Error);
}

TEST(SettingsDocument, NestingHasABound) {
    const auto nested = [](int depth) {
        const auto count = static_cast<std::size_t>(depth);
        return "{\"a\":" + std::string(count, '[') + std::string(count, ']') + "}";
    };
    EXPECT_NO_THROW(static_cast<void>(rewritten(nested(SettingsDocument::greatestDepth - 2))));
    EXPECT_THROW(SettingsDocument::parse(nested(100'000)), Error);
}

TEST(SettingsDocument, MembersAreTextsOfJson) {
    SettingsDocument document = SettingsDocument::parse(R"({"a":{"n":1.0,"m":1e400}})");
    EXPECT_EQ(document.member("a"), R"({"m":1e400,"n":1.0})");
    EXPECT_FALSE(document.member("b"));

    document.setMember("b", " [1, 2.50] ");
    EXPECT_EQ(document.member("b"), "[1,2.50]");
    EXPECT_THROW(document.setMember("b", "oops"), Error);
    EXPECT_EQ(document.member("b"), "[1,2.50]");

    document.removeMember("a");
    document.removeMember("b");
    EXPECT_TRUE(document.empty());
    EXPECT_EQ(document.text(), "{}\n");
}

} // namespace
} // namespace UsageGauge
