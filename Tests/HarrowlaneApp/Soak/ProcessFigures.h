#pragma once

#include <cstdint>
#include <ostream>

namespace HarrowlaneApp {

/// What this process takes of the system.
struct ProcessFigures {
    std::int64_t descriptors = 0;
    std::int64_t threads = 0;
    /// Bytes that were allocated and not freed; 0 where a sanitizer allocates.
    std::int64_t heap = 0;
    /// Bytes in memory, of the program itself and of libraries too.
    std::int64_t resident = 0;

    [[nodiscard]] static ProcessFigures now();
};

std::ostream& operator<<(std::ostream& stream, const ProcessFigures& figures);

} // namespace HarrowlaneApp
