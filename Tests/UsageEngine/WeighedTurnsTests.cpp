#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::ModelBucket;
using UsageModel::ModelClass;

TEST(WeighedTurns, WeighEachEventOnceInItsPlace) {
    const auto weights = UsageModel::CategoryWeights::priors(1.0);
    const std::vector<UsageModel::UsageEvent> events{
        {.ts = sunday + 5.0,
         .sessionId = "s",
         .model = "m",
         .modelClass = ModelClass::haiku,
         .input = 3,
         .effort = UsageModel::EffortLevel::low},
        {.ts = sunday, .sessionId = "s", .model = "m", .modelClass = ModelClass::opus, .input = 1}};
    EXPECT_EQ(weigh(events, weights), (Turns{turnAt(sunday + 5.0, weights.effective(events[0]), ModelClass::haiku,
                                                    UsageModel::EffortLevel::low),
                                             turnAt(sunday, 1.0)}));
}

TEST(WeighedTurns, ByTimeKeepsTheOrderOfEquals) {
    const Turns sorted = byTime({turnAt(sunday, 1), turnAt(sunday - 5.0, 2), turnAt(sunday, 3)});
    EXPECT_EQ(sorted, (Turns{turnAt(sunday - 5.0, 2), turnAt(sunday, 1), turnAt(sunday, 3)}));
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
