#include <array>
#include <future>
#include <map>

#include <gtest/gtest.h>

#include "UsageEngine/RandomScenes.h"
#include "UsageEngine/SnapshotChecks.h"
#include "UsageModel/Json.h"

namespace UsageEngine {
namespace {

using UsageModel::Date;
using UsageModel::UsageSnapshot;

/// To the last bit: other than numbers, texts tell a negative zero.
std::string formOf(const UsageSnapshot& snapshot) {
    return UsageModel::Json::toText(UsageModel::Json::encode(snapshot));
}

/// Calls `look` with one scene after another until one fails.
void forScenes(std::uint64_t seed, int rounds, auto&& look) {
    Draw draw(seed);
    for (int round = 0; round < rounds && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        look(draw, randomScene(draw));
    }
}

TEST(SnapshotProperty, PartsAgreeWithEachOther) {
    forScenes(1, 3000, [](Draw&, const Scene& scene) { expectSound(scene.snapshot()); });
}

TEST(SnapshotProperty, TheScenesAreWorthTheirWhile) {
    std::map<std::string, int> seen;
    forScenes(1, 1000, [&](Draw&, const Scene& scene) {
        const UsageSnapshot snapshot = scene.snapshot();
        for (const auto& meter : snapshot.meters) ++seen[meter.confidence.anchored ? "anchored" : "not anchored"];
        for (const auto& projection : snapshot.projections)
            ++seen[projection.willBreachBeforeReset ? "breaches" : "does not breach"];
        ++seen[snapshot.recommendation ? std::string(text(snapshot.recommendation->kind)) : "no advice"];
        ++seen[std::string(text(snapshot.binding))];
        if (!snapshot.weekSeries) return;
        if (snapshot.weekSeries->crossing > snapshot.generatedAt) ++seen["crosses later"];
        if (snapshot.weekSeries->coneFastEnd.used > snapshot.weekSeries->coneLikelyEnd.used) ++seen["has a cone"];
        for (const auto& bar : snapshot.weekSeries->sessions) ++seen[std::string(text(bar.capBasis))];
    });
    for (const char* what : {"anchored", "not anchored", "breaches", "does not breach", "easeOff", "spendMore",
                             "no advice", "session5h", "weeklyAll", "weeklyOpus", "crosses later", "has a cone",
                             "ownCeiling", "liveGauge", "learnedScale", "uncalibrated"})
        EXPECT_GE(seen[what], 10) << what;
}

TEST(SnapshotProperty, TheOrderOfEventsAndAnchorsDoesNotMatter) {
    forScenes(2, 1500, [](Draw& draw, Scene scene) {
        const std::string form = formOf(scene.snapshot());
        draw.shuffle(scene.events);
        draw.shuffle(scene.anchors);
        EXPECT_EQ(formOf(scene.snapshot()), form);
    });
}

TEST(SnapshotProperty, TheOrderOfEventsOfOneInstantDoesNotMatter) {
    forScenes(3, 1500, [](Draw& draw, Scene scene) {
        // In log units every sum is exact. Which of two turns of one instant a session shows last is a matter of order.
        scene.gauge.reset();
        std::array<UsageModel::UsageEvent, 4> sessions;
        for (auto& event : scene.events) {
            event.ts = Date{std::floor(event.ts.secondsSince1970 / hour) * hour};
            auto& like = sessions[static_cast<std::size_t>(event.sessionId.view()[0] - 'a')];
            if (like.sessionId.empty()) like = event;
            event.modelClass = like.modelClass;
            event.effort = like.effort;
        }
        const std::string form = formOf(scene.snapshot());
        draw.shuffle(scene.events);
        EXPECT_EQ(formOf(scene.snapshot()), form);
    });
}

TEST(SnapshotProperty, TheSameInputGivesTheSameBitsOnAnyThread) {
    forScenes(4, 150, [](Draw&, const Scene& scene) {
        const Aggregator aggregator{.weights = scene.weights, .calendar = scene.calendar};
        const SnapshotInput input{.events = scene.events,
                                  .anchors = scene.anchors,
                                  .gauge = scene.gauge,
                                  .now = scene.now,
                                  .ingest = {},
                                  .heldSessionCap = scene.heldCap};
        const auto form = [&] { return formOf(aggregator.snapshot(input)); };
        std::array<std::future<std::string>, 2> others{std::async(std::launch::async, form),
                                                       std::async(std::launch::async, form)};
        const std::string here = form();
        for (auto& other : others) EXPECT_EQ(other.get(), here);
    });
}

TEST(SnapshotProperty, ATurnMoreIsNeverLessUse) {
    forScenes(5, 1000, [](Draw& draw, Scene scene) {
        const UsageSnapshot before = scene.snapshot();
        Date since = scene.now - hour;
        if (scene.gauge) since = std::min(std::max(since, Date{scene.gauge->capturedAt}), scene.now);
        scene.events.push_back(spent(since + draw.between(0, scene.now - since), 64));
        const UsageSnapshot after = scene.snapshot();
        if (before.sessionCapInLogUnits != after.sessionCapInLogUnits) return;
        for (std::size_t i = 0; i < before.meters.size(); ++i)
            EXPECT_LE(before.meters[i].used, after.meters[i].used) << i;
    });
}

TEST(SnapshotProperty, TimeTakesNothingBackWithinAWindow) {
    forScenes(6, 1000, [](Draw& draw, Scene scene) {
        const UsageSnapshot before = scene.snapshot();
        scene.now = scene.now + draw.between(0, hour);
        const UsageSnapshot after = scene.snapshot();
        for (std::size_t i = 0; i < before.meters.size(); ++i) {
            const auto& [one, other] = std::pair(before.meters[i], after.meters[i]);
            if (one.windowStart != other.windowStart || one.confidence.anchored != other.confidence.anchored) continue;
            if (before.sessionCapInLogUnits != after.sessionCapInLogUnits) continue;
            EXPECT_LE(one.used, other.used) << i;
            EXPECT_LE(one.elapsedFraction, other.elapsedFraction) << i;
        }
    });
}

} // namespace
} // namespace UsageEngine
