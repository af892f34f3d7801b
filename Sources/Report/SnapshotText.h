#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "Report/Terminal.h"
#include "UsageGauge/StatusLineInstaller.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/UsageSnapshot.h"

namespace Report {

/// How far the user's history goes.
enum class History { noLogs, noTurns, turns };

/// A snapshot with what a reader must know beside it.
struct Page {
    const UsageModel::UsageSnapshot& snapshot;
    const UsageModel::Calendar& calendar;
    History history = History::turns;
    UsageGauge::StatusLineInstaller::State helper = UsageGauge::StatusLineInstaller::State::notInstalled;
    /// Named where there are no logs in it.
    std::filesystem::path logFolder;
    /// What went wrong on the way here.
    std::optional<std::string> complaint;
};

/// The report for people: lines that fit the terminal, each ended by a newline, the verdict first. Of what a log
/// contains, only numbers and the sessions' ids are printed, these made safe.
[[nodiscard]] std::string snapshotText(const Page& page, const Terminal& terminal);

/// Lines as the terminal takes them, each cut to its columns.
[[nodiscard]] std::string writtenLines(const Lines& lines, const Terminal& terminal);

} // namespace Report
