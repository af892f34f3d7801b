#include "UsageEngine/BurnRate.h"

namespace UsageEngine::BurnRate {

double recent(const RecentQuestion& question) {
    const UsageModel::Date cutoff = question.now - question.windowSeconds;
    double sum = 0.0;
    for (const WeighedTurn& turn : question.turns) {
        if (turn.ts >= cutoff && turn.ts <= question.now) sum += turn.weight;
    }
    return sum / question.windowSeconds;
}

} // namespace UsageEngine::BurnRate
