#include "HarrowlaneApp/Copy/DashboardTexts.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using testing::ElementsAre;
using TestSupport::capWeek;
using TestSupport::monday;
using UsageModel::ModelClass;
using UsageModel::SeriesScale;
using UsageModel::WeeklyNorm;
using UsageModel::WeekSeries;

TEST(WeekChip, PutsTheSampleFirst) {
    using DashboardTexts::weekChip;
    EXPECT_EQ(weekChip({.scale = SeriesScale::capFraction}), std::nullopt);
    EXPECT_EQ(weekChip({.scale = SeriesScale::typicalWeeks}), "Estimated · no gauge");
    EXPECT_EQ(weekChip({.isSample = true, .scale = SeriesScale::typicalWeeks}), "Sample data");
}

TEST(Banner, AsksForTheGaugeThatIsMissing) {
    EXPECT_TRUE(DashboardTexts::showsBanner(SeriesScale::typicalWeeks));
    EXPECT_FALSE(DashboardTexts::showsBanner(SeriesScale::capFraction));
}

TEST(EmptyWeek, WaitsOrExplains) {
    using DashboardTexts::emptyWeekText;
    EXPECT_EQ(emptyWeekText(Readiness::warmingUp), "Reading your usage history");
    for (const Readiness readiness : {Readiness::noLogsFound, Readiness::noUsageYet, Readiness::ready}) {
        EXPECT_EQ(emptyWeekText(readiness), "The week view needs at least a little history to draw from.");
    }
}

std::vector<std::string_view> namesOf(const DashboardTexts::Legend& legend) {
    std::vector<std::string_view> names;
    for (const auto& key : legend.lines) names.push_back(key.name);
    return names;
}

TEST(Legend, NamesWhatIsDrawn) {
    WeekSeries series = capWeek(1.0);
    EXPECT_THAT(namesOf(DashboardTexts::legend(series, {})), ElementsAre("burned so far"));
    series.forecastLikely = {{series.now, 0.5}};
    series.baseline = {{monday, 0.0}};
    series.sessions = {{.start = monday,
                        .end = monday + 18000,
                        .fillFraction = 0.5,
                        .byModelClass = {{ModelClass::haiku, 0.4}, {ModelClass::sonnet, 0.6}},
                        .capBasis = UsageModel::SessionCapBasis::liveGauge}};
    const auto legend = DashboardTexts::legend(series, 0.5);
    EXPECT_THAT(namesOf(legend),
                ElementsAre("burned so far", "forecast", "a typical week for you", "if you change something"));
    EXPECT_THAT(legend.families, ElementsAre(ChartBucket::sonnet, ChartBucket::other));
}

TEST(Legend, NamesTheTypicalCurveByItsBasis) {
    WeekSeries series = capWeek(1.0);
    series.baseline = {{monday, 0.0}};
    const auto nameFor = [&](WeeklyNorm::Basis basis) {
        series.norm.basis = basis;
        return namesOf(DashboardTexts::legend(series, {}));
    };
    EXPECT_THAT(nameFor(WeeklyNorm::Basis::mean), ElementsAre("burned so far", "your last two weeks"));
    EXPECT_THAT(nameFor(WeeklyNorm::Basis::single), ElementsAre("burned so far", "last week"));
    EXPECT_THAT(nameFor(WeeklyNorm::Basis::currentPace), ElementsAre("burned so far", "your current pace"));
    EXPECT_THAT(nameFor(WeeklyNorm::Basis::none), ElementsAre("burned so far"));
}

} // namespace
} // namespace HarrowlaneApp
