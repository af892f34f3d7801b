#pragma once

#include "SampleHome/Random.h"

#include <cstdint>
#include <string>
#include <string_view>

/// What the program says in the service's place, ready for JSON.
namespace SampleHome::SyntheticTexts {

/// Tells that a limit was hit and, as a clock time up to five hours after `instant` (milliseconds since 1970), when
/// it resets: in words that a reader recognises.
std::string limit(std::int64_t instant, Random& random);

/// A text that a reader must not take for a limit message, though some speak of limits.
std::string_view harmless(Random& random);

} // namespace SampleHome::SyntheticTexts
