#pragma once

#include <optional>
#include <string_view>

#include <termios.h>

namespace Report {

/// Writes it all; throws `std::system_error` where that fails.
void writeAll(int fd, std::string_view text);

/// A terminal's second screen, held while this lives: the cursor is hidden, keys show nothing. The first screen, the
/// cursor and the keys come back as they were when it ends.
class Screen {
public:
    /// `fd` is a terminal that obeys escape codes. Throws `std::system_error` where it cannot be written to.
    explicit Screen(int fd);
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen();

    /// Gives the terminal back, and takes it again; each does nothing where that is so already.
    void leave();
    void enter();

    /// Replaces what is shown by lines that fit, each ended by a newline. No flicker: nothing is cleared first.
    void draw(std::string_view lines) const;

private:
    int fd_;
    bool isEntered_ = false;
    /// Absent where the keyboard is no terminal.
    std::optional<termios> keys_;
};

} // namespace Report
