#include "UsageModel/UsageEvent.h"

#include <limits>

#include <gtest/gtest.h>

#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

using Limits = std::numeric_limits<std::int64_t>;

struct Row : TestSupport::Named {
    UsageEvent event;
    std::int64_t expected;
};

class RawTokensTest : public testing::TestWithParam<Row> {};

TEST_P(RawTokensTest, IsTheSumOfTheFourCounts) {
    EXPECT_EQ(rawTokens(GetParam().event), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Counts, RawTokensTest,
    testing::Values(Row{"nothing", {}, 0},
                    Row{"each count once", {.input = 1, .output = 20, .cacheCreation = 300, .cacheRead = 4000}, 4321},
                    Row{"negative counts", {.input = -5, .output = 2}, -3},
                    Row{"the largest that fits", {.input = Limits::max() - 1, .cacheRead = 1}, Limits::max()},
                    Row{"held at the largest", {.input = Limits::max(), .output = Limits::max()}, Limits::max()},
                    Row{"held at the smallest", {.input = Limits::min(), .output = -1}, Limits::min()},
                    Row{"exact where only a partial sum is too large",
                        {.input = Limits::max(),
                         .output = Limits::max(),
                         .cacheCreation = Limits::min(),
                         .cacheRead = Limits::min()},
                        -2}),
    TestSupport::rowName);

UsageEvent someTurn() {
    return {.ts = Date{5},
            .sessionId = "s",
            .model = "m",
            .modelClass = ModelClass::opus,
            .input = 1,
            .output = 2,
            .cacheCreation = 3,
            .cacheRead = 4,
            .effort = EffortLevel::low};
}

TEST(UsageEvent, IsEqualFieldByField) {
    EXPECT_EQ(someTurn(), someTurn());
    const auto differs = [](auto&& change) {
        UsageEvent event = someTurn();
        change(event);
        return event != someTurn();
    };
    EXPECT_TRUE(differs([](UsageEvent& e) { e.ts = Date{6}; }));
    EXPECT_TRUE(differs([](UsageEvent& e) { e.sessionId = "t"; }));
    EXPECT_TRUE(differs([](UsageEvent& e) { e.model = ""; }));
    EXPECT_TRUE(differs([](UsageEvent& e) { e.modelClass = ModelClass::fable; }));
    EXPECT_TRUE(differs([](UsageEvent& e) { ++e.input; }));
    EXPECT_TRUE(differs([](UsageEvent& e) { ++e.output; }));
    EXPECT_TRUE(differs([](UsageEvent& e) { ++e.cacheCreation; }));
    EXPECT_TRUE(differs([](UsageEvent& e) { ++e.cacheRead; }));
    EXPECT_TRUE(differs([](UsageEvent& e) { e.effort.reset(); }));
}

} // namespace
} // namespace UsageModel
