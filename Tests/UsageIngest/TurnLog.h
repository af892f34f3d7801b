#pragma once

#include <map>
#include <string>

#include "UsageIngest/IngestStore.h"
#include "UsageIngest/LogDiscovery.h"

/// Turns that can be told apart: the number of a turn is its count of output tokens.
namespace TurnLog {

/// A log line of the turn, with its line feed.
inline std::string line(long number) {
    return R"({"type":"assistant","timestamp":"2026-03-01T10:20:30.000Z","sessionId":"s","message":{"model":)"
           R"("claude-opus-4-5","usage":{"output_tokens":)" +
           std::to_string(number) + "}}}\n";
}

/// How often each turn is stored.
using Counts = std::map<long, int>;

inline Counts countsIn(UsageIngest::IngestStore& store) {
    Counts counts;
    for (const auto& event : *store.allEvents()) ++counts[static_cast<long>(event.output)];
    return counts;
}

/// Each turn from `first` to `last` once.
inline Counts onceEach(long first, long last) {
    Counts counts;
    for (long number = first; number <= last; ++number) counts[number] = 1;
    return counts;
}

inline UsageIngest::SyncStats syncAll(UsageIngest::IngestStore& store, const std::filesystem::path& logs) {
    return store.sync(UsageIngest::LogDiscovery(logs).discover());
}

} // namespace TurnLog
