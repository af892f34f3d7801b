#include "UsageIngest/LogLineParser.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using UsageIngest::Ignored;
using UsageIngest::LogLineParser;
using UsageIngest::ParsedLine;
using UsageModel::Anchor;
using UsageModel::ModelClass;
using UsageModel::UsageEvent;

ParsedLine parsed(const std::string& line) {
    LogLineParser parser;
    return parser.parse(line);
}

/// A turn's line with other members at its top level, in its message and in its usage.
std::string turn(const std::string& usage, const std::string& message = R"("model":"claude-opus-4-5",)",
                 const std::string& top = R"("sessionId":"s","timestamp":"2026-03-01T10:20:30.5Z",)") {
    return R"({"type":"assistant",)" + top + R"("message":{)" + message + R"("usage":{)" + usage + "}}}";
}

std::string synthetic(const std::string& content) {
    return R"({"type":"assistant","timestamp":"2026-03-01T10:00:00Z","message":{"model":"<synthetic>","usage":{"input_tokens":9},"content":)" +
           content + "}}";
}

TEST(LogLineParser, ReadsATurnWhole) {
    const ParsedLine line =
        parsed(R"({"type":"assistant","timestamp":"2026-03-01T10:20:30.5Z","sessionId":"abc","effort":"high",)"
               R"("message":{"model":"claude-sonnet-4-5","usage":{"input_tokens":1,"output_tokens":2,)"
               R"("cache_creation_input_tokens":3,"cache_read_input_tokens":4,"iterations":[{"input_tokens":99}]}}})");
    ASSERT_TRUE(std::holds_alternative<UsageEvent>(line));
    const UsageEvent expected{.ts = UsageModel::Date{1772360430.5},
                              .sessionId = "abc",
                              .model = "claude-sonnet-4-5",
                              .modelClass = ModelClass::sonnet,
                              .input = 1,
                              .output = 2,
                              .cacheCreation = 3,
                              .cacheRead = 4,
                              .effort = UsageModel::EffortLevel::high};
    EXPECT_EQ(std::get<UsageEvent>(line), expected);
}

class IgnoredLine : public testing::TestWithParam<std::string> {};

TEST_P(IgnoredLine, GivesNothing) {
    EXPECT_TRUE(std::holds_alternative<Ignored>(parsed(GetParam()))) << GetParam();
}

const std::string good = turn(R"("input_tokens":1)");

INSTANTIATE_TEST_SUITE_P(
    Lines, IgnoredLine,
    testing::Values(
        "", "{}", "{", "[]", "12", "// assistant", R"({"type":"user"})", R"({"type":"assistant"})",
        R"({"type":"Assistant"})", turn(""), turn(R"("input_tokens":0,"output_tokens":0)"),
        turn(R"("input_tokens":-5,"output_tokens":5)"), turn(R"("input_tokens":1)", "", R"("sessionId":"s",)"),
        turn(R"("input_tokens":1)", "", R"("timestamp":"2026-03-01T10:20",)"), turn(R"("input_tokens":"1")"),
        turn(R"("input_tokens":1.5)"), turn(R"("input_tokens":[1])"), turn(R"("input_tokens":true)"),
        turn(R"("input_tokens":9223372036854775808)"), turn(R"("input_tokens":1e19)"), turn(R"("input_tokens":1e400)"),
        turn(R"("input_tokens":123456789012345678901234567890)"), turn(R"("input_tokens":1)", R"("model":7,)"),
        turn(R"("input_tokens":1)", "", R"("sessionId":[],"timestamp":"2026-03-01T10:20:30Z",)"),
        turn(R"("input_tokens":1)", "", R"("effort":3,"timestamp":"2026-03-01T10:20:30Z",)"), good + "x", good + " {}",
        good.substr(0, good.size() - 1), "\xEF\xBB\xBF" + good, turn(R"("input_tokens":1)", "\"x\":\"\xff\","),
        turn(R"("input_tokens":1)", R"("x":"\ud800",)"), turn(R"("input_tokens":1)", R"("x":"\udc00",)"),
        turn(R"("input_tokens":1)", R"("x":"\udc00\ud800",)"),
        turn(R"("input_tokens":1)", std::string("\"x\":\"\0\",", 8)), std::string(10000, '[') + "assistant",
        synthetic("5"), synthetic("null"), synthetic(R"([{"text":7}])"), synthetic(R"("No response requested.")"),
        synthetic(R"x("session limit · resets Mon 5pm (UTC)")x")));

TEST(LogLineParser, AbsentAndNullCountsAreZero) {
    const auto only = std::get<UsageEvent>(parsed(turn(R"("cache_read_input_tokens":1,"input_tokens":null)")));
    EXPECT_EQ(only.input, 0);
    EXPECT_EQ(only.cacheRead, 1);
}

TEST(LogLineParser, IntegralNumbersOfAnySpellingCount) {
    EXPECT_EQ(std::get<UsageEvent>(parsed(turn(R"("input_tokens":1000.0)"))).input, 1000);
    EXPECT_EQ(std::get<UsageEvent>(parsed(turn(R"("input_tokens":1e3)"))).input, 1000);
    EXPECT_EQ(std::get<UsageEvent>(parsed(turn(R"("input_tokens":9223372036854775807)"))).input, 9223372036854775807);
    const auto beyond =
        std::get<UsageEvent>(parsed(turn(R"("input_tokens":9223372036854775807,"output_tokens":9223372036854775807)")));
    EXPECT_EQ(UsageModel::rawTokens(beyond), 9223372036854775807);
}

