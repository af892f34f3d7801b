#include "Support/Ratios.h"

#include <chrono>
#include <cstdio>
#include <map>
#include <optional>

#include "Support/Figures.h"

#include <benchmark/benchmark.h>

namespace Bench {

namespace {

/// Keeps the best time of each benchmark, seconds, and prints it.
class BestTimes : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& /*context*/) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            const std::string& name = run.run_name.function_name;
            const auto [best, isNew] = best_.try_emplace(name, run.real_accumulated_time);
            if (!isNew) best->second = std::min(best->second, run.real_accumulated_time);
        }
    }

    void Finalize() override {
        for (const auto& [name, seconds] : best_) std::printf("%12.4f ms  %s\n", seconds * 1000.0, name.c_str());
    }

    [[nodiscard]] std::optional<double> sum(const std::vector<std::string>& names) const {
        double total = 0.0;
        for (const std::string& name : names) {
            const auto best = best_.find(name);
            if (best == best_.end()) return std::nullopt;
            total += best->second;
        }
        return total;
    }

private:
    std::map<std::string, double> best_;
};

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : " + ") + name;
    return text;
}

bool isMet(const Target& target, const BestTimes& times) {
    const auto subject = times.sum({target.subject});
    const auto measure = times.sum(target.measures);
    if (!subject || !measure) return true;
    const bool isRatio = !target.measures.empty();
    const double value = isRatio ? *subject / *measure : *subject;
    if (!isRatio) return isMet(Figure{target.subject, value * 1e3, "ms", target.limit * 1e3});
    return isMet(Figure{target.subject, value, "times " + joined(target.measures), target.limit});
}

} // namespace

void add(const std::string& name, int rounds, const std::function<void()>& work, const std::function<void()>& prepare) {
    const auto timed = [=](benchmark::State& state) {
        for (const auto unused : state) {
            static_cast<void>(unused);
            if (prepare) prepare();
            const auto start = std::chrono::steady_clock::now();
            work();
            state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        }
    };
    benchmark::RegisterBenchmark(name.c_str(), timed)->Iterations(1)->Repetitions(rounds)->UseManualTime();
}

int run(int argc, char** argv, const std::vector<Target>& targets) {
    // What slows the machine down for a while then slows all of them down.
    std::string interleaved = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments{argv[0], interleaved.data()};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;

    BestTimes times;
    benchmark::RunSpecifiedBenchmarks(&times);
    bool allMet = true;
    for (const Target& target : targets) allMet = isMet(target, times) && allMet;
    return allMet ? 0 : 1;
}

} // namespace Bench
