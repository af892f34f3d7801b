#include "Shim/WrappedCommand.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // NOLINT(readability-redundant-declaration): not every system declares it

namespace Shim {

namespace {

constexpr int notStarted = 127;
constexpr int signalled = 128;

constexpr std::array<int, 4> endingSignals{SIGHUP, SIGINT, SIGTERM, SIGALRM};

// A signal handler reaches nothing else.
volatile std::sig_atomic_t commandGroup = 0;

void endGroup(int number) {
    kill(-static_cast<pid_t>(commandGroup), SIGKILL);
    // After the time is up, the status line still has the command's status to pass on.
    if (number != SIGALRM) _exit(signalled + number);
}

sigset_t endingSet() {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : endingSignals) sigaddset(&set, number);
    return set;
}

/// From now on this process and the group end together. The signals must have been held back until now, or one that
/// came between the start of the group and this would leave it alone.
void guard(pid_t group) {
    commandGroup = group;
    struct sigaction action {};
    action.sa_handler = endGroup;
    for (const int number : endingSignals) sigaction(number, &action, nullptr);
    const sigset_t ending = endingSet();
    sigprocmask(SIG_UNBLOCK, &ending, nullptr);
    alarm(wrappedCommandSeconds);
}

/// The shell's process, first of a group of its own; 0 where it could not be started.
pid_t startShell(const std::string& command, int input, const sigset_t& mask) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK);
    posix_spawnattr_setsigmask(&attributes, &mask);
    posix_spawnattr_setpgroup(&attributes, 0);

    std::string shell = "sh";
    std::string option = "-c";
    std::string words = command;
    const std::array<char*, 4> arguments{shell.data(), option.data(), words.data(), nullptr};
    pid_t child = 0;
    const int error = posix_spawn(&child, "/bin/sh", &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? child : 0;
}

/// A process that writes the input, so that a command which leaves it unread holds up nobody. 0 where there is none.
pid_t startFeeder(std::string_view input, int output) {
    const pid_t feeder = fork();
    if (feeder != 0) return feeder > 0 ? feeder : 0;
    while (!input.empty()) {
        const ssize_t count = write(output, input.data(), input.size());
        if (count <= 0) break;
        input.remove_prefix(static_cast<std::size_t>(count));
    }
    _exit(0);
}

int statusOf(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) == -1) {
        if (errno != EINTR) return notStarted;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : signalled + WTERMSIG(status);
}

} // namespace

int runWrapped(const std::string& command, std::string_view input) {
    std::array<int, 2> channel{};
    if (pipe(channel.data()) != 0) return notStarted;
    fcntl(channel[1], F_SETFD, FD_CLOEXEC);
    fcntl(channel[0], F_SETFD, FD_CLOEXEC);

    const sigset_t ending = endingSet();
    sigset_t mask;
    sigprocmask(SIG_BLOCK, &ending, &mask);
    const pid_t shell = startShell(command, channel[0], mask);
    close(channel[0]);
    if (shell == 0) return notStarted;
    guard(shell);
    const pid_t feeder = startFeeder(input, channel[1]);
    close(channel[1]);
    const int status = statusOf(shell);
    if (feeder != 0) {
        kill(feeder, SIGKILL);
        statusOf(feeder);
    }
    return status;
}

} // namespace Shim
