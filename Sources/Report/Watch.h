#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "Report/Terminal.h"

namespace Report {

/// A report that keeps itself up to date.
struct Watch {
    /// A change of it asks for a refresh.
    std::filesystem::path gaugeFile;
    /// Where it is drawn. On what is no terminal, or one that cannot move its cursor, each report follows the last.
    int output = 1;
    /// Brings up to date what `page` shows.
    std::function<void()> refresh;
    /// The report, as lines that fit the terminal.
    std::function<std::string(const Terminal&)> page;
    /// From the end of a refresh to the next, where nothing changes.
    double secondsBetweenRefreshes = 30.0;

    /// Draws until a signal asks for the end, and returns that signal. The terminal is then as it was before, also when
    /// anything throws.
    [[nodiscard]] int run() const;
};

} // namespace Report
