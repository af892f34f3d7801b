#include "Report/Watch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <optional>
#include <string_view>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include "Report/Screen.h"
#include "Report/Signals.h"
#include "UsageGauge/GaugeWatcher.h"

namespace Report {

namespace {

using Clock = std::chrono::steady_clock;

/// Rung on one thread, heard on another.
class Bell {
public:
    Bell() : fd_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
        if (fd_ == -1) throw std::system_error(errno, std::generic_category(), "cannot wait for the gauge");
    }
    Bell(const Bell&) = delete;
    Bell& operator=(const Bell&) = delete;
    ~Bell() { close(fd_); }

    void ring() const { eventfd_write(fd_, 1); }
    void silence() const {
        eventfd_t count = 0;
        eventfd_read(fd_, &count);
    }
    [[nodiscard]] int fd() const { return fd_; }

private:
    int fd_;
};

/// As many lines as the screen has rows, the last telling that there are more.
std::string fitted(const std::string& lines, std::optional<std::size_t> rows) {
    const auto count = static_cast<std::size_t>(std::ranges::count(lines, '\n'));
    if (!rows || count <= *rows) return lines;
    std::size_t end = 0;
    for (std::size_t row = 0; row + 1 < *rows; ++row) end = lines.find('\n', end) + 1;
    return lines.substr(0, end) + "...\n";
}

int millisecondsTo(Clock::time_point when) {
    using std::chrono::milliseconds;
    return static_cast<int>(std::max(std::chrono::ceil<milliseconds>(when - Clock::now()), milliseconds(0)).count());
}

class Session {
public:
    explicit Session(const Watch& watch) : watch_(watch), watcher_(watch.gaugeFile, [this] { bell_.ring(); }) {
        watcher_.start();
        if (terminalOf(terminalFacts(watch_.output)).movesCursor) screen_.emplace(watch_.output);
    }

    int run() {
        while (true) {
            watch_.refresh();
            draw();
            const auto until = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                  std::chrono::duration<double>(watch_.secondsBetweenRefreshes));
            if (const int signal = wait(until)) return signal;
        }
    }

private:
    void draw() {
        const Terminal terminal = terminalOf(terminalFacts(watch_.output));
        const std::string page = watch_.page(terminal);
        if (screen_) {
            screen_->draw(fitted(page, terminal.rows));
        } else {
            writeAll(watch_.output, isFirst_ ? page : "\n" + page);
        }
        isFirst_ = false;
    }

    /// Waits for the time, or for a change of the gauge. A signal that asks for the end; 0 where none did.
    int wait(Clock::time_point until) {
        while (true) {
            std::array<pollfd, 2> sources{{{signals_.fd(), POLLIN, 0}, {bell_.fd(), POLLIN, 0}}};
            const int ready = poll(sources.data(), sources.size(), millisecondsTo(until));
            if (ready == -1 && errno != EINTR) throw std::system_error(errno, std::generic_category(), "cannot wait");
            if (ready == 0 && Clock::now() >= until) return 0;
            while (const int signal = signals_.take()) {
                if (endsWith(signal)) return signal;
            }
            if (ready > 0 && sources[1].revents != 0) {
                bell_.silence();
                return 0;
            }
        }
    }

    bool endsWith(int signal) {
        if (signal == SIGTSTP) pause();
        if (signal == SIGTSTP || signal == SIGWINCH) {
            if (screen_) draw();
            return false;
        }
        return true;
    }

    /// The terminal is the shell's while the program is stopped.
    void pause() {
        if (screen_) screen_->leave();
        signals_.stop();
        if (screen_) screen_->enter();
    }

    const Watch& watch_;
    // First of all: the watcher's thread must not take the signals.
    Signals signals_;
    Bell bell_;
    UsageGauge::GaugeWatcher watcher_;
    std::optional<Screen> screen_;
    bool isFirst_ = true;
};

} // namespace

int Watch::run() const {
    // The first import may take long: an interrupt still ends it at once.
    refresh();
    return Session(*this).run();
}

} // namespace Report
