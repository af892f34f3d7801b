#pragma once

namespace HarrowlaneApp {

/// The program in the menu bar, until it is told to quit. Where it runs already, that one is shown and this one ends;
/// where there is no display it says so and ends.
/// Returns the exit status.
[[nodiscard]] int runApplication(int argc, char** argv);

} // namespace HarrowlaneApp
