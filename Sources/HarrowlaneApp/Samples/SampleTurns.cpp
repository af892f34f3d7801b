#include "HarrowlaneApp/Samples/SampleTurns.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "HarrowlaneApp/Samples/SineNoise.h"
#include "UsageModel/CategoryWeights.h"

namespace HarrowlaneApp {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::EffortLevel;
using UsageModel::ModelClass;
using UsageModel::UsageEvent;

constexpr double weekSeconds = 604800.0;
constexpr double hour = 3600.0;
constexpr double secondsPerTurn = 420.0;

/// A turn that still lacks its tokens.
struct Moment {
    Date ts;
    int session = 0;
    double weight = 0.0;
};

struct Shift {
    double fromHour = 0.0;
    double toHour = 0.0;
    double pace = 1.0;
};

std::vector<Shift> shiftsOf(int weekday) {
    constexpr int sunday = 1;
    constexpr int saturday = 7;
    if (weekday == sunday || weekday == saturday) return {{.fromHour = 16.0, .toHour = 18.5, .pace = 0.5}};
    return {{.fromHour = 8.1, .toHour = 11.8}, {.fromHour = 14.0, .toHour = 18.3, .pace = 1.2}};
}

void addShift(std::vector<Moment>& moments, Date day, const Shift& shift) {
    // Noise by the hour since 1970: the same shift is the same in every plan.
    const Date from = day + shift.fromHour * hour;
    const int session = static_cast<int>(std::floor(from.secondsSince1970 / hour));
    const double pace = shift.pace * (0.8 + 0.4 * sineNoise(session));
    for (Date ts = from; ts < day + shift.toHour * hour; ts = ts + secondsPerTurn) {
        const double noise = sineNoise(ts.secondsSince1970 / secondsPerTurn);
        moments.push_back(
            {.ts = ts + noise * secondsPerTurn, .session = session, .weight = pace * (0.4 + 1.2 * noise)});
    }
}

struct Stretch {
    Date from;
    Date to;
    /// What its moments weigh together, log units.
    double total = 0.0;
};

std::vector<Moment> momentsOf(const Stretch& stretch, const Calendar& calendar) {
    std::vector<Moment> moments;
    for (Date day = calendar.startOfDay(stretch.from); day < stretch.to; day = calendar.addDays(day, 1)) {
        for (const Shift& shift : shiftsOf(calendar.weekday(day))) addShift(moments, day, shift);
    }
    std::erase_if(moments, [&](const Moment& m) { return m.ts < stretch.from || m.ts >= stretch.to; });
    double sum = 0.0;
    for (const Moment& moment : moments) sum += moment.weight;
    for (Moment& moment : moments) moment.weight *= stretch.total / sum;
    return moments;
}

ModelClass pick(const UsageModel::EnumMap<ModelClass, double>& mix, double place) {
    double end = 0.0;
    ModelClass picked = ModelClass::other;
    for (const auto& [modelClass, share] : mix) {
        picked = modelClass;
        end += share;
        if (place < end) break;
    }
    return picked;
}

const char* modelName(ModelClass modelClass) {
    switch (modelClass) {
    case ModelClass::opus: return "claude-opus-4-1";
    case ModelClass::fable: return "claude-fable-1";
    case ModelClass::sonnet: return "claude-sonnet-4-5";
    case ModelClass::haiku: return "claude-haiku-4-5";
    case ModelClass::other: break;
    }
    return "other";
}

/// As many tokens as weigh that much, in the proportions of usual work.
UsageEvent turnOf(const Moment& moment, const TurnPlan& plan) {
    constexpr double mediumShare = 0.3;
    static const auto weights = UsageModel::CategoryWeights::priors(UsageModel::liveWeightScale);
    const double place = sineNoise(moment.ts.secondsSince1970 / hour);
    UsageEvent turn{
        .ts = moment.ts,
        .sessionId = "sample-" + std::to_string(moment.session),
        .modelClass = pick(plan.mix, place),
        .effort = sineNoise(moment.ts.secondsSince1970) < mediumShare ? EffortLevel::medium : EffortLevel::high,
    };
    turn.model = modelName(turn.modelClass);
    const UsageEvent one{
        .modelClass = turn.modelClass, .input = 1, .output = 10, .cacheCreation = 30, .cacheRead = 400};
    const auto parts = static_cast<std::int64_t>(std::llround(moment.weight / weights.effective(one)));
    turn.input = parts * one.input;
    turn.output = parts * one.output;
    turn.cacheCreation = parts * one.cacheCreation;
    turn.cacheRead = parts * one.cacheRead;
    return turn;
}

} // namespace

std::vector<UsageEvent> turnsOf(const TurnPlan& plan, const Calendar& calendar) {
    std::vector<UsageEvent> turns;
    const auto add = [&](const Stretch& stretch) {
        for (const Moment& moment : momentsOf(stretch, calendar)) turns.push_back(turnOf(moment, plan));
    };
    for (std::size_t back = plan.priorTotals.size(); back > 0; --back) {
        const Date from = plan.windowStart - static_cast<double>(back) * weekSeconds;
        add({.from = from, .to = from + weekSeconds, .total = plan.priorTotals[back - 1]});
    }
    add({.from = plan.windowStart, .to = plan.now, .total = plan.soFar});
    std::ranges::sort(turns, {}, &UsageEvent::ts);
    return turns;
}

} // namespace HarrowlaneApp
