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

/// Runs a shell's command in the environment of the tests. `redirection` is a shell's, and comes after those that catch
/// the two outputs.
[[nodiscard]] Finished runCommand(const std::string& command, const std::string& redirection = "");

/// Runs the program with this home and no other environment but the zone UTC. `redirection` as above.
[[nodiscard]] Finished runProgram(const std::filesystem::path& home, const std::vector<std::string>& arguments,
                                  const std::string& redirection = "");

/// The program on a terminal of its own, of 100 columns and 50 rows, that both of its outputs go to. Its environment is
/// the home, the zone UTC and the settings, each "NAME=value". Killed when this goes away.
class TerminalRun {
public:
    TerminalRun(const std::filesystem::path& home, const std::vector<std::string>& arguments,
                const std::vector<std::string>& settings);
    TerminalRun(const TerminalRun&) = delete;
    TerminalRun& operator=(const TerminalRun&) = delete;
    ~TerminalRun();

    /// What was written since the last call, once `text` is in it; what came by then, where it ends or takes too long.
    [[nodiscard]] std::string until(const std::string& text);
    void send(int signal) const;
    void resize(int columns, int rows) const;
    /// Whether typed keys show.
    [[nodiscard]] bool showsKeys() const;
    /// Waits for its end. The status is that of a shell: above 128 it is a signal.
    [[nodiscard]] Finished end();

private:
    [[nodiscard]] bool read(std::string& into) const;

    int terminal_ = -1;
    int pid_ = -1;
};

/// Runs the report to its end on such a terminal.
[[nodiscard]] Finished runOnTerminal(const std::filesystem::path& home, const std::vector<std::string>& settings);

/// The lines of a text, each ended by a newline.
[[nodiscard]] std::size_t lineCount(const std::string& text);

} // namespace Report