TEST(LogLineParser, EffortIsExactOrNone) {
    const auto effortOf = [](const std::string& effort) {
        return std::get<UsageEvent>(parsed(turn(R"("input_tokens":1)", "",
                                                R"("timestamp":"2026-03-01T10:20:30Z","effort":)" + effort + ",")))
            .effort;
    };
    EXPECT_EQ(effortOf(R"("high")"), UsageModel::EffortLevel::high);
    EXPECT_FALSE(effortOf(R"("HIGH")"));
    EXPECT_FALSE(effortOf("null"));
}

TEST(LogLineParser, AnUnnamedModelIsOther) {
    const auto event = std::get<UsageEvent>(parsed(turn(R"("input_tokens":1)", "")));
    EXPECT_TRUE(event.model.empty());
    EXPECT_EQ(event.modelClass, ModelClass::other);
}

TEST(LogLineParser, NumbersThatNoCountCouldHoldDoNotSpoilTheRest) {
    const std::string tool =
        R"("content":[{"input":{"id":123456789012345678901234567890,"e":-1e400,"s":"1e999 \" 99999999999999999999"}}],)";
    EXPECT_TRUE(std::holds_alternative<UsageEvent>(parsed(turn(R"("input_tokens":1)", tool))));
}

TEST(LogLineParser, AnEscapedTypeIsStillAssistant) {
    std::string line = good;
    line.replace(line.find("assistant"), 1, "\\u0061");
    EXPECT_TRUE(std::holds_alternative<UsageEvent>(parsed(line)));
}

TEST(LogLineParser, AnyLetterOfTheTypeMayBeEscaped) {
    const std::vector<std::string> escapes{"\\u0061", "\\u0073", "\\u0073", "\\u0069", "\\u0073",
                                           "\\u0074", "\\u0061", "\\u006E", "\\u0074"};
    for (std::size_t i = 0; i < escapes.size(); ++i) {
        std::string line = good;
        line.replace(line.find("assistant") + i, 1, escapes[i]);
        EXPECT_TRUE(std::holds_alternative<UsageEvent>(parsed(line))) << line;
    }
}

TEST(LogLineParser, TheTypeIsFoundWhereverItStands) {
    for (std::size_t length = 0; length < 200; ++length) {
        const std::string before = R"({"before":")" + std::string(length, 'a') + R"(",)";
        const std::string behind = R"(,"behind":")" + std::string(length, 's') + R"("})";
        const std::string line = before + good.substr(1, good.size() - 2) + behind;
        EXPECT_TRUE(std::holds_alternative<UsageEvent>(parsed(line))) << length;
        std::string last = R"({"timestamp":"2026-03-01T10:20:30Z","message":{"usage":{"input_tokens":1}},)";
        last += R"("x":")" + std::string(length, 'z') + R"(","type":"assistant"})";
        EXPECT_TRUE(std::holds_alternative<UsageEvent>(parsed(last))) << length;
    }
}

TEST(LogLineParser, ContentOfARealMessageIsNotLookedAt) {
    EXPECT_TRUE(std::holds_alternative<UsageEvent>(parsed(turn(R"("input_tokens":1)", R"("model":"m","content":5,)"))));
}

TEST(LogLineParser, LimitMessagesInEveryKindOfContent) {
    const std::string text = "You've hit your session limit · resets 3pm (Europe/Berlin)";
    for (const std::string& content :
         {"\"" + text + "\"", R"([{"type":"text","text":")" + text + R"("}])",
          R"([{"text":"a"},{"type":"x"},{"text":")" + text + R"("}])", R"("[{\"text\":\")" + text + R"(\"}]")"}) {
        const ParsedLine line = parsed(synthetic(content));
        ASSERT_TRUE(std::holds_alternative<Anchor>(line)) << content;
        const auto& anchor = std::get<Anchor>(line);
        EXPECT_EQ(anchor.window, UsageModel::WindowKind::session5h);
        EXPECT_EQ(anchor.kind, UsageModel::AnchorKind::ceiling);
        EXPECT_EQ(anchor.source, UsageModel::AnchorSource::syntheticLog);
        EXPECT_EQ(anchor.usedFraction, 1.0);
        EXPECT_EQ(anchor.resetsAt, UsageModel::Date{1772373600});
    }
}

TEST(LogLineParser, AnchorNeedsTextAndTimestamp) {
    const char* text = "Weekly limit reached · resets 12am (UTC)";
    EXPECT_TRUE(LogLineParser::anchor(text, "2026-03-01T10:00:00Z"));
    EXPECT_FALSE(LogLineParser::anchor(std::nullopt, "2026-03-01T10:00:00Z"));
    EXPECT_FALSE(LogLineParser::anchor(text, std::nullopt));
    EXPECT_FALSE(LogLineParser::anchor(text, "noon"));
}

TEST(LogLineParser, OneParserKeepsNothingOfEarlierLines) {
    LogLineParser parser;
    const ParsedLine first = parser.parse(good);
    static_cast<void>(parser.parse(turn(R"("input_tokens":1)", "\"x\":\"" + std::string(4'000'000, 'x') + "\",")));
    static_cast<void>(parser.parse("{broken assistant"));
    EXPECT_EQ(parser.parse(good), first);
}

} // namespace
