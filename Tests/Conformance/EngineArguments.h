#pragma once

#include <vector>

#include "Conformance/Operations.h"
#include "UsageEngine/Baseline.h"
#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Calendar.h"

/// The arguments that many operations of the engine take. Reading throws where they are missing or wrong.
namespace Conformance {

/// "events": rows of `[ts, sessionId, model, input, output, cacheCreation, cacheRead, effort or null]`.
[[nodiscard]] std::vector<UsageModel::UsageEvent> events(const Arguments& args);
/// The events by "weights".
[[nodiscard]] std::vector<UsageEngine::WeighedTurn> turns(const Arguments& args);
/// Of "timeZone".
[[nodiscard]] UsageModel::Calendar calendar(const Arguments& args);
/// "baseline": its week, and the name of its zone.
[[nodiscard]] UsageEngine::Baseline baseline(const Arguments& args);
/// From one argument to another, which are named.
[[nodiscard]] UsageEngine::TimeSpan span(const Arguments& args, const char* from, const char* to);
/// "opusOnly" and "bucket", either of which may be left out.
[[nodiscard]] UsageEngine::TurnFilter filter(const Arguments& args);

} // namespace Conformance
