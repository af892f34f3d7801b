#include "UsageModel/StatusLineInput.h"

#include <gmock/gmock.h>

#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

using RL = StatusLineInput::RL;
using RateLimits = StatusLineInput::RateLimits;

constexpr double capturedAt = 1790000000.25;

StatusLineInput withLimits(RateLimits limits) {
    return {.rate_limits = limits};
}

TEST(StatusLineInput, ReadsTheLimitsAndNothingElse) {
    const auto input = StatusLineInput::decode(
        R"({"session_id":"x","model":{"id":"m"},"cost":{"total":1.5},"rate_limits":{"five_hour":{"used_percentage":3,)"
        R"("resets_at":1790000000,"status":"ok"},"seven_day":{"used_percentage":4.5},"thirty_day":{"used_percentage":"?"}}})");
    EXPECT_EQ(input, withLimits({.five_hour = RL{.used_percentage = 3.0, .resets_at = 1790000000.0},
                                 .seven_day = RL{.used_percentage = 4.5}}));
}

TEST(StatusLineInput, WithoutLimitsIsReadAllTheSame) {
    EXPECT_EQ(StatusLineInput::decode("{}"), StatusLineInput{});
    EXPECT_EQ(StatusLineInput::decode(R"({"rate_limits":null,"model":1})"), StatusLineInput{});
}

TEST(StatusLineInput, NullStandsForAbsentAtEveryDepth) {
    EXPECT_EQ(StatusLineInput::decode(R"({"rate_limits":{"five_hour":null}})"), withLimits({}));
    EXPECT_EQ(StatusLineInput::decode(R"({"rate_limits":{"five_hour":{"used_percentage":null,"resets_at":null}}})"),
              withLimits({.five_hour = RL{}}));
}

struct BadRow : TestSupport::Named {
    std::string_view text;
};

class BadStatusLineTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadStatusLineTest, IsNoInput) {
    EXPECT_EQ(StatusLineInput::decode(GetParam().text), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BadStatusLineTest,
    testing::Values(BadRow{"empty", ""}, BadRow{"a list", "[]"}, BadRow{"null", "null"},
                    BadRow{"torn", R"({"rate_lim)"}, BadRow{"limits are a list", R"({"rate_limits":[]})"},
                    BadRow{"limits are a number", R"({"rate_limits":5})"},
                    BadRow{"a limit is a number", R"({"rate_limits":{"five_hour":5}})"},
                    BadRow{"a percentage is a text", R"({"rate_limits":{"seven_day":{"used_percentage":"5"}}})"},
                    BadRow{"a percentage is a truth value",
                           R"({"rate_limits":{"seven_day":{"used_percentage":true}}})"},
                    BadRow{"a reset is a text", R"({"rate_limits":{"seven_day_opus":{"resets_at":"soon"}}})"},
                    BadRow{"one bad limit beside a good one",
                           R"({"rate_limits":{"five_hour":{"used_percentage":5},"seven_day":7}})"}),
    TestSupport::rowName);

TEST(StatusLineGaugeReading, KeepsTheNamesAndTheValues) {
    const StatusLineInput input = withLimits({.five_hour = RL{.used_percentage = 1.0, .resets_at = 10.0},
                                              .seven_day = RL{.used_percentage = 2.0, .resets_at = 20.0},
                                              .seven_day_opus = RL{.used_percentage = 3.0, .resets_at = 30.0}});
    const GaugeReading expected{.capturedAt = capturedAt,
                                .source = "statusLine",
                                .windows = {{"five_hour", {.usedPercentage = 1.0, .resetsAt = 10.0}},
                                            {"seven_day", {.usedPercentage = 2.0, .resetsAt = 20.0}},
                                            {"seven_day_opus", {.usedPercentage = 3.0, .resetsAt = 30.0}}}};
    EXPECT_EQ(input.gaugeReading(capturedAt, "statusLine"), expected);
}

TEST(StatusLineGaugeReading, PassesTheSourceOn) {
    const StatusLineInput input = withLimits({.five_hour = RL{.used_percentage = 0.0}});
    EXPECT_EQ(input.gaugeReading(capturedAt, "oauth")->source, "oauth");
    EXPECT_EQ(input.gaugeReading(capturedAt, "")->source, "");
}

TEST(StatusLineGaugeReading, IsAbsentWithoutLimits) {
    EXPECT_EQ(StatusLineInput{}.gaugeReading(capturedAt, "statusLine"), std::nullopt);
}

TEST(StatusLineGaugeReading, IsAbsentWithoutAnyWindow) {
    EXPECT_EQ(withLimits({}).gaugeReading(capturedAt, "statusLine"), std::nullopt);
}

TEST(StatusLineGaugeReading, IsAbsentWhereNoWindowStatesAPercentage) {
    const auto input =
        StatusLineInput::decode(R"({"rate_limits":{"seven_day":{"used_percentage":null,"resets_at":1790000000}}})");
    ASSERT_TRUE(input);
    EXPECT_EQ(input->gaugeReading(capturedAt, "statusLine"), std::nullopt);
}

TEST(StatusLineGaugeReading, APercentageOfZeroSaysSomething) {
    EXPECT_TRUE(withLimits({.seven_day_opus = RL{.used_percentage = 0.0}}).gaugeReading(capturedAt, "a").has_value());
}

TEST(StatusLineGaugeReading, AWindowWithoutAPercentageIsKeptBesideOneThatHasIt) {
    const StatusLineInput input = withLimits(
        {.five_hour = RL{.resets_at = 10.0}, .seven_day = RL{}, .seven_day_opus = RL{.used_percentage = 5.0}});
    const auto reading = input.gaugeReading(capturedAt, "statusLine");
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->windows,
              (std::map<std::string, GaugeWindow>{
                  {"five_hour", {.resetsAt = 10.0}}, {"seven_day", {}}, {"seven_day_opus", {.usedPercentage = 5.0}}}));
}

} // namespace
} // namespace UsageModel
