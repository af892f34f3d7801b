#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Report {

/// What a run of the program left.
struct Finished {
    int status = -1;
    std::string out;
    std::string err;
};

/// Runs the program with this home and no other environment but the zone UTC. `redirection` is a shell's, and comes
/// after those that catch the two outputs.
[[nodiscard]] Finished runProgram(const std::filesystem::path& home, const std::vector<std::string>& arguments,
                                  const std::string& redirection = "");

/// Runs the program with both outputs on a terminal of its own; `out` holds what both wrote. `settings` are
/// "NAME=value".
[[nodiscard]] Finished runOnTerminal(const std::filesystem::path& home, const std::vector<std::string>& settings);

/// The lines of a text, each ended by a newline.
[[nodiscard]] std::size_t lineCount(const std::string& text);

} // namespace Report
