#pragma once

#include <algorithm>
#include <vector>

#include "UsageEngine/WeighedTurns.h"

namespace UsageEngine {

/// A Sunday, 2026-03-01 00:00:00 UTC.
inline constexpr UsageModel::Date sunday{1772323200};
inline constexpr double hour = 3600.0;
inline constexpr double day = 86400.0;
inline constexpr double week = 7 * day;

inline WeighedTurn turnAt(UsageModel::Date ts, double weight,
                          UsageModel::ModelClass modelClass = UsageModel::ModelClass::opus,
                          std::optional<UsageModel::EffortLevel> effort = {}) {
    return {.ts = ts, .weight = weight, .modelClass = modelClass, .effort = effort};
}

/// Turns told in any order, which stand by time as the engine wants them.
class Turns {
public:
    Turns() = default;
    Turns(std::initializer_list<WeighedTurn> turns) : byTime_(turns) { sort(); }
    Turns(std::vector<WeighedTurn> turns) : byTime_(std::move(turns)) { sort(); }

    void push_back(const WeighedTurn& turn) {
        byTime_.push_back(turn);
        sort();
    }
    operator WeighedTurns() const { return byTime_; }

    friend bool operator==(const Turns&, const Turns&) = default;

private:
    void sort() { std::ranges::stable_sort(byTime_, {}, &WeighedTurn::ts); }

    std::vector<WeighedTurn> byTime_;
};

} // namespace UsageEngine
