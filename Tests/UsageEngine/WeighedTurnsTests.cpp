#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::ModelBucket;
using UsageModel::ModelClass;

TEST(WeighedTurns, WeighEachEventOnceAndStandByTime) {
    const auto weights = UsageModel::CategoryWeights::priors(1.0);
    const std::vector<UsageModel::UsageEvent> events{
        {.ts = sunday + 5.0,
         .sessionId = "s",
         .model = "m",
         .modelClass = ModelClass::haiku,
         .input = 3,
         .effort = UsageModel::EffortLevel::low},
        {.ts = sunday, .sessionId = "s", .model = "m", .modelClass = ModelClass::opus, .input = 1}};
    WeighedTurn second =
        turnAt(sunday + 5.0, weights.effective(events[0]), ModelClass::haiku, UsageModel::EffortLevel::low);
    WeighedTurn first = turnAt(sunday, 1.0);
    first.event = 1;
    EXPECT_EQ(weigh(events, weights), (Turns{first, second}));
}

TEST(WeighedTurns, ThoseOfOneInstantKeepTheirOrder) {
    const std::vector<UsageModel::UsageEvent> events{{.ts = sunday, .input = 1},
                                                     {.ts = sunday - 5.0, .input = 2},
                                                     {.ts = sunday, .input = 3},
                                                     {.ts = sunday, .input = 4}};
    std::vector<std::uint32_t> order;
    for (const WeighedTurn& turn : weigh(events, {})) order.push_back(turn.event);
    EXPECT_EQ(order, (std::vector<std::uint32_t>{1, 0, 2, 3}));
}

TEST(WeighedTurns, ASpanTakesItsStartAndItsEndOnlyWhereClosed) {
    const Turns turns{turnAt(sunday, 1), turnAt(sunday + 1.0, 2), turnAt(sunday + 2.0, 4), turnAt(sunday + 2.0, 8)};
    const TimeSpan span{.from = sunday + 1.0, .to = sunday + 2.0};
    EXPECT_EQ(sumOf(within(turns, span)), 2);
    EXPECT_EQ(sumOf(withinClosed(turns, span)), 14);
    EXPECT_EQ(sumOf(within(turns, {.from = sunday + 2.0, .to = sunday})), 0);
    EXPECT_EQ(sumOf(withinClosed(turns, {.from = sunday + 2.0, .to = sunday + 1.0})), 0);
    EXPECT_EQ(sumOf(within({}, span)), 0);
}

TEST(WeighedTurns, AFilterAdmitsClassesOrBuckets) {
    const auto admits = [](const TurnFilter& filter, ModelClass modelClass) {
        return filter.admits(turnAt(sunday, 1, modelClass));
    };
    EXPECT_TRUE(admits({}, ModelClass::other));
    EXPECT_FALSE(admits({.opusOnly = true, .bucket = {}}, ModelClass::sonnet));
    EXPECT_TRUE(admits({.opusOnly = true, .bucket = {}}, ModelClass::opus));
    EXPECT_TRUE(admits({.opusOnly = false, .bucket = ModelBucket::sonnet}, ModelClass::sonnet));
    EXPECT_FALSE(admits({.opusOnly = true, .bucket = ModelBucket::sonnet}, ModelClass::sonnet));
}

} // namespace
} // namespace UsageEngine
