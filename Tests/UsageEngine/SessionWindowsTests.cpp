#include "UsageEngine/SessionWindows.h"

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using SessionWindows::reconstruct;
using SessionWindows::span;
using UsageModel::Date;
using UsageModel::ModelClass;

std::vector<Date> startsOf(const Turns& turns) {
    std::vector<Date> starts;
    for (const auto& block : reconstruct(turns, sunday)) starts.push_back(block.start);
    return starts;
}

TEST(SessionWindows, NoTurnsNoBlocks) {
    EXPECT_TRUE(reconstruct({}, sunday).empty());
}

TEST(SessionWindows, OneTurnIsABlockOfFiveHours) {
    const Turns one{turnAt(sunday + 77.5, 2)};
    const auto isCurrent = [&](Date now) { return reconstruct(one, now).front().isCurrent; };
    EXPECT_EQ(reconstruct(one, sunday).front().start, sunday + 77.5);
    EXPECT_EQ(reconstruct(one, sunday).front().end, sunday + 77.5 + span);
    EXPECT_FALSE(isCurrent(sunday));
    EXPECT_TRUE(isCurrent(sunday + 77.5));
    EXPECT_FALSE(isCurrent(sunday + 77.5 + span)) << "the end is outside";
}

TEST(SessionWindows, ATurnAtTheEndOpensTheNext) {
    EXPECT_EQ(startsOf({turnAt(sunday, 1), turnAt(sunday + (span - 0.001), 1)}), std::vector{sunday});
    EXPECT_EQ(startsOf({turnAt(sunday, 1), turnAt(sunday + span, 1), turnAt(sunday + span + 1.0, 1)}),
              (std::vector{sunday, sunday + span}));
    EXPECT_EQ(startsOf({turnAt(sunday, 1), turnAt(sunday + 3 * week, 1)}), (std::vector{sunday, sunday + 3 * week}))
        << "no empty blocks in between";
}

TEST(SessionWindows, SumsByClassWhateverTheOrder) {
    const Turns turns{turnAt(sunday + 60.0, 4, ModelClass::haiku), turnAt(sunday, 1), turnAt(sunday + 30.0, 2)};
    const auto blocks = reconstruct(turns, sunday);
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks[0].start, sunday);
    EXPECT_EQ(blocks[0].usedFraction, 7);
    EXPECT_EQ(blocks[0].byModelClass,
              (UsageModel::EnumMap<ModelClass, double>{{ModelClass::opus, 3.0}, {ModelClass::haiku, 4.0}}));
}

} // namespace
} // namespace UsageEngine
