#include "UsageModel/EnumText.h"

#include <gtest/gtest.h>

#include "UsageModel/EffortLevel.h"
#include "UsageModel/UsageSnapshot.h"

namespace UsageModel {
namespace {

TEST(EnumText, FindsTheCaseOfExactlyThisText) {
    EXPECT_EQ(fromText<EffortLevel>("xhigh"), EffortLevel::xhigh);
    EXPECT_EQ(fromText<EffortLevel>("low"), EffortLevel::low);
}

TEST(EnumText, FindsNothingForAnyOtherText) {
    for (const std::string_view other : {"", "Low", "LOW", " low", "low ", "lo", "lowest", "X-High"}) {
        EXPECT_EQ(fromText<EffortLevel>(other), std::nullopt) << other;
    }
    EXPECT_EQ(fromText<EffortLevel>(std::string_view("low\0", 4)), std::nullopt);
}

template <typename E>
class EveryEnumTest : public testing::Test {};

using EveryEnum =
    testing::Types<ModelClass, ModelBucket, EffortLevel, WindowKind, Severity, Consequence, Recommendation::Kind,
                   SessionCapBasis, SessionCapReadout::Case, SeriesScale, WeeklyNorm::Basis>;
TYPED_TEST_SUITE(EveryEnumTest, EveryEnum);

TYPED_TEST(EveryEnumTest, TextLeadsBackToTheCase) {
    for (const TypeParam value : allCases<TypeParam>) {
        EXPECT_FALSE(text(value).empty());
        EXPECT_EQ(fromText<TypeParam>(text(value)), value);
    }
}

TYPED_TEST(EveryEnumTest, CasesAreCountedFromZero) {
    for (std::size_t i = 0; i < caseCount<TypeParam>; ++i) EXPECT_EQ(caseIndex(allCases<TypeParam>[i]), i);
}

static_assert(NamedEnum<EffortLevel>);
static_assert(!NamedEnum<int>, "only an enumeration with names has a text form");

} // namespace
} // namespace UsageModel
