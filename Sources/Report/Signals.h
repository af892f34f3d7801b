#pragma once

#include <csignal>

namespace Report {

/// While this lives, the signals that end, stop or resize a program on a terminal wait to be read here, instead of
/// acting at once. Threads that are started meanwhile leave them alone.
class Signals {
public:
    /// Throws `std::system_error`.
    Signals();
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;
    ~Signals();

    /// Readable while a signal waits.
    [[nodiscard]] int fd() const { return fd_; }
    /// The number of one that waits; 0 where none does.
    [[nodiscard]] int take() const;

    /// Does what SIGTSTP would have done at once: returns when the program is continued.
    void stop() const;

private:
    int fd_ = -1;
    sigset_t before_{};
};

} // namespace Report
