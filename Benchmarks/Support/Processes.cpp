#include "Support/Processes.h"

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace Bench {

namespace {

/// The number behind a word of a file; 0 where there is none.
double numberBehind(const std::filesystem::path& file, const std::string& wanted) {
    std::ifstream stream(file);
    std::string word;
    double number = 0.0;
    while (stream >> word) {
        if (word == wanted && stream >> number) return number;
    }
    return 0.0;
}

/// What its threads have taken, those that have ended too.
double cpuSeconds(const std::filesystem::path& process) {
    std::ifstream stream(process / "stat");
    std::string word;
    constexpr int userTime = 14;
    double user = 0.0;
    double system = 0.0;
    for (int field = 1; field < userTime; ++field) stream >> word;
    stream >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

} // namespace

ProcessUse useOf(pid_t process) {
    const auto folder = std::filesystem::path("/proc") / std::to_string(process);
    ProcessUse use{.cpuSeconds = cpuSeconds(folder)};
    for (const auto& thread : std::filesystem::directory_iterator(folder / "task")) {
        use.wakeUps[thread.path().filename().string()] =
            static_cast<std::int64_t>(numberBehind(thread.path() / "status", "voluntary_ctxt_switches:"));
    }
    return use;
}

std::int64_t wakeUpsBetween(const ProcessUse& before, const ProcessUse& after) {
    std::int64_t count = 0;
    for (const auto& [thread, switches] : after.wakeUps) {
        const auto known = before.wakeUps.find(thread);
        count += switches - (known == before.wakeUps.end() ? 0 : known->second);
    }
    return count;
}

double residentBytes(pid_t process) {
    return numberBehind(std::filesystem::path("/proc") / std::to_string(process) / "status", "VmRSS:") * 1024.0;
}

double peakMemory() {
    return numberBehind("/proc/self/status", "VmHWM:") * 1024.0;
}

std::string programBeside(const std::string& self, const std::string& name) {
    return std::filesystem::absolute(self).parent_path() / name;
}

} // namespace Bench
