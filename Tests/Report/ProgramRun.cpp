#include "Report/ProgramRun.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>

#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/Quoted.h"
#include "Support/TemporaryFolder.h"
#include "UsageModel/Files.h"

namespace Report {

using TestSupport::quoted;

namespace {

int exitStatus(int waitStatus) {
    return WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : -1;
}

[[noreturn]] void becomeProgram(const std::filesystem::path& home, const std::vector<std::string>& arguments,
                                const std::vector<std::string>& settings) {
    clearenv();
    setenv("HOME", home.c_str(), 1);
    setenv("TZ", "UTC", 1);
    for (const std::string& setting : settings) {
        const std::size_t equals = setting.find('=');
        setenv(setting.substr(0, equals).c_str(), setting.substr(equals + 1).c_str(), 1);
    }
    std::vector<char*> words{const_cast<char*>(REPORT_PROGRAM)};
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    execv(REPORT_PROGRAM, words.data());
    _exit(127);
}

} // namespace

Finished runCommand(const std::string& command, const std::string& redirection) {
    const TestSupport::TemporaryFolder outputs;
    const std::string whole = "{ " + command + "\n} >" + quoted(outputs / "out") + " 2>" + quoted(outputs / "err");
    const int status = std::system((whole + " " + redirection).c_str());
    return {
        .status = exitStatus(status),
        .out = UsageModel::readWholeFile(outputs / "out"),
        .err = UsageModel::readWholeFile(outputs / "err"),
    };
}

Finished runProgram(const std::filesystem::path& home, const std::vector<std::string>& arguments,
                    const std::string& redirection) {
    std::string command = "env -i TZ=UTC HOME=" + quoted(home) + " " + quoted(REPORT_PROGRAM);
    for (const std::string& argument : arguments) command.append(" ").append(quoted(argument));
    return runCommand(command, redirection);
}

TerminalRun::TerminalRun(const std::filesystem::path& home, const std::vector<std::string>& arguments,
                         const std::vector<std::string>& settings) {
    winsize size{.ws_row = 50, .ws_col = 100, .ws_xpixel = 0, .ws_ypixel = 0};
    pid_ = forkpty(&terminal_, nullptr, nullptr, &size);
    if (pid_ == 0) becomeProgram(home, arguments, settings);
}

TerminalRun::~TerminalRun() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    close(terminal_);
}

bool TerminalRun::read(std::string& into) const {
    constexpr int tooLong = 20'000;
    pollfd source{terminal_, POLLIN, 0};
    if (poll(&source, 1, tooLong) != 1) return false;
    std::array<char, 4096> chunk{};
    // The read fails once the program, and with it the terminal's other end, is gone.
    const ssize_t count = ::read(terminal_, chunk.data(), chunk.size());
    if (count > 0) into.append(chunk.data(), static_cast<std::size_t>(count));
    return count > 0;
}

std::string TerminalRun::until(const std::string& text) {
    std::string shown;
    while (shown.find(text) == std::string::npos && read(shown)) {
    }
    return shown;
}

void TerminalRun::send(int signal) const {
    kill(pid_, signal);
}

void TerminalRun::resize(int columns, int rows) const {
    const winsize size{.ws_row = static_cast<unsigned short>(rows),
                       .ws_col = static_cast<unsigned short>(columns),
                       .ws_xpixel = 0,
                       .ws_ypixel = 0};
    ioctl(terminal_, TIOCSWINSZ, &size);
}

bool TerminalRun::showsKeys() const {
    termios keys{};
    return tcgetattr(terminal_, &keys) == 0 && (keys.c_lflag & ECHO) != 0;
}

Finished TerminalRun::end() {
    Finished finished;
    while (read(finished.out)) {
    }
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    finished.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : exitStatus(status);
    return finished;
}

Finished runOnTerminal(const std::filesystem::path& home, const std::vector<std::string>& settings) {
    return TerminalRun(home, {}, settings).end();
}

std::size_t lineCount(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

} // namespace Report
