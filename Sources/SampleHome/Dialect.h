#pragma once

#include "SampleHome/Random.h"

#include <cstdint>
#include <string_view>

namespace SampleHome {

/// The stages of the log format that differ in what a reader can see, oldest first.
enum class Era {
    Plain,   ///< usage has the four counts only; no git branch
    Hooks,   ///< progress lines, cache creation by lifetime
    Slugs,   ///< a name for the session, sub-agents' messages inside progress lines
    Titles,  ///< titles, attachments and prompts on lines of their own
    Efforts, ///< the effort level at the top of a line, iterations and speed in usage
};

/// What a session is written in.
struct Dialect {
    Era era = Era::Plain;
    std::string_view version;
};

/// Who speaks in a log.
enum class Speaker { Session, SubAgent };

/// The dialect in use at a time of the history: `age` is 0 at its end, 1000 at its start. People do not update at once,
/// so neighbouring stages overlap.
Dialect pickDialect(std::uint64_t age, Random& random);

/// A model name of that time; sub-agents mostly run on the smaller ones.
std::string_view pickModel(Era era, Speaker speaker, Random& random);

/// An effort level, and an empty text where the logs record none: before Era::Efforts, and for models without levels.
std::string_view pickEffort(Era era, std::string_view model, Random& random);

} // namespace SampleHome
