#pragma once

#include <cstdint>
#include <map>
#include <string>

#include <sys/types.h>

namespace Bench {

/// What a process has taken so far. A wake-up is a voluntary context switch: of a thread that had gone to sleep.
struct ProcessUse {
    /// By thread.
    std::map<std::string, std::int64_t> wakeUps;
    double cpuSeconds = 0.0;
};

[[nodiscard]] ProcessUse useOf(pid_t process);

/// Of threads that have not ended in between.
[[nodiscard]] std::int64_t wakeUpsBetween(const ProcessUse& before, const ProcessUse& after);

/// How much of its memory is resident now, shared libraries included; bytes.
[[nodiscard]] double residentBytes(pid_t process);

/// The largest resident size of this process so far, bytes.
[[nodiscard]] double peakMemory();

/// The path of a program of this build, from that of a benchmark.
[[nodiscard]] std::string programBeside(const std::string& self, const std::string& name);

} // namespace Bench
