#include "UsageEngine/WeeklyNormLearning.h"

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::WeeklyNorm;
using Basis = WeeklyNorm::Basis;

/// The totals of the windows before `sunday`, nearest first; `current` is what the present one has used.
WeeklyNorm learnt(const std::vector<double>& totals, double current = 0.0) {
    Turns turns{turnAt(sunday, current)};
    double k = 1;
    for (const double total : totals) turns.push_back(turnAt(sunday - week * k++, total));
    return learnWeeklyNorm({.turns = turns,
                            .windowStart = sunday,
                            .span = week,
                            .now = sunday + day,
                            .lookback = 6,
                            .filter = {},
                            .earliestEvent = {}});
}

TEST(WeeklyNormLearning, TwoSamplesOpenTheConeHalfway) {
    const WeeklyNorm norm = learnt({80, 120});
    EXPECT_EQ(norm.rawTypicalTotal, 100);
    EXPECT_EQ(norm.basis, Basis::mean);
    EXPECT_EQ(norm.samples, (std::vector<double>{80, 120}));
    EXPECT_DOUBLE_EQ(norm.coneLow, 0.77);
    EXPECT_DOUBLE_EQ(norm.coneHigh, 1.15);
}

TEST(WeeklyNormLearning, TheConeStaysOpenAndBounded) {
    const WeeklyNorm steady = learnt({50, 50, 50});
    EXPECT_EQ(steady.coneLow, 0.95);
    EXPECT_EQ(steady.coneHigh, 1.05);
    const WeeklyNorm wild = learnt({10, 400, 100});
    EXPECT_EQ(wild.rawTypicalTotal, 100);
    EXPECT_EQ(wild.basis, Basis::median);
    EXPECT_EQ(wild.coneLow, 0.3);
    EXPECT_EQ(wild.coneHigh, 2.5);
}

TEST(WeeklyNormLearning, OneSampleHasTheDefaultCone) {
    const WeeklyNorm norm = learnt({70});
    EXPECT_EQ(norm.rawTypicalTotal, 70);
    EXPECT_EQ(norm.basis, Basis::single);
    EXPECT_EQ(norm.coneHigh, 1.1);
    EXPECT_EQ(norm.coneLow, 0.74);
}

TEST(WeeklyNormLearning, AWindowWithoutUseIsNoSample) {
    EXPECT_EQ(learnt({80, 0, 120}).samples, (std::vector<double>{80, 120}));
}

TEST(WeeklyNormLearning, WithoutSamplesTheCurrentWindowSpeaks) {
    const WeeklyNorm norm = learnt({}, 5);
    EXPECT_EQ(norm.rawTypicalTotal, 5);
    EXPECT_EQ(norm.basis, Basis::currentPace);
    EXPECT_TRUE(norm.samples.empty());
    EXPECT_EQ(learnt({}), WeeklyNorm::empty());
}

TEST(WeeklyNormLearning, HistoryMustCoverAWindowWhole) {
    const Turns turns{turnAt(sunday - 1.0, 7), turnAt(sunday - week - 1.0, 9), turnAt(sunday, 3)};
    WeeklyNormQuestion question{.turns = turns,
                                .windowStart = sunday,
                                .span = week,
                                .now = sunday + day,
                                .lookback = 6,
                                .filter = {},
                                .earliestEvent = sunday - week - 1.0};
    EXPECT_EQ(learnWeeklyNorm(question).samples, std::vector<double>{7});
    question.earliestEvent = sunday - week + 1.0;
    EXPECT_EQ(learnWeeklyNorm(question).basis, Basis::currentPace);
}

TEST(WeeklyNormLearning, AWindowThatIsNotOverIsPassedOver) {
    const Turns turns{turnAt(sunday - 1.0, 7), turnAt(sunday - week - 1.0, 9)};
    EXPECT_EQ(learnWeeklyNorm({.turns = turns,
                               .windowStart = sunday,
                               .span = week,
                               .now = sunday - day,
                               .lookback = 6,
                               .filter = {},
                               .earliestEvent = {}})
                  .samples,
              std::vector<double>{9});
}

TEST(WeeklyNormLearning, WithoutASpanOrALookBackIsEmpty) {
    const Turns turns{turnAt(sunday, 7)};
    WeeklyNormQuestion question{.turns = turns,
                                .windowStart = sunday,
                                .span = week,
                                .now = sunday + day,
                                .lookback = 0,
                                .filter = {},
                                .earliestEvent = {}};
    EXPECT_EQ(learnWeeklyNorm(question), WeeklyNorm::empty());
    question.lookback = 6;
    question.span = 0;
    EXPECT_EQ(learnWeeklyNorm(question), WeeklyNorm::empty());
}

} // namespace
} // namespace UsageEngine
