#include "Report/Report.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include "Report/SampleReport.h"

namespace Report {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using UsageModel::AnchorSource;
using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::ModelClass;
using UsageModel::UsageEvent;
using UsageModel::WindowKind;

UsageReport reportOf(const std::vector<UsageEvent>& turns, const Calendar& calendar = Calendar::utc()) {
    return makeReport({.events = turns, .now = sampleNow, .calendar = calendar});
}

UsageReport reportOf(const UsageModel::GaugeReading& gauge) {
    return makeReport({.gauge = gauge, .now = sampleNow, .calendar = Calendar::utc()});
}

std::int64_t turnsIn(Span span, double secondsBeforeNow) {
    return reportOf({turn(secondsBeforeNow, ModelClass::opus, {.input = 1})}).usage(span).total.turns;
}

TEST(Report, OfNothingHasEverySpanAtZero) {
    const UsageReport report = reportOf(std::vector<UsageEvent>());
    EXPECT_EQ(report.spans.size(), 3U);
    for (const auto& [span, usage] : report.spans) {
        EXPECT_EQ(usage.total, Tally{});
        EXPECT_TRUE(usage.byClass.empty());
    }
    EXPECT_THAT(report.busiestDays, IsEmpty());
    EXPECT_FALSE(report.official.has_value());
}

TEST(Report, FiveHoursHoldBothEnds) {
    EXPECT_EQ(turnsIn(Span::fiveHours, 18000), 1);
    EXPECT_EQ(turnsIn(Span::fiveHours, 18000.001), 0);
    EXPECT_EQ(turnsIn(Span::fiveHours, 0), 1);
    EXPECT_EQ(turnsIn(Span::fiveHours, -0.001), 0);
}

TEST(Report, SevenDaysHoldBothEnds) {
    EXPECT_EQ(turnsIn(Span::sevenDays, 604800), 1);
    EXPECT_EQ(turnsIn(Span::sevenDays, 604800.001), 0);
    EXPECT_EQ(turnsIn(Span::sevenDays, 0), 1);
    EXPECT_EQ(turnsIn(Span::sevenDays, -0.001), 0);
}

TEST(Report, AllTimeHoldsTheFutureToo) {
    EXPECT_EQ(turnsIn(Span::allTime, 1e9), 1);
    EXPECT_EQ(turnsIn(Span::allTime, -1e9), 1);
}

TEST(Report, SumsEachCategoryOfEachClass) {
    const UsageReport report = reportOf({
        turn(3, ModelClass::haiku, {.input = 1, .output = 10, .cacheCreation = 100, .cacheRead = 1000}),
        turn(2, ModelClass::opus, {.input = 5}),
        turn(1, ModelClass::haiku, {.input = 2, .output = 20, .cacheCreation = 200, .cacheRead = 2000}),
    });
    const SpanUsage usage = report.usage(Span::fiveHours);
    ASSERT_EQ(usage.byClass.size(), 2U);
    const Tally haiku = usage.byClass.valueOr(ModelClass::haiku, {});
    EXPECT_EQ(haiku.turns, 2);
    EXPECT_EQ(haiku.input, 3);
    EXPECT_EQ(haiku.output, 30);
    EXPECT_EQ(haiku.cacheCreation, 300);
    EXPECT_EQ(haiku.cacheRead, 3000);
    EXPECT_EQ(haiku.tokens(), 3333);
    EXPECT_DOUBLE_EQ(haiku.units, (3 + 5 * 30 + 1.25 * 300 + 0.1 * 3000) * 0.2 * 1e-7);
    EXPECT_EQ(usage.total.turns, 3);
    EXPECT_EQ(usage.total.input, 8);
    EXPECT_DOUBLE_EQ(usage.total.units, haiku.units + 5e-7);
}

TEST(Report, CountsBeyond64BitsAreHeld) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    const UsageReport report = reportOf({turn(2, ModelClass::opus, {.input = most, .output = 1}),
                                         turn(1, ModelClass::opus, {.input = most, .output = 1})});
    const Tally total = report.usage(Span::allTime).total;
    EXPECT_EQ(total.input, most);
    EXPECT_EQ(total.output, 2);
    EXPECT_EQ(total.tokens(), most);
}

TEST(Report, TheBusiestDaysAreTheFiveHeaviest) {
    std::vector<UsageEvent> turns;
    for (int day = 0; day < 7; ++day) turns.push_back(turn(day * 86400.0, ModelClass::opus, {.input = (day * 3) % 7}));
    std::vector<std::int64_t> inputs;
    for (const DayUsage& day : reportOf(turns).busiestDays) inputs.push_back(day.tally.input);
    EXPECT_THAT(inputs, ElementsAre(6, 5, 4, 3, 2));
}

TEST(Report, OfDaysOfEqualWeightTheLaterComesFirst) {
    const UsageReport report =
        reportOf({turn(86400, ModelClass::opus, {.input = 1}), turn(0, ModelClass::opus, {.input = 1})});
    ASSERT_THAT(report.busiestDays, SizeIs(2));
    EXPECT_GT(report.busiestDays[0].start, report.busiestDays[1].start);
}

TEST(Report, ADayIsALocalDay) {
    // 10:20:30 in UTC is 02:20:30 in Los Angeles: three hours earlier was still the day before there, not in UTC.
    const std::vector<UsageEvent> turns{turn(3 * 3600, ModelClass::opus, {.input = 1}),
                                        turn(0, ModelClass::opus, {.input = 1})};
    EXPECT_THAT(reportOf(turns).busiestDays, SizeIs(1));
    const UsageReport western = reportOf(turns, *Calendar::inZone("America/Los_Angeles"));
    ASSERT_THAT(western.busiestDays, SizeIs(2));
    EXPECT_EQ(western.busiestDays[0].start, Date{1772352000}); // 2026-03-01 00:00 there, 08:00 in UTC
}

TEST(Report, TheOfficialWindowsAreThoseThatStateAPercentage) {
    const auto official = reportOf(sampleGauge()).official;
    ASSERT_TRUE(official.has_value());
    EXPECT_EQ(official->capturedAt, sampleNow - 240);
    EXPECT_EQ(official->source, AnchorSource::oauth);
    ASSERT_THAT(official->windows, SizeIs(2));
    EXPECT_EQ(official->windows[0].window, WindowKind::session5h);
    EXPECT_EQ(official->windows[0].usedPercentage, 42);
    EXPECT_EQ(official->windows[0].resetsAt, sampleNow + 7980);
    EXPECT_EQ(official->windows[1].window, WindowKind::weeklyAll);
    EXPECT_EQ(official->windows[1].usedPercentage, 91.5);
    EXPECT_FALSE(official->windows[1].resetsAt.has_value());
}

TEST(Report, AReadingWithoutAnyPercentageIsNone) {
    EXPECT_FALSE(reportOf({.capturedAt = 1, .source = "x", .windows = {{"five_hour", {.resetsAt = 2}}}}).official);
}

TEST(Report, AnySourceButTheTokenIsTheStatusLine) {
    UsageModel::GaugeReading gauge = sampleGauge();
    gauge.source = "whatever";
    EXPECT_EQ(reportOf(gauge).official->source, AnchorSource::statusLine);
}

} // namespace
} // namespace Report
