#include "UsageEngine/Aggregator.h"

#include <algorithm>
#include <vector>

#include "UsageEngine/Advice.h"
#include "UsageEngine/BindingResolver.h"
#include "UsageEngine/BlockScale.h"
#include "UsageEngine/LiveModelReading.h"
#include "UsageEngine/Rollups.h"
#include "UsageEngine/SessionWindows.h"
#include "UsageEngine/WeekSeriesBuilding.h"
#include "UsageEngine/WindowComputation.h"

namespace UsageEngine {

namespace {

using UsageModel::Date;
using UsageModel::Projection;
using UsageModel::SessionBlock;
using UsageModel::WindowKind;
using Computed = std::vector<WindowCompute>;

/// The start of the five-hour window that the gauge was read in: a reading from sessions ago finds its own on the same
/// grid.
std::optional<Date> sessionOfReading(const Facts& facts) {
    constexpr int mostWindowsBack = 4096;
    const UsageModel::GaugeWindow* window = gaugeWindow(facts.gauge, WindowKind::session5h);
    if (facts.gauge == nullptr || window == nullptr || !window->usedPercentage) return std::nullopt;
    const Date captured{facts.gauge->capturedAt};
    if (!(captured <= facts.now)) return std::nullopt;

    Date start =
        windowBounds({.kind = WindowKind::session5h, .gauge = facts.gauge, .now = facts.now, .anchors = {}}).start;
    for (int i = 0; i < mostWindowsBack && captured < start; ++i) start = start - SessionWindows::span;
    return captured >= start ? std::optional(start) : std::nullopt;
}

SessionCapScale capScaleOf(const Facts& facts, std::span<const SessionBlock> blocks, std::optional<double> held) {
    return SessionCapScale::learn({
        .blocks = blocks,
        .anchors = facts.anchors,
        .turns = facts.turns,
        .gauge = facts.gauge,
        .sessionWindowStart = sessionOfReading(facts),
        .now = facts.now,
        .held = held,
    });
}

/// The gauge tells which limits this account has.
bool isInForce(WindowKind kind, const Facts& facts) {
    return facts.gauge == nullptr || gaugeWindow(facts.gauge, kind) != nullptr;
}

Computed computeWindows(const Facts& facts, const SessionCapScale& capScale) {
    Computed computed;
    for (const WindowKind kind : UsageModel::allCases<WindowKind>) {
        if (isInForce(kind, facts)) computed.push_back(computeWindow(kind, facts, capScale));
    }
    return computed;
}

const WindowCompute* find(const Computed& computed, WindowKind kind) {
    const auto compute = std::ranges::find(computed, kind, [](const WindowCompute& one) { return one.state.kind; });
    return compute == computed.end() ? nullptr : &*compute;
}

/// A session that ended in the week counts, even if it began before.
std::span<const SessionBlock> blocksOfWeek(std::span<const SessionBlock> blocks, Date weekStart) {
    const auto first = std::ranges::lower_bound(blocks, weekStart, {}, &SessionBlock::end);
    return {first, blocks.end()};
}

SessionBlock scaled(SessionBlock block, double factor) {
    block.usedFraction *= factor;
    for (const auto& [modelClass, units] : block.byModelClass) block.byModelClass.set(modelClass, units * factor);
    return block;
}

std::vector<SessionBlock> calibrated(std::span<const SessionBlock> blocks, const SessionAnchors& anchors,
                                     const Facts& facts, const SessionCapScale& capScale) {
    std::vector<SessionBlock> sessions;
    sessions.reserve(blocks.size());
    for (const SessionBlock& block : blocks)
        sessions.push_back(scaled(block, blockScale(block, anchors, facts.turns, capScale).scale));
    return sessions;
}

Projection projectionOf(const WindowCompute* binding, WindowKind kind) {
    if (binding != nullptr) return binding->projection;
    return {.window = kind, .earliestEmpty = {}, .likelyEmpty = {}};
}

} // namespace

UsageModel::UsageSnapshot Aggregator::snapshot(const SnapshotInput& input) const {
    const std::vector<WeighedTurn> turns = weigh(input.events, weights);
    const Facts facts{
        .events = input.events,
        .turns = turns,
        .anchors = input.anchors,
        .gauge = input.gauge ? &*input.gauge : nullptr,
        .now = input.now,
        .weights = weights,
        .calendar = calendar,
    };
    const std::vector<SessionBlock> blocks = SessionWindows::reconstruct(turns, facts.now);
    const SessionCapScale capScale = capScaleOf(facts, blocks, input.heldSessionCap);
    const Computed computed = computeWindows(facts, capScale);

    std::vector<BindingResolver::Input> inputs;
    for (const WindowCompute& one : computed) inputs.push_back({.state = one.state, .projection = one.projection});
    const WindowKind binding = BindingResolver::resolve(inputs);
    const WindowCompute* bindingWindow = find(computed, binding);

    const Date weekStart =
        windowBounds({.kind = WindowKind::weeklyAll, .gauge = facts.gauge, .now = facts.now, .anchors = facts.anchors})
            .start;
    const std::span<const SessionBlock> weekBlocks = blocksOfWeek(blocks, weekStart);
    const SessionAnchors anchors(facts.anchors);

    UsageModel::UsageSnapshot snapshot{
        .generatedAt = facts.now,
        .binding = binding,
        .verdict = BindingResolver::verdict(binding, inputs, facts.now),
        .bindingProjection = projectionOf(bindingWindow, binding),
        .weekSessions = calibrated(weekBlocks, anchors, facts, capScale),
        .weekSeries = buildWeekSeries({.facts = facts,
                                       .sessionAnchors = anchors,
                                       .blocks = weekBlocks,
                                       .capScale = capScale,
                                       .session5h = find(computed, WindowKind::session5h),
                                       .weekly = find(computed, WindowKind::weeklyAll)}),
        .sessionCapInLogUnits = capScale.capInLogUnits,
        .models = Rollups::byModelClass(turns, {.from = weekStart, .to = facts.now}),
        .calendar = Rollups::dailyCalendar(turns, calendar),
        .live = readLiveModel({.events = facts.events, .turns = turns, .weights = weights, .now = facts.now}),
        .ingest = input.ingest,
    };
    for (const WindowCompute& one : computed) {
        snapshot.meters.push_back(one.state);
        snapshot.projections.push_back(one.projection);
    }
    if (bindingWindow != nullptr) {
        snapshot.recommendation = Advice::recommend(
            {.computed = computed, .binding = *bindingWindow, .live = snapshot.live, .now = facts.now});
    }
    return snapshot;
}

} // namespace UsageEngine
