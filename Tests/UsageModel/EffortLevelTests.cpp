#include "UsageModel/EffortLevel.h"

#include <gmock/gmock.h>

#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

struct Row : TestSupport::Named {
    EffortLevel level;
    std::string_view text;
    std::string_view label;
    std::string_view command;
    std::size_t index;
    std::optional<EffortLevel> stepDown;
    double outputPrior;
};

class EffortLevelTest : public testing::TestWithParam<Row> {};

TEST_P(EffortLevelTest, HasItsTexts) {
    const Row& row = GetParam();
    EXPECT_EQ(text(row.level), row.text);
    EXPECT_EQ(fromText<EffortLevel>(row.text), row.level);
    EXPECT_EQ(label(row.level), row.label);
    EXPECT_EQ(command(row.level), row.command);
}

TEST_P(EffortLevelTest, HasItsPlaceAndItsPrior) {
    const Row& row = GetParam();
    EXPECT_EQ(caseIndex(row.level), row.index);
    EXPECT_EQ(stepDown(row.level), row.stepDown);
    EXPECT_EQ(effortOutputPriors().find(row.level), row.outputPrior);
}

INSTANTIATE_TEST_SUITE_P(
    Levels, EffortLevelTest,
    testing::Values(Row{"low", EffortLevel::low, "low", "Low", "/effort low", 0, std::nullopt, 0.55},
                    Row{"medium", EffortLevel::medium, "medium", "Medium", "/effort medium", 1, EffortLevel::low, 0.75},
                    Row{"high", EffortLevel::high, "high", "High", "/effort high", 2, EffortLevel::medium, 1.0},
                    Row{"xhigh", EffortLevel::xhigh, "xhigh", "X-High", "/effort xhigh", 3, EffortLevel::high, 1.3},
                    Row{"max", EffortLevel::max, "max", "Max", "/effort max", 4, EffortLevel::xhigh, 1.6}),
    TestSupport::rowName);

TEST(EffortLevel, EveryLevelIsThereInRisingOrder) {
    EXPECT_THAT(allCases<EffortLevel>, ElementsAre(EffortLevel::low, EffortLevel::medium, EffortLevel::high,
                                                   EffortLevel::xhigh, EffortLevel::max));
}

TEST(EffortLevel, IsNotOfferedOnHaiku) {
    EXPECT_THAT(availableEfforts(ModelClass::haiku), IsEmpty());
}

TEST(EffortLevel, IsOfferedInFullOnEveryOtherClass) {
    for (const ModelClass modelClass : {ModelClass::opus, ModelClass::fable, ModelClass::sonnet, ModelClass::other}) {
        EXPECT_THAT(availableEfforts(modelClass), ElementsAreArray(allCases<EffortLevel>)) << text(modelClass);
    }
}

} // namespace
} // namespace UsageModel
