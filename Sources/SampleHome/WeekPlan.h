#pragma once

#include "SampleHome/SampleHome.h"

#include <cstdint>
#include <string>
#include <vector>

namespace SampleHome {

enum class FileKind {
    Session,  ///< a person at work
    SubAgent, ///< a helper that a session started
    Quiet,    ///< opened and left: no assistant ever answered
};

/// A break: when `afterShare` of the file is written, `lengthShare` of its time passes with nothing. Both per mille.
struct Pause {
    std::uint64_t afterShare = 0;
    std::uint64_t lengthShare = 0;
};

/// One log before it is written. Instants are milliseconds since 1970.
struct FilePlan {
    FileKind kind = FileKind::Session;
    std::uint64_t seed = 0;
    std::size_t project = 0;
    std::string sessionId{};
    std::string agentId{}; ///< empty but for sub-agents
    std::int64_t start = 0;
    std::int64_t end = 0;
    std::uint64_t age = 0;       ///< place in the history: 0 at its end, 1000 at its start
    std::uint64_t bytes = 0;     ///< wished size
    std::uint64_t limitHits = 0; ///< limit messages to write
    std::vector<Pause> pauses{}; ///< by `afterShare`
};

/// Lays the files out over the history: more on working days than at weekends, mostly from 9 to 19 h UTC, some days
/// off, busier and calmer days, sessions that overlap. Sorted by `end`; the last one is a session that runs until
/// now. The sizes add up to `options.bytes`. Pure.
std::vector<FilePlan> planWeeks(const Options& options);

} // namespace SampleHome
