#pragma once

#include <span>
#include <string>

namespace HarrowlaneApp {

/// What one start of the program is to do.
struct Job {
    enum class Kind {
        dumpMeter,
        dumpMenuBar,
        dumpChart,
        dumpIconset,
        notifyTest,
        dumpChartLive,
        dumpUI,
        application,
    };

    Kind kind = Kind::application;
    /// The path of the file or folder to write, unchanged. Empty for `notifyTest` and `application`.
    std::string path;
    /// Pixels a point. Told by `--scale` for `dumpMenuBar` alone: any finite number, also 0 or a negative one. Where
    /// the argument behind the first `--scale` is not a decimal number as a whole, it stays at 4.
    double scale = 4.0;

    friend bool operator==(const Job&, const Job&) = default;
};

/// The job that an argument vector (with or without the program's own name) asks for. Switches are whole arguments,
/// anywhere; of each only the first occurrence counts; a value is the argument right behind, whatever it is. They are
/// tried in the order of `Job::Kind`, and one that wants a value and stands last counts as absent. Never fails.
[[nodiscard]] Job jobFor(std::span<const std::string> arguments);

} // namespace HarrowlaneApp
