#include "UsageModel/GaugeReading.h"

#include <limits>

#include <gmock/gmock.h>

#include "UsageModel/Json.h"
#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::string_view wellFormed =
    R"({"capturedAt":1790000000.5,"source":"statusLine","windows":{"five_hour":{"usedPercentage":42,"resetsAt":1790010000},)"
    R"("seven_day":{"usedPercentage":17.5,"resetsAt":1790400000}}})";

GaugeReading wellFormedReading() {
    return {.capturedAt = 1790000000.5,
            .source = "statusLine",
            .windows = {{"five_hour", {.usedPercentage = 42.0, .resetsAt = 1790010000.0}},
                        {"seven_day", {.usedPercentage = 17.5, .resetsAt = 1790400000.0}}}};
}

TEST(GaugeReading, IsReadFromAWellFormedFile) {
    EXPECT_EQ(GaugeReading::decode(wellFormed), wellFormedReading());
}

TEST(GaugeReading, IsTheSameAfterItWasWritten) {
    EXPECT_EQ(GaugeReading::decode(Json::toText(Json::encode(wellFormedReading()))), wellFormedReading());
}

TEST(GaugeReading, AWindowThatIsNotReportedIsAbsent) {
    const auto reading = GaugeReading::decode(R"({"capturedAt":5,"source":"","windows":{}})");
    ASSERT_TRUE(reading);
    EXPECT_THAT(reading->windows, IsEmpty());
    EXPECT_EQ(reading->capturedAt, 5.0);
}

TEST(GaugeReading, AWindowMayLackEitherValue) {
    const auto reading = GaugeReading::decode(
        R"({"capturedAt":5,"source":"a","windows":{"five_hour":{},"seven_day":{"usedPercentage":null,"resetsAt":7}}})");
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->windows.at("five_hour"), GaugeWindow{});
    EXPECT_EQ(reading->windows.at("seven_day"), (GaugeWindow{.resetsAt = 7.0}));
}

TEST(GaugeReading, UnknownMembersAndWindowsDoNotHarm) {
    const auto reading = GaugeReading::decode(
        R"({"x":[1],"capturedAt":5,"source":"a","windows":{"thirty_day":{"usedPercentage":9,"y":{}}}})");
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->windows.at("thirty_day").usedPercentage, 9.0);
    EXPECT_THAT(reading->anchors(), IsEmpty());
}

struct BadRow : TestSupport::Named {
    std::string_view text;
};

class BadGaugeTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadGaugeTest, IsNoReading) {
    EXPECT_EQ(GaugeReading::decode(GetParam().text), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BadGaugeTest,
    testing::Values(BadRow{"empty", ""}, BadRow{"blank", " \n"}, BadRow{"null", "null"}, BadRow{"a list", "[]"},
                    BadRow{"no members", "{}"}, BadRow{"no capturedAt", R"({"source":"a","windows":{}})"},
                    BadRow{"no source", R"({"capturedAt":5,"windows":{}})"},
                    BadRow{"no windows", R"({"capturedAt":5,"source":"a"})"},
                    BadRow{"capturedAt is null", R"({"capturedAt":null,"source":"a","windows":{}})"},
                    BadRow{"capturedAt is a text", R"({"capturedAt":"5","source":"a","windows":{}})"},
                    BadRow{"capturedAt is a truth value", R"({"capturedAt":true,"source":"a","windows":{}})"},
                    BadRow{"capturedAt is too large for a number", R"({"capturedAt":1e400,"source":"a","windows":{}})"},
                    BadRow{"source is a number", R"({"capturedAt":5,"source":1,"windows":{}})"},
                    BadRow{"source is null", R"({"capturedAt":5,"source":null,"windows":{}})"},
                    BadRow{"windows is a list", R"({"capturedAt":5,"source":"a","windows":[]})"},
                    BadRow{"windows is null", R"({"capturedAt":5,"source":"a","windows":null})"},
                    BadRow{"a window is null", R"({"capturedAt":5,"source":"a","windows":{"five_hour":null}})"},
                    BadRow{"a window is a number", R"({"capturedAt":5,"source":"a","windows":{"five_hour":3}})"},
                    BadRow{"a percentage is a text",
                           R"({"capturedAt":5,"source":"a","windows":{"five_hour":{"usedPercentage":"7"}}})"},
                    BadRow{"a reset is a list",
                           R"({"capturedAt":5,"source":"a","windows":{"five_hour":{"resetsAt":[]}}})"},
                    BadRow{"an unknown window is malformed",
                           R"({"capturedAt":5,"source":"a","windows":{"x":{"usedPercentage":[]}}})"},
                    BadRow{"torn", R"({"capturedAt":5,"source":"a","windows":{"five_hour":{"usedPerc)"},
                    BadRow{"trailing text", R"({"capturedAt":5,"source":"a","windows":{}} x)"},
                    BadRow{"two objects", R"({"capturedAt":5,"source":"a","windows":{}}{})"},
                    BadRow{"trailing comma", R"({"capturedAt":5,"source":"a","windows":{},})"},
                    BadRow{"a comment", R"({"capturedAt":5,"source":"a","windows":{}}//)"},
                    BadRow{"single quotes", R"({'capturedAt':5,'source':'a','windows':{}})"},
                    BadRow{"a byte order mark", "\xEF\xBB\xBF{\"capturedAt\":5,\"source\":\"a\",\"windows\":{}}"},
                    BadRow{"invalid UTF 8", "{\"capturedAt\":5,\"source\":\"\xFF\",\"windows\":{}}"},
                    BadRow{"a lone surrogate", R"({"capturedAt":5,"source":"\ud800","windows":{}})"},
                    BadRow{"NULs behind it", "{\"capturedAt\":5,\"source\":\"a\",\"windows\":{}}\0\0"sv},
                    BadRow{"only NULs", "\0\0\0\0"sv}),
    TestSupport::rowName);

TEST(GaugeReadingAnchors, StateOnePercentageAWindow) {
    EXPECT_THAT(wellFormedReading().anchors(), ElementsAre(Anchor{.ts = Date{1790000000.5},
                                                                  .source = AnchorSource::statusLine,
                                                                  .window = WindowKind::session5h,
                                                                  .kind = AnchorKind::percentage,
                                                                  .usedFraction = 0.42,
                                                                  .resetsAt = Date{1790010000}},
                                                           Anchor{.ts = Date{1790000000.5},
                                                                  .source = AnchorSource::statusLine,
                                                                  .window = WindowKind::weeklyAll,
                                                                  .kind = AnchorKind::percentage,
                                                                  .usedFraction = 0.175,
                                                                  .resetsAt = Date{1790400000}}));
}

TEST(GaugeReadingAnchors, ComeInTheOrderOfTheWindows) {
    const GaugeReading reading{.windows = {{"seven_day_opus", {.usedPercentage = 3.0}},
                                           {"seven_day", {.usedPercentage = 2.0}},
                                           {"five_hour", {.usedPercentage = 1.0}}}};
    const std::vector<Anchor> anchors = reading.anchors();
    ASSERT_THAT(anchors, SizeIs(3));
    EXPECT_EQ(anchors[0].window, WindowKind::session5h);
    EXPECT_EQ(anchors[1].window, WindowKind::weeklyAll);
    EXPECT_EQ(anchors[2].window, WindowKind::weeklyOpus);
}

TEST(GaugeReadingAnchors, AreNoneWithoutAWindow) {
    EXPECT_THAT(GaugeReading{}.anchors(), IsEmpty());
}

TEST(GaugeReadingAnchors, AWindowWithoutAPercentageGivesNone) {
    const GaugeReading reading{
        .windows = {{"five_hour", {.resetsAt = 9.0}}, {"seven_day", {}}, {"seven_day_opus", {.usedPercentage = 5.0}}}};
    const std::vector<Anchor> anchors = reading.anchors();
    ASSERT_THAT(anchors, SizeIs(1));
    EXPECT_EQ(anchors[0].window, WindowKind::weeklyOpus);
    EXPECT_EQ(anchors[0].resetsAt, std::nullopt);
}

TEST(GaugeReadingAnchors, AreNotFoundUnderTheTextFormOfAWindow) {
    const GaugeReading reading{
        .windows = {{"session5h", {.usedPercentage = 1.0}}, {"weeklyAll", {.usedPercentage = 2.0}}}};
    EXPECT_THAT(reading.anchors(), IsEmpty());
}

struct SourceRow : TestSupport::Named {
    std::string_view source;
    AnchorSource expected;
};

class GaugeSourceTest : public testing::TestWithParam<SourceRow> {};

TEST_P(GaugeSourceTest, GivesTheSourceOfTheAnchors) {
    const GaugeReading reading{.source = std::string(GetParam().source),
                               .windows = {{"five_hour", {.usedPercentage = 1.0}}}};
    ASSERT_THAT(reading.anchors(), SizeIs(1));
    EXPECT_EQ(reading.anchors()[0].source, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Sources, GaugeSourceTest,
                         testing::Values(SourceRow{"oauth", "oauth", AnchorSource::oauth},
                                         SourceRow{"statusLine", "statusLine", AnchorSource::statusLine},
                                         SourceRow{"anything", "anything", AnchorSource::statusLine},
                                         SourceRow{"empty", "", AnchorSource::statusLine},
                                         SourceRow{"another case", "OAuth", AnchorSource::statusLine},
                                         SourceRow{"more than the word", "oauth2", AnchorSource::statusLine},
                                         SourceRow{"syntheticLog", "syntheticLog", AnchorSource::statusLine}),
                         TestSupport::rowName);

TEST(GaugeReadingAnchors, PercentagesAreNotClamped) {
    const auto fractionOf = [](double percentage) {
        const GaugeReading reading{.windows = {{"five_hour", {.usedPercentage = percentage}}}};
        return reading.anchors().at(0).usedFraction.value();
    };
    EXPECT_EQ(fractionOf(0), 0.0);
    EXPECT_EQ(fractionOf(100), 1.0);
    EXPECT_EQ(fractionOf(250), 2.5);
    EXPECT_EQ(fractionOf(-10), -0.1);
    EXPECT_EQ(fractionOf(14.9), 14.9 / 100);
}

} // namespace
} // namespace UsageModel
