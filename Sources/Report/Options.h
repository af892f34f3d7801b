#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "UsageModel/Calendar.h"

namespace Report {

inline constexpr std::string_view programName = "brindlewick-report";

inline constexpr int successStatus = 0;
inline constexpr int failedStatus = 1;
inline constexpr int misuseStatus = 2;

/// What the program is asked to do.
enum class Job { report, backtest, helperInstall, helperRemove, helperStatus };

struct Options {
    Job job = Job::report;
    std::filesystem::path home;
    /// Absent for the present.
    std::optional<UsageModel::Date> now;
    UsageModel::Calendar calendar;
    bool json = false;
    /// Keep the report up to date until interrupted.
    bool watch = false;
};

/// What is to be said instead of a report: help or the version on the standard output (`successStatus`), or one line
/// without the program's name on the standard error (`misuseStatus`).
struct Answer {
    int status = successStatus;
    std::string text;
};

/// Reads the arguments after the program's name; `defaults` hold where an option is absent. The home is an existing
/// folder, without links: the database knows each log by its path, and would count a log again under another spelling.
[[nodiscard]] std::variant<Options, Answer> readOptions(std::vector<std::string> arguments, const Options& defaults);

} // namespace Report
