#include "HarrowlaneApp/Copy/Pace.h"

#include <cmath>

#include <gtest/gtest.h>

#include "UsageModel/Rows.h"

namespace HarrowlaneApp {
namespace {

using Pace::Shares;
using UsageModel::Severity;

struct StatusRow : TestSupport::Named {
    Shares shares;
    Pace::Status expected;
};

class PaceStatusTest : public testing::TestWithParam<StatusRow> {};

TEST_P(PaceStatusTest, FollowsTheRatio) {
    const Pace::Status status = Pace::status(GetParam().shares);
    EXPECT_DOUBLE_EQ(status.ratio, GetParam().expected.ratio);
    EXPECT_EQ(status.label, GetParam().expected.label);
    EXPECT_EQ(status.severity, GetParam().expected.severity);
}

INSTANTIATE_TEST_SUITE_P(
    Windows, PaceStatusTest,
    testing::Values(StatusRow{"a runaway in the first minutes", {1.0, 0.0599}, {1.0, "On pace", Severity::green}},
                    StatusRow{"nothing at the very beginning", {0.0, 0.0}, {1.0, "On pace", Severity::green}},
                    StatusRow{"before the window", {0.5, -1.0}, {1.0, "On pace", Severity::green}},
                    StatusRow{"the first instant that counts", {0.03, 0.06}, {0.5, "Under pace", Severity::green}},
                    StatusRow{"half as much as time", {0.25, 0.5}, {0.5, "Under pace", Severity::green}},
                    StatusRow{"just on pace", {0.45, 0.5}, {0.9, "On pace", Severity::green}},
                    StatusRow{"exactly a twentieth over", {0.525, 0.5}, {1.05, "On pace", Severity::green}},
                    StatusRow{"a little over", {0.53, 0.5}, {1.06, "Over pace", Severity::amber}},
                    StatusRow{"exactly a quarter over", {0.625, 0.5}, {1.25, "Over pace", Severity::amber}},
                    StatusRow{"more than a quarter over", {0.63, 0.5}, {1.26, "Overusing", Severity::red}},
                    StatusRow{"twenty times over", {2.0, 0.1}, {20.0, "Overusing", Severity::red}}),
    TestSupport::rowName);

TEST(PaceExplanation, OfTheFirstMinutesAsksForPatience) {
    EXPECT_EQ(Pace::explanation({.tokensUsed = 0.5, .timeUsed = 0.0312}),
              "Only 3.1% into the session — too early to read a rate. One large turn in the first few minutes divides "
              "by almost nothing and would read as a runaway. This settles shortly.");
}

TEST(PaceExplanation, ShowsTheDivision) {
    EXPECT_EQ(Pace::explanation({.tokensUsed = 0.74, .timeUsed = 0.6}),
              "Burn rate = tokens spent ÷ session elapsed\n74.0% ÷ 60.0% ≈ 1.2×\n\n"
              "Above 1.0×, so tokens are running out faster than the session is.");
    EXPECT_EQ(Pace::explanation({.tokensUsed = 0.3, .timeUsed = 0.6}),
              "Burn rate = tokens spent ÷ session elapsed\n30.0% ÷ 60.0% ≈ 0.5×\n\n"
              "Below 1.0×, so tokens are running out slower than the session is.");
}

TEST(PaceExplanation, CallsWhatIsNearlyOneOne) {
    for (const double tokens : {0.51, 0.5, 0.49}) {
        EXPECT_TRUE(Pace::explanation({.tokensUsed = tokens, .timeUsed = 0.5})
                        .ends_with("At 1.0×, tokens and the session run out together."))
            << tokens;
    }
    EXPECT_TRUE(Pace::explanation({.tokensUsed = 0.515, .timeUsed = 0.5}).ends_with("faster than the session is."));
    EXPECT_TRUE(Pace::explanation({.tokensUsed = 0.485, .timeUsed = 0.5}).ends_with("slower than the session is."));
}

TEST(PaceExplanation, HoldsARunawayToNinePointNine) {
    EXPECT_NE(Pace::explanation({.tokensUsed = 2.0, .timeUsed = 0.1}).find("200.0% ÷ 10.0% ≈ 9.9×"), std::string::npos);
}

TEST(PaceRatio, IsHeldWhereItIsSeenAndNotWhereItIsHeard) {
    EXPECT_EQ(Pace::ratioText(20.0), "9.9×");
    EXPECT_EQ(Pace::ratioText(-1.0), "0.0×");
    EXPECT_EQ(Pace::ratioText(1.23), "1.2×");
    EXPECT_EQ(Pace::accessibleRatio({.tokensUsed = 2.0, .timeUsed = 0.1}), "Burn rate 20.0 times, Overusing");
    EXPECT_EQ(Pace::accessibleRatio({.tokensUsed = 0.9, .timeUsed = 0.01}), "Burn rate 1.0 times, On pace");
}

TEST(OverspendNote, BeginsAtTwoPercent) {
    EXPECT_EQ(Pace::overspendNote({.tokensUsed = 0.5, .timeUsed = 0.49}), std::nullopt);
    EXPECT_EQ(Pace::overspendNote({.tokensUsed = 0.5, .timeUsed = 0.5}), std::nullopt);
    EXPECT_EQ(Pace::overspendNote({.tokensUsed = 0.1, .timeUsed = 0.5}), std::nullopt);
    EXPECT_EQ(Pace::overspendNote({.tokensUsed = 0.516, .timeUsed = 0.5}), "2% overspent");
    EXPECT_EQ(Pace::overspendNote({.tokensUsed = 0.84, .timeUsed = 0.6}), "24% overspent");
    EXPECT_EQ(Pace::overspendNote({.tokensUsed = std::nan(""), .timeUsed = 0.6}), std::nullopt);
}

TEST(PaceRails, AreToldInWords) {
    EXPECT_EQ(Pace::accessibleRails({.tokensUsed = 0.735, .timeUsed = 0.6}),
              "74% of tokens spent against 60% of the window");
}

TEST(PaceRails, GlowBehindTheClockWhereTokensRunAhead) {
    EXPECT_EQ(Pace::hotPart({.tokensUsed = 0.5, .timeUsed = 0.5}), std::nullopt);
    EXPECT_EQ(Pace::hotPart({.tokensUsed = 0.525, .timeUsed = 0.5}), std::nullopt);
    EXPECT_EQ(Pace::hotPart({.tokensUsed = 1.0, .timeUsed = 0.05}), std::nullopt) << "too early to judge";
    EXPECT_EQ(Pace::hotPart({.tokensUsed = 0.6, .timeUsed = 0.5}),
              (Pace::HotPart{.gate = 0.5, .severity = Severity::amber}));
    EXPECT_EQ(Pace::hotPart({.tokensUsed = 0.7, .timeUsed = 0.5}),
              (Pace::HotPart{.gate = 0.5, .severity = Severity::red}));
}

TEST(PaceRails, AreFilledWithinTheirLength) {
    EXPECT_EQ(Pace::filledLength({.fraction = 0.5, .length = 200}), 100.0);
    EXPECT_EQ(Pace::filledLength({.fraction = 1.5, .length = 200}), 200.0);
    EXPECT_EQ(Pace::filledLength({.fraction = 0.0, .length = 200}), 0.0);
    EXPECT_EQ(Pace::filledLength({.fraction = -0.5, .length = 200}), 0.0);
    EXPECT_EQ(Pace::filledLength({.fraction = 0.001, .length = 200}), 3.0) << "a little is still seen";
}

TEST(PaceRails, LeaveOutALabelNearTheClock) {
    using Labels = Pace::AxisLabels;
    EXPECT_EQ(Pace::axisLabels({.fraction = 0.5, .length = 200}), (Labels{.start = true, .end = true}));
    EXPECT_EQ(Pace::axisLabels({.fraction = 0.31, .length = 200}), (Labels{.start = true, .end = true}));
    EXPECT_EQ(Pace::axisLabels({.fraction = 0.30, .length = 200}), (Labels{.start = false, .end = true}));
    EXPECT_EQ(Pace::axisLabels({.fraction = 0.70, .length = 200}), (Labels{.start = true, .end = false}));
    EXPECT_EQ(Pace::axisLabels({.fraction = 2.0, .length = 200}), (Labels{.start = true, .end = false}));
    EXPECT_EQ(Pace::axisLabels({.fraction = 0.5, .length = 100}), (Labels{.start = false, .end = false}));
}

} // namespace
} // namespace HarrowlaneApp
