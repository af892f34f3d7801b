#include "UsageEngine/LiveModelReading.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace UsageEngine {

namespace {

using UsageModel::Date;
using UsageModel::LiveModel;
using UsageModel::UsageEvent;
using Sessions = std::map<std::string_view, LiveModel::Session>;

WeighedTurns recentTurns(const LiveModelQuestion& question) {
    const Date cutoff = question.now - question.lookback;
    const WeighedTurns turns = withinClosed(question.turns, {.from = cutoff, .to = question.now});
    return {std::ranges::upper_bound(turns, cutoff, {}, &WeighedTurn::ts), turns.end()};
}

/// The turns come by time, so the last that says something is the latest.
void add(Sessions& sessions, const UsageEvent& event, double weight) {
    LiveModel::Session& session = sessions[event.sessionId.view()];
    session.modelClass = event.modelClass;
    if (event.effort) session.effort = event.effort;
    session.lastTurn = event.ts;
    session.weight += weight;
}

std::vector<LiveModel::Session> latestFirst(Sessions&& sessions) {
    std::vector<LiveModel::Session> list;
    list.reserve(sessions.size());
    for (auto& [id, session] : sessions) {
        session.id = id;
        list.push_back(std::move(session));
    }
    std::ranges::stable_sort(list, std::greater{}, &LiveModel::Session::lastTurn);
    return list;
}

template <typename Key>
UsageModel::EnumMap<Key, double> sharesOf(const UsageModel::EnumMap<Key, double>& weights, double total) {
    UsageModel::EnumMap<Key, double> shares;
    if (!(total > 0.0)) return shares;
    for (const auto& [key, weight] : weights) shares.set(key, weight / total);
    return shares;
}

} // namespace

LiveModel readLiveModel(const LiveModelQuestion& question) {
    LiveModel live{.lookback = question.lookback};
    UsageModel::EnumMap<UsageModel::ModelClass, double> classWeight;
    UsageModel::EnumMap<UsageModel::EffortLevel, double> effortWeight;
    double tagged = 0.0;
    double total = 0.0;
    double outputWeight = 0.0;
    Sessions sessions;
    for (const WeighedTurn& turn : recentTurns(question)) {
        const UsageEvent& event = question.events[turn.event];
        live.turns += 1;
        live.lastTurn = turn.ts;
        total += turn.weight;
        outputWeight += question.weights.outputWeight(event);
        classWeight[turn.modelClass] += turn.weight;
        if (turn.effort) {
            effortWeight[*turn.effort] += turn.weight;
            tagged += turn.weight;
        }
        add(sessions, event, turn.weight);
    }
    if (!(total > 0.0)) return {.turns = live.turns, .lookback = question.lookback};

    live.sessions = latestFirst(std::move(sessions));
    live.byClass = sharesOf(classWeight, total);
    live.byEffort = sharesOf(effortWeight, tagged);
    live.outputShare = outputWeight / total;
    live.weight = total;
    return live;
}

} // namespace UsageEngine
