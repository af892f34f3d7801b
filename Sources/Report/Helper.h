#pragma once

#include <filesystem>
#include <string>

#include "UsageGauge/StatusLineInstaller.h"

/// What the report's `helper` commands say and do.
namespace Report {

/// The executable of the status line helper beside the one that runs, which was started as `argv0`. Empty where it
/// cannot be found.
[[nodiscard]] std::filesystem::path helperBeside(const char* argv0);

/// One line on what is installed and what could be done about it, without a line feed.
[[nodiscard]] std::string helperStatus(const UsageGauge::StatusLineInstaller& installer);

/// Install and remove the helper, and return the line that says so. Throw as `StatusLineInstaller` does;
/// `installHelper` also throws `std::runtime_error` where there is no `helper`.
[[nodiscard]] std::string installHelper(const UsageGauge::StatusLineInstaller& installer,
                                        const std::filesystem::path& helper, UsageModel::Date now);
[[nodiscard]] std::string removeHelper(const UsageGauge::StatusLineInstaller& installer);

} // namespace Report
