#include "UsageModel/Anchor.h"

#include <gmock/gmock.h>

namespace UsageModel {
namespace {

using testing::ElementsAre;

TEST(AnchorKind, HasItsTexts) {
    EXPECT_THAT(EnumNames<AnchorKind>::names, ElementsAre("percentage", "ceiling"));
    EXPECT_EQ(text(AnchorKind::percentage), "percentage");
    EXPECT_EQ(text(AnchorKind::ceiling), "ceiling");
}

TEST(AnchorSource, HasItsTexts) {
    EXPECT_THAT(EnumNames<AnchorSource>::names, ElementsAre("statusLine", "oauth", "syntheticLog"));
    EXPECT_EQ(text(AnchorSource::statusLine), "statusLine");
    EXPECT_EQ(text(AnchorSource::oauth), "oauth");
    EXPECT_EQ(text(AnchorSource::syntheticLog), "syntheticLog");
}

TEST(AssertedFraction, OfAPercentageIsItsFraction) {
    EXPECT_EQ(assertedFraction({.kind = AnchorKind::percentage, .usedFraction = 0.42}), 0.42);
    EXPECT_EQ(assertedFraction({.kind = AnchorKind::percentage, .usedFraction = 1.7}), 1.7);
    EXPECT_EQ(assertedFraction({.kind = AnchorKind::percentage, .usedFraction = 0.0}), 0.0);
}

TEST(AssertedFraction, OfAPercentageWithoutAFractionIsZero) {
    EXPECT_EQ(assertedFraction({.kind = AnchorKind::percentage}), 0.0);
}

TEST(AssertedFraction, OfACeilingIsTheLimitWhateverItStates) {
    EXPECT_EQ(assertedFraction({.kind = AnchorKind::ceiling}), 1.0);
    EXPECT_EQ(assertedFraction({.kind = AnchorKind::ceiling, .usedFraction = 0.3}), 1.0);
    EXPECT_EQ(assertedFraction({.kind = AnchorKind::ceiling, .usedFraction = 1.0}), 1.0);
}

} // namespace
} // namespace UsageModel
