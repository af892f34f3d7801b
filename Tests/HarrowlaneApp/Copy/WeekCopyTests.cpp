#include "HarrowlaneApp/Copy/WeekCopy.h"

#include <cmath>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"
#include "UsageModel/Rows.h"

namespace HarrowlaneApp {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using TestSupport::capWeek;
using TestSupport::day;
using TestSupport::hour;
using TestSupport::monday;
using TestSupport::typicalWeek;
using TestSupport::utc;
using UsageModel::WeeklyNorm;
using UsageModel::WeekSeries;
using WeekCopy::Standing;
using WeekCopy::Tile;

struct StandingRow : TestSupport::Named {
    double landing;
    std::optional<double> limit;
    Standing expected;
};

class WeekStandingTest : public testing::TestWithParam<StandingRow> {};

TEST_P(WeekStandingTest, ComparesTheLandingWithTheLimit) {
    WeekSeries series = capWeek(GetParam().landing);
    series.limitLevel = GetParam().limit;
    EXPECT_EQ(WeekCopy::standing(series), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Weeks, WeekStandingTest,
    testing::Values(StandingRow{"well below", 0.5, 1.0, Standing::comfortable},
                    StandingRow{"just below the lower edge", std::nextafter(0.95, 0), 1.0, Standing::comfortable},
                    StandingRow{"at the lower edge", 0.95, 1.0, Standing::close},
                    StandingRow{"at the limit", 1.0, 1.0, Standing::close},
                    StandingRow{"at the upper edge", 1.05, 1.0, Standing::close},
                    StandingRow{"just above the upper edge", std::nextafter(1.05, 2), 1.0, Standing::over},
                    StandingRow{"against another limit", 1.0, 2.0, Standing::comfortable},
                    StandingRow{"no limit and one typical week", 1.0, {}, Standing::close},
                    StandingRow{"no limit and more than that", 1.06, {}, Standing::over},
                    StandingRow{"a limit of nothing", 0.001, 0.0, Standing::over},
                    StandingRow{"nothing of a limit of nothing", 0.0, 0.0, Standing::comfortable},
                    StandingRow{"a negative limit", 0.001, -1.0, Standing::over}),
    TestSupport::rowName);

TEST(WeekStanding, OfALimitOfNothingDividesByABillionth) {
    WeekSeries series = capWeek(1e-9);
    series.limitLevel = 0.0;
    EXPECT_EQ(WeekCopy::standing(series), Standing::close);
}

TEST(WeekStanding, HasItsColours) {
    EXPECT_EQ(WeekCopy::signal(Standing::comfortable), Signal::good);
    EXPECT_EQ(WeekCopy::signal(Standing::close), Signal::warn);
    EXPECT_EQ(WeekCopy::signal(Standing::over), Signal::crit);
    EXPECT_EQ(WeekCopy::severity(Standing::comfortable), UsageModel::Severity::green);
    EXPECT_EQ(WeekCopy::severity(Standing::close), UsageModel::Severity::amber);
    EXPECT_EQ(WeekCopy::severity(Standing::over), UsageModel::Severity::red);
}

/// A week that runs out on Sunday at 11:13 PM.
WeekSeries overWeek() {
    WeekSeries series = capWeek(1.053);
    series.usedNow = 0.577;
    series.intensity = 1.22;
    series.crossing = monday + 6 * day + 6 * hour + 780;
    return series;
}

TEST(WeekContent, TellsWhenTheWeekRunsOut) {
    const auto content = WeekCopy::content(overWeek(), utc());
    EXPECT_EQ(content.headline, "You run out Sunday at 11:13 PM");
    EXPECT_EQ(content.detail, "That is 17h short of the reset.");
    EXPECT_THAT(content.tiles,
                ElementsAre(Tile{"58", "%", "of the weekly cap used", Standing::over},
                            Tile{"41", "%", "of the week elapsed", {}}, Tile{"1.4×", "", "used vs. time elapsed", {}},
                            Tile{"1.22×", "", "vs a typical week", {}}, Tile{"4d 3h", "", "until reset", {}},
                            Tile{"105", "%", "projected by reset", Standing::over}));
}

TEST(WeekContent, TellsTheTimeWhereTheUserIs) {
    const auto newYork = *UsageModel::Calendar::inZone("America/New_York");
    EXPECT_EQ(WeekCopy::content(overWeek(), newYork).headline, "You run out Sunday at 7:13 PM")
        << "the clock was set forward that day";
}

TEST(WeekContent, OffersTheCheapestChangeThatFits) {
    WeekSeries series = overWeek();
    series.whatIf = TestSupport::opusSpace();
    EXPECT_EQ(WeekCopy::content(series, utc()).detail,
              "That is 17h short of the reset. Haiku lands you inside the cap.");
    series.whatIf->familyMultiplier = {{UsageModel::ModelClass::opus, 1.0}, {UsageModel::ModelClass::sonnet, 0.6}};
    EXPECT_EQ(WeekCopy::content(series, utc()).detail,
              "That is 17h short of the reset. Sonnet at low effort lands you inside the cap.");
    series.whatIf->familyMultiplier = {};
    EXPECT_EQ(WeekCopy::content(series, utc()).detail,
              "That is 17h short of the reset. low effort lands you inside the cap.");
}

TEST(WeekContent, SaysWhereNoChangeIsEnough) {
    WeekSeries series = overWeek();
    series.whatIf = TestSupport::opusSpace();
    series.usedNow = 1.0;
    EXPECT_EQ(
        WeekCopy::content(series, utc()).detail,
        "That is 17h short of the reset. Even Haiku leaves you over — no single change gets you there on its own.")
        << "it lands beyond the limit by whatever is still used";
    series.usedNow = 0.99;
    series.coneLikelyEnd.used = 1.04;
    EXPECT_THAT(WeekCopy::content(series, utc()).detail, EndsWith(" on its own."))
        << "landing exactly on the limit is not below it";
}

TEST(WeekContent, NeedsBothACrossingAndALandingAboveTheLimitToRunOut) {
    WeekSeries series = overWeek();
    series.crossing.reset();
    EXPECT_EQ(WeekCopy::content(series, utc()).headline, "On track to finish the week around 105%");
    series = overWeek();
    series.coneLikelyEnd.used = 1.0;
    EXPECT_EQ(WeekCopy::content(series, utc()).headline, "On track to finish the week around 100%");
    EXPECT_EQ(WeekCopy::content(series, utc()).detail, "Running 1.22× your usual pace with 4d 3h left.");
}

TEST(WeekContent, LeavesAWeekUnspentWhereTheNormSaysSo) {
    WeekSeries series = capWeek(0.644);
    EXPECT_EQ(WeekCopy::content(series, utc()).headline, "You will leave about 36% of the week unspent");
    EXPECT_EQ(WeekCopy::content(series, utc()).detail,
              "Room to spare at your current pace, with 4d 3h left in the window.");
    series.norm.basis = WeeklyNorm::Basis::single;
    EXPECT_EQ(WeekCopy::content(series, utc()).headline, "On track to finish the week around 64%");
    EXPECT_EQ(WeekCopy::content(capWeek(0.645), utc()).headline, "On track to finish the week around 65%");
    EXPECT_EQ(WeekCopy::content(capWeek(0.0), utc()).headline, "You will leave about 100% of the week unspent");
}

TEST(WeekContent, HoldsTheBurnRatioAndJudgesByIt) {
    WeekSeries series = capWeek(0.9);
    const auto tiles = [&] { return WeekCopy::content(series, utc()).tiles; };
    series.usedNow = 0.41 * 1.25;
    EXPECT_EQ(tiles()[0].standing, Standing::close);
    series.usedNow = 0.41 * 1.05 - 1e-9;
    EXPECT_EQ(tiles()[0].standing, Standing::comfortable);
    series.usedNow = 41.0;
    EXPECT_EQ(tiles()[0].standing, Standing::over);
    EXPECT_EQ(tiles()[2].value, "9.9×");
    series.now = monday + hour;
    EXPECT_EQ(tiles()[2].value, "1.0×") << "too early to read a rate";
}

TEST(WeekContent, OfAWindowWithoutLengthCountsSeconds) {
    WeekSeries series = capWeek(0.9);
    series.windowEnd = series.windowStart;
    series.now = series.windowStart + 3.0;
    EXPECT_EQ(WeekCopy::content(series, utc()).tiles[1].value, "300");
    EXPECT_EQ(WeekCopy::content(series, utc()).tiles[4].value, "1m");
}

TEST(WeekContent, WithoutAGaugeSpeaksOfTypicalWeeksOnly) {
    WeekSeries series = typicalWeek();
    series.intensity = 1.336;
    series.intensityIsMeaningful = true;
    series.usedNow = 0.67;
    series.coneLikelyEnd.used = 5.0;
    series.crossing = monday + day;
    const auto content = WeekCopy::content(series, utc());
    EXPECT_EQ(content.headline, "This week is running 1.34× a typical week for you");
    EXPECT_EQ(content.detail,
              "That is the heaviest stretch in your recent history. Whether it breaks your account cap is a question "
              "these logs cannot answer — the shape of the week is in them, the ceiling is not.");
    EXPECT_THAT(content.tiles, ElementsAre(Tile{"1.34×", "", "projected vs a typical week", Standing::close},
                                           Tile{"0.67×", "", "of a typical week so far", {}},
                                           Tile{"41", "%", "of the week elapsed", {}},
                                           Tile{"4d 3h", "", "until reset (estimated)", {}}));
}

TEST(WeekContent, WarmsUpWhileTheIntensityMeansNothing) {
    WeekSeries series = typicalWeek();
    series.intensity = 7.0;
    const auto content = WeekCopy::content(series, utc());
    EXPECT_EQ(content.headline, "Warming up — not enough of the week has elapsed yet to gauge your pace");
    EXPECT_EQ(content.detail, "Connect the usage helper in Settings to see this against your account's real limits.");
    EXPECT_EQ(content.tiles[0], (Tile{"7.00×", "", "projected vs a typical week", Standing::close}))
        << "always close, whatever the number";
}

TEST(WeekCompact, TellsWhenTheWeekRunsOut) {
    const auto compact = WeekCopy::compact(overWeek(), utc());
    EXPECT_EQ(compact.headline, "Runs out Sun 11:13 PM");
    EXPECT_EQ(compact.badge, "Over pace");
    EXPECT_EQ(compact.resetLine, "resets Mon 5 PM · 4d 3h");
    EXPECT_THAT(compact.stats, ElementsAre(WeekCopy::Stat{"58%", "used"}, WeekCopy::Stat{"41%", "elapsed"}));
    EXPECT_EQ(compact.standing, Standing::over);
}

struct CompactRow : TestSupport::Named {
    double landing;
    bool crosses;
    WeeklyNorm::Basis basis;
    std::string_view headline;
    std::string_view badge;
};

class WeekCompactTest : public testing::TestWithParam<CompactRow> {};

TEST_P(WeekCompactTest, HasItsHeadlineAndBadge) {
    WeekSeries series = capWeek(GetParam().landing);
    if (GetParam().crosses) series.crossing = monday;
    series.norm.basis = GetParam().basis;
    const auto compact = WeekCopy::compact(series, utc());
    EXPECT_EQ(compact.headline, GetParam().headline);
    EXPECT_EQ(compact.badge, GetParam().badge);
}

using Basis = WeeklyNorm::Basis;

INSTANTIATE_TEST_SUITE_P(
    Weeks, WeekCompactTest,
    testing::Values(
        CompactRow{"over with a crossing", 1.2, true, Basis::mean, "Runs out Mon 5:00 PM", "Over pace"},
        CompactRow{"a little over", 1.04, true, Basis::mean, "Runs out Mon 5:00 PM", "Cutting it fine"},
        CompactRow{"over without a crossing", 1.2, false, Basis::mean, "Over the cap by reset", "Over pace"},
        CompactRow{"a little over without one", 1.01, false, Basis::mean, "Over the cap by reset", "Cutting it fine"},
        CompactRow{"exactly at the limit", 1.0, true, Basis::mean, "On track for 100%", "Close to the cap"},
        CompactRow{"close below", 0.95, false, Basis::mean, "On track for 95%", "Close to the cap"},
        CompactRow{"on track", 0.8, false, Basis::mean, "On track for 80%", "On track"},
        CompactRow{"at the edge of room", 0.65, false, Basis::mean, "On track for 65%", "On track"},
        CompactRow{"room to spare", 0.64, false, Basis::median, "Lands 64%, room to spare", "Under pace"},
        CompactRow{"room that one week cannot show", 0.3, false, Basis::single, "On track for 30%", "On track"}),
    TestSupport::rowName);

TEST(WeekCompact, CanDisagreeWithTheDashboardUnderAnotherLimit) {
    WeekSeries series = capWeek(1.0);
    series.limitLevel = 2.0;
    EXPECT_EQ(WeekCopy::compact(series, utc()).headline, "Lands 100%, room to spare");
    EXPECT_EQ(WeekCopy::content(series, utc()).headline, "On track to finish the week around 100%");
    series = capWeek(0.6499);
    EXPECT_EQ(WeekCopy::compact(series, utc()).headline, "Lands 65%, room to spare");
    EXPECT_EQ(WeekCopy::content(series, utc()).headline, "On track to finish the week around 65%");
}

TEST(WeekCompact, MarksAnEstimatedReset) {
    WeekSeries series = capWeek(0.8);
    series.boundaryEstimated = true;
    EXPECT_EQ(WeekCopy::compact(series, utc()).resetLine, "resets ~Mon 5 PM · 4d 3h");
}

TEST(WeekCompact, WithoutAGaugeIsComfortable) {
    WeekSeries series = typicalWeek();
    series.coneLikelyEnd.used = 5.0;
    series.crossing = monday + day;
    series.intensity = 1.22;
    series.usedNow = 0.67;
    EXPECT_EQ(WeekCopy::compact(series, utc()),
              (WeekCopy::Compact{.headline = "Warming up",
                                 .badge = "No gauge",
                                 .resetLine = "resets Mon 5 PM · 4d 3h",
                                 .stats = {{"0.67×", "of typical"}, {"41%", "elapsed"}},
                                 .standing = Standing::comfortable}));
    series.intensityIsMeaningful = true;
    EXPECT_EQ(WeekCopy::compact(series, utc()).headline, "1.22× a typical week");
}

} // namespace
} // namespace HarrowlaneApp
