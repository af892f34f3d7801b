#pragma once

#include <functional>
#include <string>
#include <vector>

/// Absolute times mean little on a machine that does other things as well: what counts here is how long one thing takes
/// compared with another, both measured in one run.
namespace Bench {

/// Met when the best time of `subject` is at most `limit` times the sum of the best times of `measures`; without any
/// measure, when it is at most `limit` seconds.
struct Target {
    std::string subject;
    std::vector<std::string> measures;
    double limit = 0.0;
};

/// Registers a benchmark that times single calls of `work`, `rounds` of them, in turns with the other benchmarks.
/// `prepare` runs before each and is not timed.
void add(const std::string& name, int rounds, const std::function<void()>& work,
         const std::function<void()>& prepare = {});

/// Runs what was registered, then prints a line for each target. Options of Google Benchmark are understood; a target
/// whose benchmarks were filtered out is skipped. Returns the exit status of the program: 1 where a limit is exceeded.
[[nodiscard]] int run(int argc, char** argv, const std::vector<Target>& targets);

} // namespace Bench
