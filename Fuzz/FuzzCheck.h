#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program with a finding where a property does not hold.
inline void fuzzCheck(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "property broken: %s\n", property);
    std::abort();
}
