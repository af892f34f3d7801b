#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "UsageEngine/Scene.h"

namespace UsageEngine {
namespace {

using UsageModel::Anchor;
using UsageModel::Date;
using UsageModel::GaugeReading;
using UsageModel::WindowKind;

constexpr Date now = sunday;
constexpr double fiveHours = 5 * hour;
constexpr double fourHundredDays = 34560000;
constexpr double infinity = std::numeric_limits<double>::infinity();

WindowBounds sessionBounds(const std::optional<GaugeReading>& gauge, const std::vector<Anchor>& anchors = {}) {
    return windowBounds(
        {.kind = WindowKind::session5h, .gauge = gauge ? &*gauge : nullptr, .now = now, .anchors = anchors});
}

WindowBounds byGauge(Date reset) {
    return sessionBounds(reading(now, {{"five_hour", told(10, reset)}}));
}

WindowBounds byAnchor(Date reset) {
    return sessionBounds({}, {resetTold(WindowKind::session5h, now - 1.0, reset)});
}

WindowBounds endingAt(Date reset, bool estimated) {
    return {.start = reset - fiveHours, .resetsAt = reset, .estimated = estimated};
}

WindowBounds trailing() {
    return {.start = now - fiveHours, .resetsAt = {}, .estimated = true};
}

struct KindRow {
    WindowKind kind;
    const char* key;
    double length;
};

class WindowBoundsOfKind : public testing::TestWithParam<KindRow> {};

TEST_P(WindowBoundsOfKind, EndAtTheGaugesReset) {
    const auto& [kind, key, length] = GetParam();
    const GaugeReading gauge = reading(now, {{key, told(10, now + hour)}});
    EXPECT_EQ(windowBounds({.kind = kind, .gauge = &gauge, .now = now, .anchors = {}}),
              (WindowBounds{.start = now + hour - length, .resetsAt = now + hour, .estimated = false}));
    for (const WindowKind other : UsageModel::allCases<WindowKind>) {
        if (other == kind) continue;
        EXPECT_FALSE(windowBounds({.kind = other, .gauge = &gauge, .now = now, .anchors = {}}).resetsAt);
    }
}

TEST_P(WindowBoundsOfKind, TrailWhereNothingTellsThem) {
    const auto& [kind, key, length] = GetParam();
    EXPECT_EQ(windowBounds({.kind = kind, .gauge = nullptr, .now = now, .anchors = {}}),
              (WindowBounds{.start = now - length, .resetsAt = {}, .estimated = true}));
}

INSTANTIATE_TEST_SUITE_P(Kinds, WindowBoundsOfKind,
                         testing::Values(KindRow{WindowKind::session5h, "five_hour", 18000},
                                         KindRow{WindowKind::weeklyAll, "seven_day", 604800},
                                         KindRow{WindowKind::weeklyOpus, "seven_day_opus", 604800}));

TEST(WindowBounds, AReadingHasNoAgeLimit) {
    const GaugeReading old = reading(now - 1000 * day, {{"five_hour", told({}, now + hour)}});
    EXPECT_EQ(sessionBounds(old), endingAt(now + hour, false)) << "nor does a reset need a percentage";
}

TEST(WindowBounds, APassedResetIsCarriedForwardByWholeWindows) {
    EXPECT_EQ(byGauge(now - 12 * hour), endingAt(now + 3 * hour, false));
    EXPECT_EQ(byGauge(now - 1.0), endingAt(now + fiveHours - 1.0, false));
    EXPECT_EQ(byGauge(now - fiveHours + 1.0), endingAt(now + 1.0, false));
    EXPECT_EQ(byGauge(now - 3 * fiveHours), endingAt(now + fiveHours, false)) << "on the grid itself";
    EXPECT_EQ(byAnchor(now - 12 * hour), endingAt(now + 3 * hour, true));
}

TEST(WindowBounds, AResetNowBeginsAWholeWindow) {
    EXPECT_EQ(byGauge(now), endingAt(now + fiveHours, false));
    EXPECT_EQ(byGauge(now).start, now);
}

TEST(WindowBounds, AResetAheadIsTakenAsItIs) {
    EXPECT_EQ(byGauge(now + 1e-3), endingAt(now + 1e-3, false));
    EXPECT_EQ(byGauge(now + 7 * hour), endingAt(now + 7 * hour, false)) << "also where the window is yet to begin";
}

TEST(WindowBounds, TheGaugeBeatsAnchors) {
    const GaugeReading gauge = reading(now - day, {{"five_hour", told({}, now + hour)}});
    EXPECT_EQ(sessionBounds(gauge, {resetTold(WindowKind::session5h, now, now + 2 * hour)}),
              endingAt(now + hour, false));
}

TEST(WindowBounds, AnchorsStandInWhereTheGaugeTellsNoReset) {
    const std::vector<Anchor> anchors{resetTold(WindowKind::session5h, now - day, now + 2 * hour)};
    const WindowBounds expected = endingAt(now + 2 * hour, true);
    EXPECT_EQ(sessionBounds(reading(now, {{"five_hour", told(10, {})}}), anchors), expected);
    EXPECT_EQ(sessionBounds(reading(now, {{"seven_day", told(10, now + hour)}}), anchors), expected);
    EXPECT_EQ(sessionBounds(reading(now, {}), anchors), expected);
}

TEST(WindowBounds, TheLatestAnchorWithAResetCounts) {
    const auto at = [](double age, std::optional<Date> reset) {
        return resetTold(WindowKind::session5h, now - age, reset);
    };
    EXPECT_EQ(sessionBounds({}, {at(60, now + hour), at(30, {})}), endingAt(now + hour, true))
        << "a later one without a reset tells nothing";
    EXPECT_EQ(sessionBounds({}, {at(60, now + hour), at(30, now + 2 * hour), at(90, now + 3 * hour)}),
              endingAt(now + 2 * hour, true));
    EXPECT_EQ(sessionBounds({}, {at(60, now + hour), at(60, now + 2 * hour)}), endingAt(now + hour, true))
        << "of equals the first";
    EXPECT_EQ(sessionBounds({}, {at(-60, now + hour), at(60, now + 2 * hour)}), endingAt(now + hour, true))
        << "its own instant may lie ahead";
}

TEST(WindowBounds, AnchorsOfOtherWindowsTellNothing) {
    EXPECT_EQ(sessionBounds({}, {resetTold(WindowKind::weeklyAll, now, now + hour),
                                 resetTold(WindowKind::weeklyOpus, now, now + hour)}),
              trailing());
}

TEST(WindowBounds, AResetMoreThanFourHundredDaysAheadIsNone) {
    EXPECT_EQ(byGauge(now + fourHundredDays), endingAt(now + fourHundredDays, false));
    EXPECT_EQ(byGauge(now + (fourHundredDays + 1)), trailing());
    EXPECT_EQ(byAnchor(now + fourHundredDays), endingAt(now + fourHundredDays, true));
    EXPECT_EQ(byAnchor(now + (fourHundredDays + 1)), trailing());
    EXPECT_EQ(byGauge(Date{now.secondsSince1970 * 1000}), trailing()) << "milliseconds taken for seconds";
}

TEST(WindowBounds, AResetThatIsNoInstantIsNone) {
    for (const double reset : {infinity, -infinity, std::nan(""), -1e300, 1e300}) {
        EXPECT_EQ(byGauge(Date{reset}), trailing()) << reset;
        EXPECT_EQ(byAnchor(Date{reset}), trailing()) << reset;
    }
}

TEST(WindowBounds, AnAbsurdResetLeavesTheNextOneToTell) {
    const Anchor sound = resetTold(WindowKind::session5h, now - day, now + hour);
    const Anchor absurd = resetTold(WindowKind::session5h, now, now + 2 * fourHundredDays);
    EXPECT_EQ(sessionBounds(reading(now, {{"five_hour", told(10, Date{1e300})}}), {sound, absurd}),
              endingAt(now + hour, true));
}

TEST(WindowBounds, AResetLongPastStaysOnItsGrid) {
    const WindowBounds bounds = byGauge(Date{0.25});
    EXPECT_EQ(bounds.start, *bounds.resetsAt - fiveHours);
    EXPECT_LE(bounds.start, now);
    EXPECT_GT(*bounds.resetsAt, now);
    EXPECT_EQ(std::fmod(bounds.resetsAt->secondsSince1970, fiveHours), 0.25);
}

TEST(WindowBounds, AResetAheadByLessThanNumbersTellIsOneThatIsNow) {
    // Here dates begin to be held to a two millionth of a second, and not to half of that.
    const Date moment{0x1p31};
    const GaugeReading gauge = reading(moment, {{"five_hour", told(10, moment - fiveHours + 0x1p-22)}});
    EXPECT_EQ(windowBounds({.kind = WindowKind::session5h, .gauge = &gauge, .now = moment, .anchors = {}}),
              endingAt(moment + fiveHours, false));
}

TEST(WindowBounds, BeforeNineteenSeventyTheGridIsTheSame) {
    const GaugeReading gauge = reading(Date{-1e6}, {{"five_hour", told(10, Date{-1e6 - 1})}});
    EXPECT_EQ(windowBounds({.kind = WindowKind::session5h, .gauge = &gauge, .now = Date{-1e6}, .anchors = {}}),
              endingAt(Date{-1e6 - 1 + fiveHours}, false));
}

TEST(GaugeWindow, IsFoundByItsNameInTheStatusLine) {
    const GaugeReading gauge = reading(now, {{"five_hour", told(1, {})}, {"session5h", told(2, {})}});
    EXPECT_EQ(gaugeWindow(&gauge, WindowKind::session5h)->usedPercentage, 1);
    EXPECT_EQ(gaugeWindow(&gauge, WindowKind::weeklyAll), nullptr);
    EXPECT_EQ(gaugeWindow(nullptr, WindowKind::session5h), nullptr);
}

} // namespace
} // namespace UsageEngine
