#include "Report/ForecastLines.h"

#include <gmock/gmock.h>

#include "Report/SampleSnapshot.h"
#include "Report/ViewOf.h"

namespace Report {
namespace {

using testing::HasSubstr;
using testing::Not;
using UsageModel::Projection;
using UsageModel::UsageSnapshot;

constexpr double hour = 3600;

/// The forecast of the sample's week, changed; in one line.
template <typename Change>
std::string weekForecast(Change change) {
    UsageSnapshot snapshot = sampleSnapshot();
    change(snapshot.projections[1]);
    snapshot.projections = {snapshot.projections[1]};
    return sectionText(forecastLines, snapshot, 200);
}

TEST(ForecastLines, OfEveryWindow) {
    EXPECT_EQ(sectionText(forecastLines, sampleSnapshot()),
              R"(Session · 5h   lands at 61% · likely lasts until its reset
Weekly · all   lands at 112% · likely out Mon 11:20 PM, in 1d 13h
               at the earliest Mon 6:20 AM, in 20h
Opus · weekly  none without an official reading
)");
}

TEST(ForecastLines, WhereItIsNarrow) {
    EXPECT_EQ(sectionText(forecastLines, sampleSnapshot(), 40), R"(Session · 5h
  lands at 61%
  likely lasts until its reset
Weekly · all
  lands at 112%
  likely out Mon 11:20 PM, in 1d 13h
  at the earliest Mon 6:20 AM, in 20h
Opus · weekly
  none without an official reading
)");
}

TEST(ForecastLines, ADateAfterTheResetIsNone) {
    const std::string text = weekForecast([](Projection& projection) {
        projection.likelyEmpty = sampleNow + 1000 * hour;
        projection.earliestEmpty = sampleNow + 900 * hour;
    });
    EXPECT_EQ(text, "Weekly · all   lands at 112% · likely lasts until its reset\n");
}

TEST(ForecastLines, TheFastPaceAloneMayRunOut) {
    const std::string text = weekForecast([](Projection& projection) { projection.likelyEmpty.reset(); });
    EXPECT_EQ(text, "Weekly · all   lands at 112% · likely lasts until its reset"
                    " · at the earliest Mon 6:20 AM, in 20h\n");
}

TEST(ForecastLines, AnEarliestThatIsTheLikelyOneIsToldOnce) {
    const std::string text =
        weekForecast([](Projection& projection) { projection.earliestEmpty = projection.likelyEmpty; });
    EXPECT_THAT(text, Not(HasSubstr("earliest")));
}

TEST(ForecastLines, WhatIsUsedUpHasNoDate) {
    const std::string text = weekForecast([](Projection& projection) {
        projection.likelyEmpty = sampleNow;
        projection.earliestEmpty = sampleNow;
    });
    EXPECT_EQ(text, "Weekly · all   lands at 112% · is used up\n");
}

TEST(ForecastLines, NothingIsForecastToAnUnknownReset) {
    UsageSnapshot snapshot = sampleSnapshot();
    snapshot.meters[1].resetsAt.reset();
    EXPECT_THAT(sectionText(forecastLines, snapshot), HasSubstr("Weekly · all   none while its reset is not known\n"));
}

} // namespace
} // namespace Report
