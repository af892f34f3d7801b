#include "UsageEngine/SessionCapScale.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"
#include "UsageModel/Rows.h"

namespace UsageEngine {
namespace {

using UsageModel::Anchor;
using UsageModel::AnchorKind;
using UsageModel::Date;
using UsageModel::GaugeReading;
using UsageModel::SessionBlock;
using UsageModel::WindowKind;
using Case = SessionCapScale::Evidence::Case;
using Observation = SessionCapScale::CeilingObservation;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double smallest = std::numeric_limits<double>::denorm_min();

SessionBlock blockAt(Date start) {
    return {.start = start, .end = start + 5 * hour};
}

Anchor anchorAt(Date ts, WindowKind window = WindowKind::session5h, AnchorKind kind = AnchorKind::ceiling) {
    return {.ts = ts, .window = window, .kind = kind};
}

const SessionBlock block = blockAt(sunday);

struct ObservationWish {
    std::vector<Anchor> anchors;
    std::vector<SessionBlock> blocks{block};
    Turns turns{turnAt(sunday, 60)};
    Date now = sunday + day;
};

std::vector<Observation> observed(const ObservationWish& wish) {
    return SessionCapScale::ceilingObservations(
        {.blocks = wish.blocks, .anchors = wish.anchors, .turns = wish.turns, .now = wish.now});
}

TEST(CeilingObservations, NeedBlocksAndCeilings) {
    EXPECT_TRUE(observed({.anchors = {}}).empty());
    EXPECT_TRUE(observed({.anchors = {anchorAt(sunday + hour)}, .blocks = {}}).empty());
    EXPECT_EQ(observed({.anchors = {anchorAt(sunday + hour)}}),
              (std::vector{Observation{.blockStart = sunday, .at = sunday + hour, .capInLogUnits = 60}}));
}

TEST(CeilingObservations, OtherAnchorsAreNone) {
    const Date at = sunday + hour;
    EXPECT_TRUE(observed({.anchors = {anchorAt(at, WindowKind::session5h, AnchorKind::percentage),
                                      anchorAt(at, WindowKind::weeklyAll), anchorAt(at, WindowKind::weeklyOpus)}})
                    .empty());
}

TEST(CeilingObservations, ABlocksEndIsItsOwnAndItsStartIsNot) {
    const Turns turns{turnAt(sunday, 1), turnAt(sunday + hour, 2)};
    EXPECT_TRUE(observed({.anchors = {anchorAt(sunday)}, .turns = turns}).empty());
    EXPECT_EQ(observed({.anchors = {anchorAt(sunday + 0.001)}, .turns = turns}).front().capInLogUnits, 1);
    EXPECT_EQ(observed({.anchors = {anchorAt(block.end)}, .turns = turns}).front().at, block.end);
    EXPECT_TRUE(observed({.anchors = {anchorAt(block.end + 0.001)}, .turns = turns}).empty());
}

TEST(CeilingObservations, WhereOneBlockEndsAndTheNextBeginsItIsTheFormers) {
    const auto observations = observed({.anchors = {anchorAt(block.end)}, .blocks = {block, blockAt(block.end)}});
    ASSERT_EQ(observations.size(), 1U);
    EXPECT_EQ(observations[0].blockStart, sunday);
}

TEST(CeilingObservations, ABlocksLatestCeilingDecides) {
    const Turns turns{turnAt(sunday, 1), turnAt(sunday + 2 * hour, 2), turnAt(sunday + 4 * hour, 4)};
    const Anchor early = anchorAt(sunday + hour);
    const Anchor late = anchorAt(sunday + 3 * hour);
    const Anchor beyond = anchorAt(sunday + 6 * hour);
    const std::vector expected{Observation{.blockStart = sunday, .at = late.ts, .capInLogUnits = 3}};
    EXPECT_EQ(observed({.anchors = {early, late, beyond}, .turns = turns}), expected);
    EXPECT_EQ(observed({.anchors = {beyond, late, early}, .turns = turns}), expected);
    EXPECT_EQ(observed({.anchors = {late, late}, .turns = turns}), expected);
}

TEST(CeilingObservations, CountFromTheBlocksStartUpToTheCeiling) {
    const Turns turns{turnAt(sunday - 0.001, 1), turnAt(sunday, 2), turnAt(sunday + hour - 0.001, 4),
                      turnAt(sunday + hour, 8)};
    EXPECT_EQ(observed({.anchors = {anchorAt(sunday + hour)}, .turns = turns}).front().capInLogUnits, 6);
}

TEST(CeilingObservations, NothingUsedIsNone) {
    const auto count = [](double weight) {
        return observed({.anchors = {anchorAt(sunday + hour)}, .turns = {turnAt(sunday, weight)}}).size();
    };
    EXPECT_EQ(count(-1), 0U);
    EXPECT_EQ(count(0), 0U);
    EXPECT_EQ(count(1e-9), 0U);
    EXPECT_EQ(count(std::nextafter(1e-9, 1)), 1U);
    EXPECT_TRUE(observed({.anchors = {anchorAt(sunday + hour)}, .turns = {}}).empty());
    EXPECT_TRUE(observed({.anchors = {anchorAt(sunday + hour)}, .turns = {turnAt(sunday, 2), turnAt(sunday + 1.0, -3)}})
                    .empty());
}

TEST(CeilingObservations, AreForgottenAfterSixtyDays) {
    const auto count = [](double secondsAfterEnd) {
        return observed({.anchors = {anchorAt(sunday + hour)}, .now = block.end + secondsAfterEnd}).size();
    };
    EXPECT_EQ(count(60 * day), 1U);
    EXPECT_EQ(count(60 * day + 0.001), 0U);
    EXPECT_EQ(count(-4 * hour), 1U) << "the block in progress";
    EXPECT_EQ(count(-6 * hour), 1U) << "one that is yet to begin";
}

TEST(CeilingObservations, KeepTheOrderOfTheBlocks) {
    const SessionBlock later = blockAt(sunday + day);
    const auto observations =
        observed({.anchors = {anchorAt(sunday + hour), anchorAt(later.start + hour)},
                  .blocks = {later, blockAt(sunday + 2 * day), block},
                  .turns = {turnAt(sunday, 1), turnAt(later.start, 2), turnAt(sunday + 2 * day, 4)}});
    ASSERT_EQ(observations.size(), 2U);
    EXPECT_EQ(observations[0], (Observation{.blockStart = later.start, .at = later.start + hour, .capInLogUnits = 2}));
    EXPECT_EQ(observations[1].blockStart, sunday);
}

/// A session with its gauge reading, and no ceiling: 60 log units were spent when 30 % were official.
struct LiveRow {
    std::string_view name;
    std::optional<double> percent = 30.0;
    std::optional<double> sessionStartsIn = 0.0;
    double capturedIn = hour;
    double nowIn = 2 * hour;
    std::vector<WeighedTurn> turns{turnAt(sunday, 60)};
    std::string key = "five_hour";
    std::optional<double> cap;

