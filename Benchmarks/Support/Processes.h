#pragma once

#include <cstdint>
#include <string>

#include <sys/types.h>

namespace Bench {

/// What a process has taken so far, all its threads together. A wake-up is a voluntary context switch: a thread that had
/// gone to sleep.
struct ProcessUse {
    std::uint64_t wakeUps = 0;
    double cpuSeconds = 0.0;
};

[[nodiscard]] ProcessUse useOf(pid_t process);

/// How much of its memory is resident now, shared libraries included; bytes.
[[nodiscard]] double residentBytes(pid_t process);

/// The path of a program of this build, from that of a benchmark.
[[nodiscard]] std::string programBeside(const std::string& self, const std::string& name);

} // namespace Bench
