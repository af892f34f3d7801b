#include "UsageEngine/RandomScenes.h"

#include <array>
#include <cmath>

namespace UsageEngine {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::EffortLevel;
using UsageModel::ModelClass;
using UsageModel::UsageEvent;
using UsageModel::WindowKind;

/// Some change their clocks by half an hour, some at midnight, one has skipped a day.
const std::array<Calendar, 5> calendars{Calendar::utc(), *Calendar::inZone("Europe/Berlin"),
                                        *Calendar::inZone("Australia/Lord_Howe"), *Calendar::inZone("Pacific/Apia"),
                                        *Calendar::inZone("America/Havana")};

UsageEvent randomEvent(Draw& draw, Date now) {
    constexpr std::array<double, 6> reaches{900, 3 * hour, day, week, 10 * week, -2 * day};
    constexpr auto classes = UsageModel::allCases<ModelClass>;
    constexpr auto efforts = UsageModel::allCases<EffortLevel>;
    const auto tokens = [&] { return draw.oneIn(3) ? std::int64_t{1} << draw.below(14) : 0; };
    return {.ts = now - draw.between(0, draw.oneOf(reaches)),
            .sessionId = std::string(1, static_cast<char>('a' + draw.below(4))),
            .modelClass = draw.oneOf(classes),
            .input = tokens(),
            .output = tokens(),
            .cacheCreation = tokens(),
            .cacheRead = tokens(),
            .effort = draw.oneIn(2) ? std::nullopt : std::optional(draw.oneOf(efforts))};
}

std::optional<double> randomPercent(Draw& draw) {
    switch (draw.below(9)) {
    case 0: return std::nullopt;
    case 1: return 0.0;
    case 2: return 100.0;
    case 3:
    case 4:
    case 5: return draw.between(1, 80);
    default: return draw.between(0, 130);
    }
}

std::optional<UsageModel::GaugeReading> randomGauge(Draw& draw, Date now) {
    if (draw.oneIn(4)) return std::nullopt;
    constexpr std::array<double, 5> ages{0, 600, 5 * hour, 3 * day, 3 * week};
    auto gauge = reading(now - draw.between(draw.oneIn(9) ? -hour : 0, draw.oneOf(ages)), {});
    for (const WindowKind kind : UsageModel::allCases<WindowKind>) {
        if (draw.oneIn(5)) continue;
        const Date reset = now + draw.between(-2, 1) * nominalDuration(kind);
        gauge.windows[std::string(statusLineKey(kind))] =
            told(randomPercent(draw), draw.oneIn(6) ? std::nullopt : std::optional(reset));
    }
    return gauge;
}

UsageModel::Anchor randomAnchor(Draw& draw, Date now) {
    constexpr auto kinds = UsageModel::allCases<WindowKind>;
    const Date ts = now - draw.between(0, 3 * week);
    if (draw.oneIn(2)) return sessionAt(ts, draw.between(0, 1.2));
    const WindowKind kind = draw.oneOf(kinds);
    return resetTold(kind, ts, draw.oneIn(3) ? std::nullopt : std::optional(ts + draw.between(0, 2 * week)));
}

/// A turn on most days, at the same hour; so there is something usual.
void addRoutine(Draw& draw, Scene& scene) {
    const double at = draw.between(0, day);
    UsageEvent event = randomEvent(draw, scene.now);
    event.input = 2048;
    for (double age = at; age < 9 * week; age += day) {
        event.ts = scene.now - age;
        if (!draw.oneIn(4)) scene.events.push_back(event);
        event.input = draw.oneIn(4) ? 8192 : 2048;
    }
}

/// One model at one effort, at work now.
void settle(Draw& draw, Scene& scene) {
    const UsageEvent like = randomEvent(draw, scene.now);
    for (double age = 1; age < 5; ++age) scene.events.push_back(spent(scene.now - age * draw.between(1, 500), 16));
    for (auto& event : scene.events) {
        event.modelClass = like.modelClass;
        event.effort = like.effort;
    }
}

} // namespace

Scene randomScene(Draw& draw) {
    Scene scene{.now = Date{draw.between(1.6e9, 1.9e9)}, .calendar = draw.oneOf(calendars)};
    if (draw.oneIn(3)) scene.now = Date{std::floor(scene.now.secondsSince1970)};
    scene.weights = {
        .input = 1,
        .output = 4,
        .cacheCreation = 2,
        .cacheRead = 0.25,
        .classMultiplier = {
            {ModelClass::opus, 1.0}, {ModelClass::fable, 2.0}, {ModelClass::sonnet, 0.5}, {ModelClass::haiku, 0.25}}};
    const std::size_t count = draw.oneIn(8) ? draw.below(3) : draw.below(120);
    for (std::size_t i = 0; i < count; ++i) scene.events.push_back(randomEvent(draw, scene.now));
    if (draw.oneIn(2)) addRoutine(draw, scene);
    if (draw.oneIn(3)) settle(draw, scene);
    scene.gauge = randomGauge(draw, scene.now);
    for (std::size_t i = draw.below(4); i > 0; --i) scene.anchors.push_back(randomAnchor(draw, scene.now));
    if (draw.oneIn(3)) scene.heldCap = draw.between(1, 1e5);
    return scene;
}

} // namespace UsageEngine
