#include "UsageEngine/BurnRate.h"

namespace UsageEngine::BurnRate {

double recent(const RecentQuestion& question) {
    const UsageModel::Date cutoff = question.now - question.windowSeconds;
    return sumOf(withinClosed(question.turns, {.from = cutoff, .to = question.now})) / question.windowSeconds;
}

} // namespace UsageEngine::BurnRate
