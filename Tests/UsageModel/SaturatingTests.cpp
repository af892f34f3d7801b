#include "UsageModel/Saturating.h"

#include <gtest/gtest.h>

namespace UsageModel {
namespace {

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

TEST(SaturatingSum, IsExactWhereItFits) {
    EXPECT_EQ(saturatingSum({}), 0);
    EXPECT_EQ(saturatingSum({42}), 42);
    EXPECT_EQ(saturatingSum({most, least}), -1);
    EXPECT_EQ(saturatingSum({most - 1, 1}), most);
    EXPECT_EQ(saturatingSum({least + 1, -1}), least);
}

TEST(SaturatingSum, IsHeldAtTheNearestThatFits) {
    EXPECT_EQ(saturatingSum({most, 1}), most);
    EXPECT_EQ(saturatingSum({least, -1}), least);
    EXPECT_EQ(saturatingSum({most, most, most, most}), most);
    EXPECT_EQ(saturatingSum({least, least, least, least}), least);
}

TEST(SaturatingSum, DoesNotDependOnTheOrder) {
    EXPECT_EQ(saturatingSum({most, most, least, least}), -2);
    EXPECT_EQ(saturatingSum({most, least, most, least}), -2);
}

} // namespace
} // namespace UsageModel
