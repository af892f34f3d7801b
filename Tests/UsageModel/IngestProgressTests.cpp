#include "UsageModel/IngestProgress.h"

#include <limits>

#include <gtest/gtest.h>

#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

struct Row : TestSupport::Named {
    IngestProgress progress;
    double expected;
};

class FractionTest : public testing::TestWithParam<Row> {};

TEST_P(FractionTest, IsTheShareThatIsDone) {
    EXPECT_DOUBLE_EQ(GetParam().progress.fraction(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Progress, FractionTest,
                         testing::Values(Row{"no bytes, complete", {0, 0, true}, 1.0},
                                         Row{"no bytes, not complete", {0, 0, false}, 0.0},
                                         Row{"bytes done of none, not complete", {5, 0, false}, 0.0},
                                         Row{"negative total, complete", {5, -1, true}, 1.0},
                                         Row{"negative total, not complete", {5, -1, false}, 0.0},
                                         Row{"one byte to do", {0, 1, true}, 0.0},
                                         Row{"the one byte done", {1, 1, false}, 1.0}, Row{"half", {5, 10, false}, 0.5},
                                         Row{"complete does not count where bytes do", {5, 10, true}, 0.5},
                                         Row{"more than there was", {11, 10, false}, 1.0},
                                         Row{"the largest counts", {most, most, true}, 1.0},
                                         Row{"one of the largest", {1, most, false}, 1.0 / 9223372036854775807.0}),
                         TestSupport::rowName);

TEST(IngestProgress, IdleIsCompleteWithoutBytes) {
    EXPECT_EQ(IngestProgress::idle(), (IngestProgress{0, 0, true}));
    EXPECT_EQ(IngestProgress::idle().fraction(), 1.0);
}

} // namespace
} // namespace UsageModel
