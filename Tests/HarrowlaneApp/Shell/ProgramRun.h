#pragma once

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

#include "Support/TemporaryFolder.h"

namespace ShellTests {

struct Outcome {
    /// Both streams: a failure is a line of text too.
    std::string output;
    int status = -1;
};

/// Of a shell's command.
inline Outcome outcomeOf(const std::string& command) {
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) throw std::system_error(errno, std::generic_category(), "popen");
    Outcome outcome;
    std::array<char, 256> chunk{};
    while (std::fgets(chunk.data(), chunk.size(), pipe) != nullptr) outcome.output += chunk.data();
    outcome.status = pclose(pipe);
    return outcome;
}

/// In a home of its own, in that folder, and without a display but for what `surroundings` sets.
inline Outcome runProgramIn(const std::filesystem::path& folder, const std::string& arguments,
                            const std::string& surroundings = {}) {
    const TestSupport::TemporaryFolder home;
    return outcomeOf("cd '" + folder.string() + "' && env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM HOME='" +
                     home.path().string() + "' " + surroundings + " '" BRINDLEWICK_PROGRAM "' " + arguments);
}

} // namespace ShellTests
