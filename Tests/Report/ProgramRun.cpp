#include "Report/ProgramRun.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/TemporaryFolder.h"
#include "UsageModel/Files.h"

namespace Report {

namespace {

std::string quoted(const std::string& word) {
    std::string quoted = "'";
    for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

int exitStatus(int waitStatus) {
    return WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : -1;
}

[[noreturn]] void becomeProgram(const std::filesystem::path& home, const std::vector<std::string>& settings) {
    clearenv();
    setenv("HOME", home.c_str(), 1);
    setenv("TZ", "UTC", 1);
    for (const std::string& setting : settings) {
        const std::size_t equals = setting.find('=');
        setenv(setting.substr(0, equals).c_str(), setting.substr(equals + 1).c_str(), 1);
    }
    execl(REPORT_PROGRAM, REPORT_PROGRAM, static_cast<char*>(nullptr));
    _exit(127);
}

} // namespace

Finished runProgram(const std::filesystem::path& home, const std::vector<std::string>& arguments,
                    const std::string& redirection) {
    const TestSupport::TemporaryFolder outputs;
    std::string command = "env -i TZ=UTC HOME=" + quoted(home) + " " + quoted(REPORT_PROGRAM);
    for (const std::string& argument : arguments) command.append(" ").append(quoted(argument));
    command.append(" >").append(quoted(outputs / "out")).append(" 2>").append(quoted(outputs / "err"));
    command.append(" ").append(redirection);
    const int status = std::system(command.c_str());
    return {
        .status = exitStatus(status),
        .out = UsageModel::readWholeFile(outputs / "out"),
        .err = UsageModel::readWholeFile(outputs / "err"),
    };
}

Finished runOnTerminal(const std::filesystem::path& home, const std::vector<std::string>& settings) {
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == -1) return {};
    if (child == 0) becomeProgram(home, settings);

    Finished finished;
    std::array<char, 4096> chunk{};
    // The read fails once the program, and with it the terminal's other end, is gone.
    for (ssize_t count = 0; (count = read(terminal, chunk.data(), chunk.size())) > 0;)
        finished.out.append(chunk.data(), static_cast<std::size_t>(count));
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    finished.status = exitStatus(status);
    return finished;
}

std::size_t lineCount(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

} // namespace Report
