#pragma once

#include <span>

namespace UsageIngest {

/// Replaces, outside of strings, every number whose value no 64-bit integer and no double can hold by one that is as
/// long and stays too large for a count, so that a JSON reader which refuses such numbers can read the rest of the
/// line: they are valid JSON and occur in the arguments of tools. Returns whether any was replaced.
/// Text that is no JSON stays no JSON.
bool maskOversizedNumbers(std::span<char> json);

} // namespace UsageIngest
