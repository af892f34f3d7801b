#include "Report/Signals.h"

#include <cerrno>
#include <system_error>

#include <sys/signalfd.h>
#include <unistd.h>

namespace Report {

namespace {

bool isIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

sigset_t watched() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGQUIT, SIGTSTP, SIGWINCH}) sigaddset(&signals, signal);
    // Who was started to outlive its terminal is not to end with it.
    if (!isIgnored(SIGHUP)) sigaddset(&signals, SIGHUP);
    return signals;
}

} // namespace

Signals::Signals() {
    const sigset_t signals = watched();
    fd_ = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
    if (fd_ == -1) throw std::system_error(errno, std::generic_category(), "cannot wait for signals");
    pthread_sigmask(SIG_BLOCK, &signals, &before_);
}

Signals::~Signals() {
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    close(fd_);
}

void Signals::stop() const {
    sigset_t signal;
    sigemptyset(&signal);
    sigaddset(&signal, SIGTSTP);
    pthread_sigmask(SIG_UNBLOCK, &signal, nullptr);
    // Not SIGSTOP: where there is no shell to continue the program, the system ignores this one.
    raise(SIGTSTP);
    pthread_sigmask(SIG_BLOCK, &signal, nullptr);
}

int Signals::take() const {
    signalfd_siginfo info{};
    return read(fd_, &info, sizeof info) == sizeof info ? static_cast<int>(info.ssi_signo) : 0;
}

} // namespace Report
