#include "UsageEngine/BurnRate.h"

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

TEST(BurnRate, CountsBothEnds) {
    const Turns turns{turnAt(sunday - 100.0, 1), turnAt(sunday, 2), turnAt(sunday - 100.1, 4), turnAt(sunday + 0.1, 8)};
    EXPECT_EQ(BurnRate::recent({.turns = turns, .now = sunday, .windowSeconds = 100}), 3.0 / 100);
    EXPECT_EQ(BurnRate::recent({.turns = {}, .now = sunday, .windowSeconds = 100}), 0);
}

} // namespace
} // namespace UsageEngine
