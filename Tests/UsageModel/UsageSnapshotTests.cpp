#include "UsageModel/UsageSnapshot.h"

#include <limits>

#include <gmock/gmock.h>

#include "UsageModel/Printing.h"

namespace UsageModel {
namespace {

using testing::ElementsAre;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Severity, IsOrderedFromGreenToRed) {
    EXPECT_LT(Severity::green, Severity::amber);
    EXPECT_LT(Severity::amber, Severity::red);
    EXPECT_THAT(EnumNames<Severity>::names, ElementsAre("green", "amber", "red"));
    EXPECT_EQ(text(Severity::red), "red");
}

TEST(Consequence, HasItsTexts) {
    EXPECT_THAT(EnumNames<Consequence>::names, ElementsAre("fine", "sessionPause", "downgradeToSonnet", "lockout"));
    EXPECT_EQ(text(Consequence::sessionPause), "sessionPause");
    EXPECT_EQ(text(Consequence::lockout), "lockout");
}

TEST(RecommendationKind, HasItsTexts) {
    EXPECT_EQ(text(Recommendation::Kind::easeOff), "easeOff");
    EXPECT_EQ(text(Recommendation::Kind::spendMore), "spendMore");
}

TEST(Confidence, UnknownExpectsHalfTheLimitAsError) {
    EXPECT_EQ(Confidence::unknown(), (Confidence{.anchored = false, .estimatedError = 0.5}));
}

TEST(ModelBreakdown, OfNothingHasNoTotalAndNoShares) {
    EXPECT_EQ(ModelBreakdown{}.total(), 0.0);
    EXPECT_EQ(ModelBreakdown{}.fraction(ModelClass::opus), 0.0);
}

TEST(ModelBreakdown, SharesAreOfTheTotal) {
    const ModelBreakdown models{{{ModelClass::opus, 3.0}, {ModelClass::haiku, 1.0}}};
    EXPECT_EQ(models.total(), 4.0);
    EXPECT_EQ(models.fraction(ModelClass::opus), 0.75);
    EXPECT_EQ(models.fraction(ModelClass::haiku), 0.25);
    EXPECT_EQ(models.fraction(ModelClass::sonnet), 0.0);
}

TEST(ModelBreakdown, HasNoSharesWhereTheTotalIsNotAboveZero) {
    EXPECT_EQ((ModelBreakdown{{{ModelClass::opus, 0.0}}}).fraction(ModelClass::opus), 0.0);
    EXPECT_EQ((ModelBreakdown{{{ModelClass::opus, -2.0}}}).fraction(ModelClass::opus), 0.0);
    EXPECT_EQ((ModelBreakdown{{{ModelClass::opus, 1.0}, {ModelClass::other, -1.0}}}).fraction(ModelClass::opus), 0.0);
    EXPECT_EQ((ModelBreakdown{{{ModelClass::opus, notANumber}}}).fraction(ModelClass::opus), 0.0);
}

TEST(SessionBlock, IsDominatedByTheClassOfTheLargestBurn) {
    const SessionBlock block{.byModelClass = {{ModelClass::opus, 1.0}, {ModelClass::haiku, 2.0}}};
    EXPECT_EQ(block.dominantClass(), ModelClass::haiku);
}

TEST(SessionBlock, IsDominatedByNoneWithoutBurn) {
    EXPECT_EQ(SessionBlock{}.dominantClass(), std::nullopt);
}

TEST(SessionBlock, IsDominatedByOneOfTwoEquals) {
    const SessionBlock block{.byModelClass = {{ModelClass::sonnet, 2.0}, {ModelClass::fable, 2.0}}};
    EXPECT_EQ(block.dominantClass(), ModelClass::fable);
}

TEST(SessionBlock, OneClassDominatesEvenWithNothingToShow) {
    EXPECT_EQ((SessionBlock{.byModelClass = {{ModelClass::other, 0.0}}}).dominantClass(), ModelClass::other);
    EXPECT_EQ((SessionBlock{.byModelClass = {{ModelClass::other, -1.0}}}).dominantClass(), ModelClass::other);
}

TEST(UsageSnapshot, BindingMeterIsTheOneOfTheBindingWindow) {
    UsageSnapshot snapshot;
    snapshot.meters = {{.kind = WindowKind::session5h, .used = 0.1}, {.kind = WindowKind::weeklyAll, .used = 0.2}};
    snapshot.binding = WindowKind::weeklyAll;
    ASSERT_NE(snapshot.bindingMeter(), nullptr);
    EXPECT_EQ(snapshot.bindingMeter(), &snapshot.meters[1]);

    snapshot.binding = WindowKind::session5h;
    EXPECT_EQ(snapshot.bindingMeter(), &snapshot.meters[0]);
}

TEST(UsageSnapshot, BindingMeterIsTheFirstOfSeveral) {
    UsageSnapshot snapshot;
    snapshot.meters = {{.kind = WindowKind::weeklyOpus, .used = 0.1}, {.kind = WindowKind::weeklyOpus, .used = 0.2}};
    snapshot.binding = WindowKind::weeklyOpus;
    EXPECT_EQ(snapshot.bindingMeter(), &snapshot.meters[0]);
}

TEST(UsageSnapshot, HasNoBindingMeterWithoutAMeterOfThatWindow) {
    UsageSnapshot snapshot;
    EXPECT_EQ(snapshot.bindingMeter(), nullptr);
    snapshot.meters = {{.kind = WindowKind::session5h}};
    snapshot.binding = WindowKind::weeklyOpus;
    EXPECT_EQ(snapshot.bindingMeter(), nullptr);
}

TEST(UsageSnapshot, WarmingUpTellsThatItReads) {
    const UsageSnapshot snapshot = UsageSnapshot::warmingUp(Date{1790000000});
    EXPECT_EQ(snapshot.generatedAt, Date{1790000000});
    EXPECT_EQ(snapshot.binding, WindowKind::weeklyAll);
    EXPECT_EQ(snapshot.verdict, (Verdict{.headline = "Warming up…",
                                         .consequence = Consequence::fine,
                                         .severity = Severity::green,
                                         .subtext = "Reading your usage history"}));
    EXPECT_EQ(snapshot.bindingProjection, (Projection{.window = WindowKind::weeklyAll,
                                                      .earliestEmpty = std::nullopt,
                                                      .likelyEmpty = std::nullopt,
                                                      .endFraction = 0,
                                                      .willBreachBeforeReset = false}));
    EXPECT_EQ(snapshot.ingest, (IngestProgress{0, 0, false}));
    EXPECT_EQ(snapshot.ingest.fraction(), 0.0);
}

TEST(UsageSnapshot, WarmingUpHasNothingToShow) {
    const UsageSnapshot snapshot = UsageSnapshot::warmingUp(Date{1790000000});
    EXPECT_TRUE(snapshot.meters.empty());
    EXPECT_EQ(snapshot.bindingMeter(), nullptr);
    EXPECT_TRUE(snapshot.projections.empty());
    EXPECT_TRUE(snapshot.weekSessions.empty());
    EXPECT_TRUE(snapshot.calendar.empty());
    EXPECT_EQ(snapshot.weekSeries, std::nullopt);
    EXPECT_EQ(snapshot.sessionCapInLogUnits, std::nullopt);
    EXPECT_EQ(snapshot.recommendation, std::nullopt);
    EXPECT_TRUE(snapshot.models.byClass.empty());
}

TEST(UsageSnapshot, WarmingUpHasNothingLive) {
    const LiveModel live = UsageSnapshot::warmingUp(Date{0}).live;
    EXPECT_TRUE(live.sessions.empty());
    EXPECT_TRUE(live.byClass.empty());
    EXPECT_TRUE(live.byEffort.empty());
    EXPECT_EQ(live.outputShare, 0.0);
    EXPECT_EQ(live.weight, 0.0);
    EXPECT_EQ(live.turns, 0);
    EXPECT_EQ(live.lastTurn, std::nullopt);
    EXPECT_EQ(live.lookback, 2700.0);
}

} // namespace
} // namespace UsageModel
