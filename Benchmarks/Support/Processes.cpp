#include "Support/Processes.h"

#include <filesystem>
#include <fstream>

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

/// Nanoseconds on a processor, which the kernel counts finer than what "stat" tells.
double cpuNanoseconds(const std::filesystem::path& thread) {
    double time = 0.0;
    std::ifstream(thread / "schedstat") >> time;
    return time;
}

} // namespace

ProcessUse useOf(pid_t process) {
    ProcessUse use;
    const auto threads = std::filesystem::path("/proc") / std::to_string(process) / "task";
    for (const auto& thread : std::filesystem::directory_iterator(threads)) {
        use.wakeUps +=
            static_cast<std::uint64_t>(numberBehind(thread.path() / "status", "voluntary_ctxt_switches:"));
        use.cpuSeconds += cpuNanoseconds(thread.path()) * 1e-9;
    }
    return use;
}

double residentBytes(pid_t process) {
    return numberBehind(std::filesystem::path("/proc") / std::to_string(process) / "status", "VmRSS:") * 1024.0;
}

std::string programBeside(const std::string& self, const std::string& name) {
    return std::filesystem::absolute(self).parent_path() / name;
}

} // namespace Bench
