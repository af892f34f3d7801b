#include "HarrowlaneApp/Copy/SessionDetail.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"
#include "UsageModel/Rows.h"

namespace HarrowlaneApp {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using TestSupport::capWeek;
using TestSupport::hour;
using TestSupport::monday;
using TestSupport::typicalWeek;
using TestSupport::utc;
using UsageModel::ModelClass;
using UsageModel::SessionBar;
using UsageModel::SessionCapBasis;

/// From 5 PM to 10 PM.
SessionBar session(SessionCapBasis basis, double fill) {
    return {
        .start = monday,
        .end = monday + 5 * hour,
        .fillFraction = fill,
        .weeklyCost = 0.094,
        .byModelClass = {{ModelClass::opus, 0.6}, {ModelClass::haiku, 0.3}, {ModelClass::other, 0.1}},
        .capBasis = basis,
    };
}

struct CapTextRow : TestSupport::Named {
    SessionCapBasis basis;
    double fill;
    std::optional<std::string> expected;
};

class CapTextTest : public testing::TestWithParam<CapTextRow> {};

TEST_P(CapTextTest, IsAsSureAsItsBasis) {
    EXPECT_EQ(SessionDetail::capText(session(GetParam().basis, GetParam().fill)), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Sessions, CapTextTest,
    testing::Values(CapTextRow{"own ceiling", SessionCapBasis::ownCeiling, 1.0, "100% of the 5h cap"},
                    CapTextRow{"gauge", SessionCapBasis::liveGauge, 0.744, "74% of the 5h cap"},
                    CapTextRow{"gauge beyond the cap", SessionCapBasis::liveGauge, 1.3, "100% of the 5h cap"},
                    CapTextRow{"estimate", SessionCapBasis::learnedScale, 0.5, "≈50% of the 5h cap"},
                    CapTextRow{"estimate a little over", SessionCapBasis::learnedScale, 1.05, "≈105% of the 5h cap"},
                    CapTextRow{"estimate well over", SessionCapBasis::learnedScale, 1.06, "over cap on this estimate"},
                    CapTextRow{"unknown", SessionCapBasis::uncalibrated, 0.5, std::nullopt}),
    TestSupport::rowName);

TEST(SessionDetail, TellsTheCostInTheScaleOfTheWeek) {
    const SessionBar bar = session(SessionCapBasis::liveGauge, 0.74);
    EXPECT_EQ(SessionDetail::weekCost(bar, capWeek(1.0)), "9% of the week");
    EXPECT_EQ(SessionDetail::weekCost(bar, typicalWeek()), "0.09× a typical week");
}

TEST(SessionDetail, IsOneLine) {
    SessionBar bar = session(SessionCapBasis::learnedScale, 0.61);
    EXPECT_EQ(SessionDetail::plainText(bar, capWeek(1.0), utc()),
              "Mon 5:00 PM – 10:00 PM  ·  9% of the week  ·  ≈61% of the 5h cap  ·  Opus 60%, Haiku & other 40%  ·  "
              "estimated from how much a full cap usually costs");
    bar.capBasis = SessionCapBasis::liveGauge;
    bar.isCurrent = true;
    EXPECT_EQ(SessionDetail::plainText(bar, capWeek(1.0), utc()),
              "Mon 5:00 PM – 10:00 PM — running  ·  9% of the week  ·  61% of the 5h cap  ·  "
              "Opus 60%, Haiku & other 40%");
}

TEST(SessionDetail, LeavesOutWhatIsAbsent) {
    SessionBar bar = session(SessionCapBasis::uncalibrated, 0.61);
    bar.byModelClass = {};
    EXPECT_EQ(SessionDetail::plainText(bar, typicalWeek(), utc()),
              "Mon 5:00 PM – 10:00 PM  ·  0.09× a typical week  ·  no gauge — session cap unknown");
}

TEST(SessionLog, IsNewestFirstWithARunningTotal) {
    UsageModel::WeekSeries series = capWeek(1.0);
    for (const double cost : {0.1, 0.12, 0.065}) {
        SessionBar bar = session(SessionCapBasis::liveGauge, 0.5);
        bar.start = bar.start + static_cast<double>(series.sessions.size()) * 6 * hour;
        bar.weeklyCost = cost;
        series.sessions.push_back(bar);
    }
    series.sessions.back().isCurrent = true;
    const auto rows = SessionDetail::log(series, utc());
    ASSERT_THAT(rows, SizeIs(3));
    EXPECT_EQ(rows[0].times, "Tue 5:00 AM – 10:00 PM");
    EXPECT_TRUE(rows[0].isRunning);
    EXPECT_DOUBLE_EQ(rows[0].totalBefore, 0.22);
    EXPECT_DOUBLE_EQ(rows[0].total, 0.285);
    EXPECT_EQ(rows[1].totalText, "22%");
    EXPECT_EQ(rows[2].totalText, "10%");
    EXPECT_EQ(rows[2].totalBefore, 0.0);
    EXPECT_FALSE(rows[2].isRunning);
    EXPECT_EQ(rows[2].cost, "10% of the week");
    EXPECT_EQ(rows[2].capText, "50% of the 5h cap");
    EXPECT_EQ(rows[2].plainText, SessionDetail::plainText(series.sessions[0], series, utc()));
    EXPECT_EQ(mixText(rows[2].mix[0]), "Opus 60%");
}

TEST(SessionLog, TellsMultiplesOfATypicalWeekAndNothingOfNothing) {
    UsageModel::WeekSeries series = typicalWeek();
    EXPECT_THAT(SessionDetail::log(series, utc()), IsEmpty());
    series.sessions = {session(SessionCapBasis::uncalibrated, 0.5)};
    EXPECT_EQ(SessionDetail::log(series, utc())[0].totalText, "0.09×");
    EXPECT_EQ(SessionDetail::log(series, utc())[0].capText, std::nullopt);
}

TEST(SessionLog, HasOneNoteForAll) {
    const SessionBar measured = session(SessionCapBasis::liveGauge, 0.5);
    const SessionBar estimated = session(SessionCapBasis::learnedScale, 0.5);
    const SessionBar unknown = session(SessionCapBasis::uncalibrated, 0.5);
    const auto note = [](const std::vector<SessionBar>& sessions) { return SessionDetail::logNote(sessions); };
    EXPECT_EQ(note({}), std::nullopt);
    EXPECT_EQ(note({measured}), std::nullopt);
    EXPECT_EQ(note({measured, unknown}), "no gauge — session cap unknown");
    EXPECT_EQ(note({unknown, estimated}), "≈ estimated from how much a full cap usually costs");
}

} // namespace
} // namespace HarrowlaneApp
