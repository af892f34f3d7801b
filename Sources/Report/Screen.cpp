#include "Report/Screen.h"

#include <cerrno>
#include <string>
#include <system_error>

#include <unistd.h>

namespace Report {

namespace {

constexpr std::string_view secondScreen = "\x1b[?1049h\x1b[?25l";
constexpr std::string_view firstScreen = "\x1b[?25h\x1b[?1049l";
constexpr std::string_view topLeft = "\x1b[H";
constexpr std::string_view clearToLineEnd = "\x1b[K";
constexpr std::string_view clearBelow = "\x1b[J";

} // namespace

void writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(fd, text.data(), text.size());
        if (count == -1 && errno == EINTR) continue;
        if (count == -1) throw std::system_error(errno, std::generic_category(), "cannot write to the terminal");
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

Screen::Screen(int fd) : fd_(fd) {
    try {
        enter();
    } catch (const std::system_error&) {
        leave();
        throw;
    }
}

Screen::~Screen() {
    leave();
}

void Screen::enter() {
    if (isEntered_) return;
    isEntered_ = true;
    termios keys{};
    if (tcgetattr(STDIN_FILENO, &keys) == 0) {
        keys_ = keys;
        keys.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL);
        tcsetattr(STDIN_FILENO, TCSADRAIN, &keys);
    }
    writeAll(fd_, secondScreen);
}

void Screen::leave() {
    if (!isEntered_) return;
    isEntered_ = false;
    try {
        writeAll(fd_, firstScreen);
    } catch (const std::system_error&) {
        // The terminal is gone; there is nothing to give back.
    }
    // What was typed meanwhile was not meant for whoever reads the keys next.
    if (keys_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &*keys_);
    keys_.reset();
}

void Screen::draw(std::string_view lines) const {
    std::string frame(topLeft);
    bool isFirst = true;
    while (!lines.empty()) {
        const std::size_t end = lines.find('\n');
        // No newline behind the last line: in the lowest row it would scroll.
        frame.append(isFirst ? "" : "\r\n").append(lines.substr(0, end)).append(clearToLineEnd);
        lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
        isFirst = false;
    }
    writeAll(fd_, frame.append(clearBelow));
}

} // namespace Report
