#include "HarrowlaneApp/Copy/DashboardTexts.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/ModelsTexts.h"
#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using TestSupport::capWeek;
using TestSupport::monday;
using UsageModel::ModelBreakdown;
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

TEST(ModelRows, AreAllFamiliesInTheirOrder) {
    const auto rows =
        ModelsTexts::rows({.byClass = {{ModelClass::haiku, 0.2}, {ModelClass::opus, 1.0}, {ModelClass::fable, 0.8}}});
    ASSERT_THAT(rows, SizeIs(5));
    EXPECT_EQ(rows[0].name, "Opus");
    EXPECT_EQ(rows[0].percentNumber, "50");
    EXPECT_EQ(rows[0].share, 0.5);
    EXPECT_EQ(rows[2].name, "Sonnet");
    EXPECT_EQ(rows[2].percentNumber, "0");
    EXPECT_FALSE(rows[2].isUsed);
    EXPECT_EQ(rows[4].name, "Other");
}

TEST(ModelRows, OfNothingAreNone) {
    EXPECT_THAT(ModelsTexts::rows({}), IsEmpty());
    EXPECT_THAT(ModelsTexts::rows({.byClass = {{ModelClass::opus, 0.0}}}), IsEmpty());
}

TEST(ModelNote, TellsOfTheSharedCapWhereBothAreInUse) {
    using UsageModel::EnumMap;
    const auto note = [](const EnumMap<ModelClass, double>& byClass) { return ModelsTexts::note({byClass}); };
    EXPECT_EQ(note({{ModelClass::opus, 0.45}, {ModelClass::fable, 0.43}, {ModelClass::sonnet, 0.12}}),
              "Opus and Fable share the same weekly cap — together they are 88% of this week.");
    EXPECT_EQ(note({{ModelClass::opus, 1.0}, {ModelClass::fable, 0.0}}), std::nullopt);
    EXPECT_EQ(note({{ModelClass::fable, 1.0}}), std::nullopt);
    EXPECT_EQ(note({}), std::nullopt);
    EXPECT_EQ(note({{ModelClass::opus, 1.0}, {ModelClass::fable, 1.0}, {ModelClass::other, -5.0}}), std::nullopt)
        << "shares of a negative total say nothing";
}

} // namespace
} // namespace HarrowlaneApp