    friend std::ostream& operator<<(std::ostream& out, const LiveRow& row) { return out << row.name; }
};

class LiveEstimateTest : public testing::TestWithParam<LiveRow> {};

TEST_P(LiveEstimateTest, IsWhatWasSpentOverTheOfficialShare) {
    const LiveRow& row = GetParam();
    const GaugeReading gauge{.capturedAt = (sunday + row.capturedIn).secondsSince1970,
                             .windows = {{row.key, {.usedPercentage = row.percent}}}};
    const auto start = row.sessionStartsIn ? std::optional(sunday + *row.sessionStartsIn) : std::nullopt;
    const Turns turns(row.turns);
    const auto learnt = SessionCapScale::learn(
        {.turns = turns, .gauge = &gauge, .sessionWindowStart = start, .now = sunday + row.nowIn});
    ASSERT_EQ(learnt.capInLogUnits.has_value(), row.cap.has_value());
    if (row.cap) {
        EXPECT_DOUBLE_EQ(*learnt.capInLogUnits, *row.cap);
    }
    EXPECT_EQ(learnt.evidence.kind, row.cap ? Case::liveGauge : Case::none);
    EXPECT_EQ(learnt.evidence.count, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Readings, LiveEstimateTest,
    testing::Values(
        LiveRow{.name = "thirty percent", .cap = 200}, LiveRow{.name = "all of it", .percent = 100, .cap = 60},
        LiveRow{.name = "more than all", .percent = 150, .cap = 40},
        LiveRow{.name = "just enough", .percent = 15, .cap = 400},
        LiveRow{.name = "a little too coarse", .percent = std::nextafter(15.0, 0), .cap = {}},
        LiveRow{.name = "too coarse", .percent = 14.9, .cap = {}},
        LiveRow{.name = "nothing official", .percent = 0, .cap = {}},
        LiveRow{.name = "a negative percentage", .percent = -30, .cap = {}},
        LiveRow{.name = "a percentage that is no number", .percent = notANumber, .cap = {}},
        LiveRow{.name = "no percentage", .percent = {}, .cap = {}},
        LiveRow{.name = "another window", .key = "seven_day", .cap = {}},
        LiveRow{.name = "a window by its other name", .key = "session5h", .cap = {}},
        LiveRow{.name = "no session", .sessionStartsIn = {}, .cap = {}},
        LiveRow{.name = "captured as the session starts", .sessionStartsIn = 0, .capturedIn = 0, .cap = {}},
        LiveRow{.name = "captured just after", .sessionStartsIn = 0, .capturedIn = 0.001, .cap = 200},
        LiveRow{
            .name = "captured before", .sessionStartsIn = 2 * hour, .capturedIn = hour, .nowIn = 3 * hour, .cap = {}},
        LiveRow{.name = "captured now", .capturedIn = 2 * hour, .nowIn = 2 * hour, .cap = 200},
        LiveRow{.name = "captured in the future", .capturedIn = 2 * hour + 0.001, .nowIn = 2 * hour, .cap = {}},
        LiveRow{.name = "turns of the session before the capture",
                .turns = {turnAt(sunday - 0.001, 1), turnAt(sunday, 2), turnAt(sunday + hour - 0.001, 4),
                          turnAt(sunday + hour, 8)},
                .cap = 20},
        LiveRow{.name = "every class counts",
                .turns = {turnAt(sunday, 3), turnAt(sunday, 3, UsageModel::ModelClass::other)},
                .cap = 20},
        LiveRow{.name = "no turns", .turns = {}, .cap = {}},
        LiveRow{.name = "turns that weigh next to nothing", .turns = {turnAt(sunday, 1e-9)}, .cap = {}},
        LiveRow{.name = "turns that weigh a little more", .turns = {turnAt(sunday, 3e-9)}, .cap = 1e-8},
        LiveRow{.name = "turns that weigh less than nothing", .turns = {turnAt(sunday, -60)}, .cap = {}}),
    TestSupport::rowName);

/// Sessions that were full at what is given, one a day, and a session of today in which the gauge tells 30 %.
struct Evidences {
    std::vector<double> ceilings;
    std::optional<double> live;
    std::optional<double> held;
};

SessionCapScale learnt(const Evidences& evidences) {
    std::vector<SessionBlock> blocks;
    std::vector<Anchor> anchors;
    Turns turns;
    for (const double cap : evidences.ceilings) {
        const Date start = sunday + static_cast<double>(blocks.size()) * day;
        blocks.push_back(blockAt(start));
        anchors.push_back(anchorAt(start + hour));
        turns.push_back(turnAt(start, cap));
    }
    const Date today = sunday + 10 * day;
    turns.push_back(turnAt(today, evidences.live.value_or(0.0) * 0.25));
    const GaugeReading gauge{.capturedAt = (today + hour).secondsSince1970,
                             .windows = {{"five_hour", {.usedPercentage = 25}}}};
    return SessionCapScale::learn({.blocks = blocks,
                                   .anchors = anchors,
                                   .turns = turns,
                                   .gauge = &gauge,
                                   .sessionWindowStart = today,
                                   .now = today + hour,
                                   .held = evidences.held});
}

SessionCapScale resting(Case kind, std::optional<double> cap, std::int64_t count = 0) {
    return {.capInLogUnits = cap, .evidence = {.kind = kind, .count = count}};
}

TEST(SessionCapScale, IsTheMedianOfItsCeilings) {
    EXPECT_EQ(learnt({.ceilings = {100}}), resting(Case::ceilings, 100, 1));
    EXPECT_EQ(learnt({.ceilings = {300, 100}}), resting(Case::ceilings, 200, 2));
    EXPECT_EQ(learnt({.ceilings = {900, 100, 200}}), resting(Case::ceilings, 200, 3));
}

TEST(SessionCapScale, TheGaugeIsOneMoreVoteAndNotCounted) {
    EXPECT_EQ(learnt({.ceilings = {100, 300}, .live = 200}), resting(Case::ceilings, 200, 2));
    EXPECT_EQ(learnt({.ceilings = {100, 300}, .live = 280}), resting(Case::ceilings, 280, 2));
    EXPECT_EQ(learnt({.ceilings = {100}, .live = 280}), resting(Case::ceilings, 190, 1));
}

TEST(SessionCapScale, TheGaugeAloneIsEnough) {
    EXPECT_EQ(learnt({.ceilings = {}, .live = 280}), resting(Case::liveGauge, 280));
}

TEST(SessionCapScale, WhatIsHeldIsTheLastResort) {
    EXPECT_EQ(learnt({.ceilings = {}, .held = 500}), resting(Case::held, 500));
    EXPECT_EQ(learnt({.ceilings = {100, 300}, .held = 500}), resting(Case::ceilings, 200, 2));
    EXPECT_EQ(learnt({.ceilings = {}, .live = 280, .held = 500}), resting(Case::liveGauge, 280));
}

TEST(SessionCapScale, WhatIsHeldMustBeSound) {
    EXPECT_EQ(learnt({.ceilings = {}}), resting(Case::none, {}));
    EXPECT_EQ(learnt({.ceilings = {}, .held = smallest}), resting(Case::held, smallest));
    EXPECT_EQ(learnt({.ceilings = {}, .held = 1e300}), resting(Case::held, 1e300));
    for (const double held : {0.0, -500.0, infinity, -infinity, notANumber})
        EXPECT_EQ(learnt({.ceilings = {}, .held = held}), resting(Case::none, {})) << held;
}

TEST(SessionCapScale, NoGaugeIsNoEvidence) {
    const Turns turns{turnAt(sunday, 60)};
    EXPECT_EQ(SessionCapScale::learn({.turns = turns, .sessionWindowStart = sunday, .now = sunday + hour}),
              resting(Case::none, {}));
    EXPECT_EQ(SessionCapScale::learn({}), resting(Case::none, {}));
}

struct MedianRow : TestSupport::Named {
    std::vector<double> values;
    double median;
};

class MedianTest : public testing::TestWithParam<MedianRow> {};

TEST_P(MedianTest, IsTheMiddle) {
    EXPECT_EQ(SessionCapScale::median(GetParam().values), GetParam().median);
}

INSTANTIATE_TEST_SUITE_P(Lists, MedianTest,
                         testing::Values(MedianRow{"none", {}, 0}, MedianRow{"one", {3}, 3},
                                         MedianRow{"two", {7, 2}, 4.5}, MedianRow{"three", {5, 1, 3}, 3},
                                         MedianRow{"four", {40, 1, 3, 2}, 2.5}, MedianRow{"five", {9, 8, 1, 2, 3}, 3},
                                         MedianRow{"equals", {2, 2, 2, 9}, 2}, MedianRow{"negative", {-1, -3, -2}, -2},
                                         MedianRow{"far apart", {1e300, 1e-300, 1}, 1}),
                         TestSupport::rowName);

TEST(SessionCapScale, TurnsLogUnitsIntoAShareOfASession) {
    EXPECT_EQ(SessionCapScale{.capInLogUnits = 200}.scale(), 0.005);
    EXPECT_EQ(SessionCapScale{.capInLogUnits = 1e300}.scale(), 1e-300);
    EXPECT_FALSE(SessionCapScale{}.scale());
    for (const double cap : {0.0, -200.0, infinity, -infinity, notANumber, smallest})
        EXPECT_FALSE(SessionCapScale{.capInLogUnits = cap}.scale()) << cap;
}

TEST(SoundFactor, IsAboveNothingAndNotTooLarge) {
    for (const double sound : {smallest, 1e-9, 1.0, 1e100}) EXPECT_EQ(soundFactor(sound), sound) << sound;
    for (const double unsound : {0.0, -0.0, -1.0, std::nextafter(1e100, infinity), infinity, -infinity, notANumber})
        EXPECT_FALSE(soundFactor(unsound)) << unsound;
}

TEST(SessionAnchors, SpeakOfSessionsOnly) {
    EXPECT_TRUE(SessionAnchors({}).empty());
    const std::vector weekly{anchorAt(sunday + hour, WindowKind::weeklyAll),
                             anchorAt(sunday + hour, WindowKind::weeklyOpus)};
    EXPECT_TRUE(SessionAnchors(weekly).empty());
    EXPECT_EQ(SessionAnchors(weekly).latestIn(block), nullptr);
}

TEST(SessionAnchors, TheirCeilingsLeaveOutWhatTellsAPercentage) {
    const std::vector anchors{anchorAt(sunday + 1.0),
                              anchorAt(sunday + 2.0, WindowKind::session5h, AnchorKind::percentage)};
    const SessionAnchors all(anchors);
    EXPECT_EQ(all.latestIn(block)->ts, sunday + 2.0);
    const SessionAnchors ceilings = all.ceilings();
    EXPECT_EQ(ceilings.latestIn(block)->ts, sunday + 1.0);
    EXPECT_TRUE(SessionAnchors(std::span(anchors).subspan(1)).ceilings().empty());
}

TEST(SessionAnchors, ABlocksStartIsNotItsOwn) {
    const std::vector atStart{anchorAt(sunday)};
    EXPECT_EQ(SessionAnchors(atStart).latestIn(block), nullptr);
    EXPECT_NE(SessionAnchors(atStart).latestIn(blockAt(sunday - 0.001)), nullptr);
    EXPECT_NE(SessionAnchors(atStart).latestIn(blockAt(sunday - 5 * hour)), nullptr);
}

TEST(SessionAnchors, OfEqualsTheFirst) {
    Anchor first = anchorAt(sunday + 2.0);
    Anchor second = first;
    first.usedFraction = 0.25;
    second.usedFraction = 0.75;
    const std::vector anchors{anchorAt(sunday + 1.0), first, second, anchorAt(block.end + 1.0)};
    EXPECT_EQ(SessionAnchors(anchors).latestIn(block)->usedFraction, 0.25);
}

} // namespace
} // namespace UsageEngine
