#include "UsageEngine/BlockScale.h"

#include <limits>

#include <gtest/gtest.h>

#include "UsageEngine/Scene.h"

namespace UsageEngine {
namespace {

using UsageModel::Date;
using UsageModel::WindowKind;

constexpr Date blockStart = sunday;

UsageModel::SessionBlock block() {
    return {.start = blockStart, .end = blockStart + 5 * hour, .usedFraction = 10, .byModelClass = {}};
}

BlockScale scaleBy(const std::vector<UsageModel::Anchor>& anchors, std::optional<double> cap = 4.0) {
    const Turns turns{turnAt(blockStart, 4), turnAt(blockStart + hour, 4), turnAt(blockStart + 2 * hour, 2)};
    return blockScale(block(), SessionAnchors(anchors), turns, capOf(cap));
}

constexpr BlockScale learnt{.scale = 0.25, .basis = UsageModel::SessionCapBasis::learnedScale};

BlockScale own(double scale) {
    return {.scale = scale, .basis = UsageModel::SessionCapBasis::ownCeiling};
}

TEST(BlockScale, ACeilingMakesWhatWasSpentByThenAFullSession) {
    EXPECT_EQ(scaleBy({sessionFull(blockStart + 1.5 * hour)}), own(0.125));
    EXPECT_EQ(scaleBy({sessionFull(blockStart + hour)}), own(0.25)) << "a turn of that instant came after it";
}

TEST(BlockScale, APercentageIsWorthItsFraction) {
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 1.5 * hour, 0.5)}), own(0.0625));
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 1.5 * hour, {})}), learnt);
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 1.5 * hour, 0.0)}), learnt);
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 1.5 * hour, -1.0)}), learnt);
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 1.5 * hour, 1e300)}), learnt);
}

TEST(BlockScale, ARatioOfExactlyOneCountsAsNone) {
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 0.5 * hour, 4.0)}), learnt);
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 0.5 * hour, 4.0)}, {}), BlockScale{});
}

TEST(BlockScale, AnAnchorBelongsToABlockAfterItsStartUpToItsEnd) {
    EXPECT_EQ(scaleBy({sessionFull(blockStart)}), learnt);
    EXPECT_EQ(scaleBy({sessionFull(blockStart + 1.0)}), own(0.25));
    EXPECT_EQ(scaleBy({sessionFull(blockStart + 5 * hour)}), own(0.1));
    EXPECT_EQ(scaleBy({sessionFull(blockStart + (5 * hour + 1))}), learnt);
    EXPECT_EQ(scaleBy({resetTold(WindowKind::weeklyAll, blockStart + hour, {})}), learnt);
}

TEST(BlockScale, TheLatestAnchorDecidesAndOfEqualsTheFirst) {
    const Date early = blockStart + 0.5 * hour;
    const Date late = blockStart + 1.5 * hour;
    EXPECT_EQ(scaleBy({sessionFull(late), sessionFull(early)}), own(0.125));
    EXPECT_EQ(scaleBy({sessionAt(late, 0.5), sessionFull(late)}), own(0.0625));
    EXPECT_EQ(scaleBy({sessionFull(late), sessionAt(late, 0.5)}), own(0.125));
    EXPECT_EQ(scaleBy({sessionFull(early), sessionAt(late, {})}), learnt)
        << "a latest that tells nothing is not passed over";
}

TEST(BlockScale, WithoutLogsBeforeItAnAnchorTellsNothing) {
    const Turns late{turnAt(blockStart + 2 * hour, 2)};
    EXPECT_EQ(blockScale(block(), SessionAnchors(std::vector{sessionFull(blockStart + hour)}), late, capOf(4.0)),
              learnt);
}

TEST(BlockScale, LogsOfABillionthTellNothing) {
    const auto scaleOf = [](double weight) {
        const Turns turns{turnAt(blockStart, weight)};
        return blockScale(block(), SessionAnchors(std::vector{sessionFull(blockStart + hour)}), turns, capOf(4.0));
    };
    EXPECT_EQ(scaleOf(1e-9), learnt);
    EXPECT_EQ(scaleOf(0x1p-29), own(0x1p29));
}

TEST(BlockScale, WithoutAnchorAndSoundCapALogUnitIsWorthOne) {
    EXPECT_EQ(scaleBy({}), learnt);
    for (const std::optional<double> cap :
         {std::optional<double>{}, std::optional(0.0), std::optional(-1.0), std::optional(1e-320),
          std::optional(std::numeric_limits<double>::infinity())})
        EXPECT_EQ(scaleBy({}, cap), BlockScale{}) << cap.value_or(7);
}

} // namespace
} // namespace UsageEngine
