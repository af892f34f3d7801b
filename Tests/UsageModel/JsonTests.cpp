#include "UsageModel/Json.h"

#include <gmock/gmock.h>

#include "UsageModel/Anchor.h"
#include "UsageModel/IngestProgress.h"
#include "UsageModel/Printing.h"
#include "UsageModel/Rows.h"
#include "UsageModel/SampleRecords.h"
#include "UsageModel/StatusLineInput.h"

namespace UsageModel {
namespace {

using namespace std::string_view_literals;
using nlohmann::json;
using testing::ElementsAre;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct TextRow : TestSupport::Named {
    std::string_view text;
};

class NoJsonTest : public testing::TestWithParam<TextRow> {};

TEST_P(NoJsonTest, IsRefused) {
    EXPECT_THROW((void)Json::parse(GetParam().text), Json::Error);
    EXPECT_EQ(Json::decodeText<StatusLineInput>(GetParam().text), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, NoJsonTest,
    testing::Values(
        TextRow{"empty", ""}, TextRow{"blank", " \t\r\n"}, TextRow{"a word", "nothing"},
        TextRow{"torn object", R"({"a":)"}, TextRow{"torn string", R"({"a":"b)"}, TextRow{"two texts", "{} {}"},
        TextRow{"trailing word", "{} x"}, TextRow{"trailing comma", R"({"a":1,})"}, TextRow{"a comment", "{/* */}"},
        TextRow{"a bare name", "{a:1}"}, TextRow{"a leading zero", R"({"a":01})"},
        TextRow{"a leading plus", R"({"a":+1})"}, TextRow{"a bare dot", R"({"a":1.})"},
        TextRow{"hexadecimal", R"({"a":0x1})"}, TextRow{"not a number", R"({"a":NaN})"},
        TextRow{"infinity", R"({"a":Infinity})"}, TextRow{"a raw line feed in a string", "{\"a\":\"\n\"}"},
        TextRow{"a raw NUL in a string", "{\"a\":\"\0\"}"sv}, TextRow{"a NUL before", "\0{}"sv},
        TextRow{"a NUL behind", "{}\0"sv}, TextRow{"words behind a NUL", "{}\0more"sv},
        TextRow{"a byte order mark", "\xEF\xBB\xBF{}"}, TextRow{"two bytes a character", "\xFF\xFE{\0}\0"sv},
        TextRow{"a byte that is no UTF 8", "{\"a\":\"\xFF\"}"}, TextRow{"a character cut short", "{\"a\":\"\xC3\"}"},
        TextRow{"an overlong character", "{\"a\":\"\xC0\xAF\"}"},
        TextRow{"a surrogate as UTF 8", "{\"a\":\"\xED\xA0\x80\"}"},
        TextRow{"a lone high surrogate", R"({"a":"\ud800"})"}, TextRow{"a lone low surrogate", R"({"a":"\udc00"})"},
        TextRow{"a high surrogate before a letter", R"({"a":"\ud800x"})"},
        TextRow{"an unknown escape", R"({"a":"\x41"})"}, TextRow{"an unknown escape in a name", R"({"\q":1})"}),
    TestSupport::rowName);

TEST(JsonParse, TakesBlanksAroundTheText) {
    EXPECT_EQ(Json::parse(" \t\r\n{} \n"), json::object());
}

TEST(JsonParse, ReadsEscapesAndPairsOfSurrogates) {
    EXPECT_EQ(Json::parse(R"("a\u0000\n\u00e9\ud83d\ude00")"), std::string("a\0\né😀", 9));
}

TEST(JsonParse, ReadsWhatIsNoObject) {
    EXPECT_EQ(Json::parse("5"), 5);
    EXPECT_TRUE(Json::parse("null").is_null());
    EXPECT_EQ(Json::parse("[]"), json::array());
}

std::string nested(std::size_t depth, std::string_view open, std::string_view inmost, std::string_view close) {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) text += open;
    text += inmost;
    for (std::size_t i = 0; i < depth; ++i) text += close;
    return text;
}

TEST(JsonParse, SurvivesDeepNesting) {
    constexpr std::size_t depth = 10'000;
    EXPECT_TRUE(Json::parse(nested(depth, "[", "", "]")).is_array());
    EXPECT_TRUE(Json::parse(nested(depth, R"({"a":)", "1", "}")).is_object());
    EXPECT_THROW((void)Json::parse(nested(depth, "[", "", "")), Json::Error);
}

TEST(JsonDecode, IgnoresADeeplyNestedMember) {
    const std::string text =
        R"({"x":)" + nested(10'000, "[", "", "]") + R"(,"rate_limits":{"five_hour":{"used_percentage":5}}})";
    const auto input = Json::decodeText<StatusLineInput>(text);
    ASSERT_TRUE(input);
    EXPECT_EQ(input->rate_limits->five_hour->used_percentage, 5.0);
}

TEST(JsonDecode, RefusesADeeplyNestedMemberOfItsOwn) {
    const std::string text =
        R"({"rate_limits":{"five_hour":{"used_percentage":)" + nested(10'000, "[", "5", "]") + "}}}";
    EXPECT_EQ(Json::decodeText<StatusLineInput>(text), std::nullopt);
}

TEST(JsonDecode, TakesOneOfTwoMembersOfOneName) {
    const auto progress =
        Json::decodeText<IngestProgress>(R"({"bytesDone":1,"bytesDone":2,"bytesTotal":9,"complete":false})");
    ASSERT_TRUE(progress);
    EXPECT_TRUE(progress->bytesDone == 1 || progress->bytesDone == 2) << progress->bytesDone;

    const auto weights = Json::decodeText<EnumMap<ModelClass, double>>(R"({"opus":1,"opus":2})");
    ASSERT_TRUE(weights);
    EXPECT_EQ(weights->size(), 1U);
}

struct IntegerRow : TestSupport::Named {
    std::string_view text;
    std::optional<std::int64_t> expected;
};

class IntegerTest : public testing::TestWithParam<IntegerRow> {};

TEST_P(IntegerTest, IsExactOrRefused) {
    EXPECT_EQ(Json::decodeText<std::int64_t>(GetParam().text), GetParam().expected);
}

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

INSTANTIATE_TEST_SUITE_P(
    Numbers, IntegerTest,
    testing::Values(IntegerRow{"zero", "0", 0}, IntegerRow{"minus zero", "-0", 0}, IntegerRow{"negative", "-5", -5},
                    IntegerRow{"with a fraction of zero", "1000.0", 1000}, IntegerRow{"with an exponent", "1e3", 1000},
                    IntegerRow{"with a small exponent", "1.5e1", 15}, IntegerRow{"a fraction", "5.5", std::nullopt},
                    IntegerRow{"a tiny fraction", "1e-9", std::nullopt},
                    IntegerRow{"beyond the exact doubles", "9007199254740993", 9007199254740993},
                    IntegerRow{"the largest", "9223372036854775807", most},
                    IntegerRow{"two to the 63", "9223372036854775808", std::nullopt},
                    IntegerRow{"two to the 63 as a fraction", "9223372036854775808.0", std::nullopt},
                    IntegerRow{"two to the 64", "18446744073709551616", std::nullopt},
                    IntegerRow{"the smallest", "-9223372036854775808", least},
                    IntegerRow{"one below the smallest", "-9223372036854775809", std::nullopt},
                    IntegerRow{"far below the smallest", "-1e19", std::nullopt},
                    IntegerRow{"far above the largest", "1e19", std::nullopt},
                    IntegerRow{"too large for any number", "1e400", std::nullopt},
                    IntegerRow{"too small for any number", "-1e400", std::nullopt},
                    IntegerRow{"a text", R"("5")", std::nullopt}, IntegerRow{"true", "true", std::nullopt},
                    IntegerRow{"null", "null", std::nullopt}, IntegerRow{"a list", "[5]", std::nullopt}),
    TestSupport::rowName);

TEST(JsonToInteger, ReadsValuesMadeByHand) {
    EXPECT_EQ(Json::toInteger(json(std::uint64_t{7})), 7);
    EXPECT_EQ(Json::toInteger(json(most)), most);
    EXPECT_EQ(Json::toInteger(json(least)), least);
    for (const double value : {notANumber, infinity, -infinity}) {
        EXPECT_THROW((void)Json::toInteger(json(value)), Json::Error) << value;
    }
}

TEST(JsonDouble, TakesAnyNumber) {
    EXPECT_EQ(Json::decodeText<double>("5"), 5.0);
    EXPECT_EQ(Json::decodeText<double>("-0.25"), -0.25);
    EXPECT_EQ(Json::decodeText<double>("18446744073709551616"), 18446744073709551616.0);
    EXPECT_EQ(Json::decodeText<double>("1e308"), 1e308);
    EXPECT_EQ(Json::decodeText<double>("1e-400"), 0.0);
}

TEST(JsonDouble, RefusesWhatIsNoNumber) {
    for (const std::string_view text : {"1e400", "-1e400", "\"5\"", "true", "null", "[]", "{}"}) {
        EXPECT_EQ(Json::decodeText<double>(text), std::nullopt) << text;
    }
}

TEST(JsonDouble, KeepsEveryBit) {
    for (const double value : {0.1, 1.0 / 3, 1790000000.123456, 5e-324, 1.7976931348623157e308, -0.0}) {
        EXPECT_EQ(Json::decodeText<double>(Json::toText(Json::encode(value))), value);
    }
}

TEST(JsonDouble, ThatIsNotFiniteIsWrittenAsNull) {
    EXPECT_EQ(Json::toText(Json::encode(notANumber)), "null");
    EXPECT_EQ(Json::toText(Json::encode(infinity)), "null");
}

TEST(JsonDate, IsSecondsSince1970) {
    EXPECT_EQ(Json::toText(Json::encode(Date{1790000000.5})), "1790000000.5");
    EXPECT_EQ(Json::decodeText<Date>("-5"), Date{-5});
    EXPECT_EQ(Json::decodeText<Date>(R"("2026-01-01")"), std::nullopt);
}

TEST(JsonBool, IsOnlyATruthValue) {
    EXPECT_EQ(Json::decodeText<bool>("true"), true);
    EXPECT_EQ(Json::decodeText<bool>("false"), false);
    for (const std::string_view text : {"0", "1", "\"true\"", "null"}) {
        EXPECT_EQ(Json::decodeText<bool>(text), std::nullopt) << text;
    }
}

TEST(JsonText, KeepsEveryCharacter) {
    const std::string text("a\0\"\\\n\x1F é😀", 14);
    EXPECT_EQ(Json::decodeText<std::string>(Json::toText(Json::encode(text))), text);
    EXPECT_EQ(Json::decodeText<SharedText>(Json::toText(Json::encode(SharedText(text)))), SharedText(text));
}

TEST(JsonText, ThatIsNoUtf8GetsReplacementCharacters) {
    const std::string text = Json::toText(Json::encode(std::string("a\xFF"
                                                                   "b")));
    EXPECT_EQ(text, "\"a\xEF\xBF\xBD"
                    "b\"");
    EXPECT_EQ(Json::toText(Json::encode(SharedText("\xC3"))), "\"\xEF\xBF\xBD\"");
}

TEST(JsonText, IsOneLine) {
    const std::string text = Json::toText(Json::encode(TestSupport::Sample<UsageSnapshot>::full()));
    EXPECT_EQ(text.find('\n'), std::string::npos);
}

TEST(JsonEnum, IsItsTextForm) {
    EXPECT_EQ(Json::encode(WindowKind::weeklyOpus), "weeklyOpus");
    EXPECT_EQ(Json::decodeText<WindowKind>(R"("session5h")"), WindowKind::session5h);
    for (const std::string_view text :
         {R"("five_hour")", R"("Session5h")", R"("")", "0", "null", R"("session5h\u0000")"}) {
        EXPECT_EQ(Json::decodeText<WindowKind>(text), std::nullopt) << text;
    }
}

struct UnknownRow : TestSupport::Named {
    std::string_view member;
};

class UnknownNameTest : public testing::TestWithParam<UnknownRow> {};

TEST_P(UnknownNameTest, FailsTheWholeAnchor) {
    json form = Json::encode(TestSupport::Sample<Anchor>::full());
    form[std::string(GetParam().member)] = "somethingElse";
    EXPECT_THROW((void)Json::decode<Anchor>(form), Json::Error);
}

INSTANTIATE_TEST_SUITE_P(Members, UnknownNameTest,
                         testing::Values(UnknownRow{"a source", "source"}, UnknownRow{"a window", "window"},
                                         UnknownRow{"a kind", "kind"}),
                         TestSupport::rowName);

TEST(JsonEnum, AnUnknownNameFailsTheWholeTurn) {
    for (const char* member : {"modelClass", "effort"}) {
        json form = Json::encode(TestSupport::Sample<UsageEvent>::full());
        form[member] = "somethingElse";
        EXPECT_THROW((void)Json::decode<UsageEvent>(form), Json::Error) << member;
    }
}

TEST(JsonEnumMap, IsAnObjectKeyedByTextForms) {
    const EnumMap<EffortLevel, double> map{{EffortLevel::max, 2.0}, {EffortLevel::low, 0.0}};
    EXPECT_EQ(Json::toText(Json::encode(map)), R"({"low":0.0,"max":2.0})");
    EXPECT_EQ((Json::decodeText<EnumMap<EffortLevel, double>>(R"({"max":2,"low":0})")), map);
    EXPECT_EQ((Json::decodeText<EnumMap<EffortLevel, double>>("{}")), (EnumMap<EffortLevel, double>{}));
}

TEST(JsonEnumMap, RefusesUnknownKeysAndWrongValues) {
    for (const std::string_view text : {R"({"ultra":1})", R"({"low":"1"})", R"({"low":null})", "[]", "null"}) {
        EXPECT_EQ((Json::decodeText<EnumMap<EffortLevel, double>>(text)), std::nullopt) << text;
    }
}

TEST(JsonList, KeepsItsOrder) {
    EXPECT_THAT(*Json::decodeText<std::vector<double>>("[3,1,2]"), ElementsAre(3, 1, 2));
    EXPECT_EQ(Json::toText(Json::encode(std::vector<double>{})), "[]");
    EXPECT_EQ(Json::decodeText<std::vector<double>>("{}"), std::nullopt);
    EXPECT_EQ(Json::decodeText<std::vector<double>>("[1,null]"), std::nullopt);
}

TEST(JsonDictionary, KeepsEveryName) {
    using Dictionary = std::map<std::string, double>;
    const Dictionary dictionary{{"", 1.0}, {"a b", 2.0}, {"é", 3.0}};
    EXPECT_EQ(Json::decodeText<Dictionary>(Json::toText(Json::encode(dictionary))), dictionary);
    EXPECT_EQ(Json::decodeText<Dictionary>("[]"), std::nullopt);
}

TEST(JsonError, TellsWhatIsMissing) {
    try {
        (void)Json::decode<IngestProgress>(json{{"bytesDone", 1}});
        FAIL() << "nothing was thrown";
    } catch (const Json::Error& error) {
        EXPECT_STREQ(error.what(), "no member bytesTotal");
    }
}

} // namespace
} // namespace UsageModel
