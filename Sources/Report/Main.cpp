#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <unistd.h>

#include "Report/Helper.h"
#include "Report/Options.h"
#include "Report/ProgressBar.h"
#include "Report/Refresher.h"
#include "Report/SnapshotText.h"
#include "Report/Text.h"
#include "Report/Trust.h"
#include "Report/TrustText.h"
#include "Report/Watch.h"
#include "UsageEngine/WindowComputation.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Json.h"

namespace {

using namespace Report;
using UsageModel::AppPaths;
using UsageModel::Date;

int complain(int status, const std::string& message) {
    const std::string line = std::string(programName) + ": " + oneLine(message) + "\n";
    std::fputs(line.c_str(), stderr);
    return status;
}

int print(const std::string& text) {
    if (std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return successStatus;
    // A reader that has seen enough is told nothing.
    return errno == EPIPE ? failedStatus : complain(failedStatus, "cannot write to the standard output");
}

template <typename Record>
int printJson(const Record& record) {
    return print(UsageModel::Json::toText(UsageModel::Json::encode(record)) + "\n");
}

Date nowOf(const Options& options) {
    const auto present = std::chrono::system_clock::now().time_since_epoch();
    return options.now.value_or(Date{std::chrono::duration<double>(present).count()});
}

double steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

ProgressBar::Write terminalOfErrors() {
    if (isatty(STDERR_FILENO) != 1) return {};
    return [](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); };
}

UsageGauge::StatusLineInstaller installerFor(const AppPaths& paths) {
    return UsageGauge::StatusLineInstaller(paths.claudeSettings(), paths.support());
}

int installedHelper(const Options& options, const std::filesystem::path& helper) try {
    return print(installHelper(installerFor(AppPaths(options.home)), helper, nowOf(options)) + "\n");
} catch (const std::exception& error) {
    return complain(failedStatus, std::string("Install failed: ") + error.what());
}

int removedHelper(const Options& options) try {
    return print(removeHelper(installerFor(AppPaths(options.home))) + "\n");
} catch (const std::exception& error) {
    return complain(failedStatus, std::string("Uninstall failed: ") + error.what());
}

/// Absent, and said so, where the database cannot be opened.
std::optional<Refresher> opened(const Options& options) try {
    return std::optional<Refresher>(std::in_place, AppPaths(options.home), options.calendar);
} catch (const std::exception& error) {
    const std::string database = AppPaths(options.home).database().string();
    complain(failedStatus, "cannot open the database " + database + ": " + error.what());
    return std::nullopt;
}

Knowledge loadWithProgress(Refresher& refresher) {
    ProgressBar bar(terminalOfErrors(), steadySeconds);
    return refresher.load([&](const UsageModel::IngestProgress& progress) { bar.show(progress); });
}

std::string pageText(const Options& options, const Knowledge& knowledge, const UsageModel::UsageSnapshot& snapshot,
                     const Terminal& terminal) {
    const AppPaths paths(options.home);
    return snapshotText({.snapshot = snapshot,
                         .calendar = options.calendar,
                         .history = knowledge.history,
                         .helper = installerFor(paths).state(),
                         .logFolder = paths.sessionLogs(),
                         .complaint = options.watch ? knowledge.complaint : std::nullopt},
                        terminal);
}

int printSnapshot(const Options& options, Refresher& refresher, const Knowledge& knowledge) {
    const UsageModel::UsageSnapshot snapshot = refresher.snapshot(knowledge, nowOf(options));
    if (options.json) return printJson(snapshot);
    return print(pageText(options, knowledge, snapshot, terminalOf(terminalFacts(STDOUT_FILENO))));
}

int printTrust(const Options& options, const Knowledge& knowledge) {
    const auto turns =
        UsageEngine::weigh(*knowledge.events, UsageModel::CategoryWeights::priors(UsageModel::liveWeightScale));
    const UsageEngine::WindowBounds week = UsageEngine::windowBounds({
        .kind = UsageModel::WindowKind::weeklyAll,
        .gauge = knowledge.gauge ? &*knowledge.gauge : nullptr,
        .now = nowOf(options),
        .anchors = knowledge.anchors,
    });
    const Trust trust = trustOf({.turns = turns, .calendar = options.calendar, .weekStart = week.start});
    if (options.json) return printJson(trust);
    return print(trustText(trust, options.calendar, terminalOf(terminalFacts(STDOUT_FILENO))));
}

/// Ends as the signal wants, for whoever looks why.
int endedBy(int signal) {
    // An interrupt is how a watch ends.
    if (signal == SIGINT) return successStatus;
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    return failedStatus;
}

int watched(const Options& options, Refresher& refresher) {
    Knowledge knowledge;
    auto snapshot = UsageModel::UsageSnapshot::warmingUp(nowOf(options));
    bool isFirst = true;
    const auto refresh = [&] {
        try {
            knowledge = isFirst ? loadWithProgress(refresher) : refresher.load({});
        } catch (const UsageIngest::SQLiteError& error) {
            // A database that another program holds is free again by the next time.
            if (isFirst) throw;
            knowledge.complaint = std::string("cannot read the database: ") + error.what();
        }
        snapshot = refresher.snapshot(knowledge, nowOf(options));
        isFirst = false;
    };
    const Watch watch{
        .gaugeFile = AppPaths(options.home).gaugeFile(),
        .output = STDOUT_FILENO,
        .refresh = refresh,
        .page = [&](const Terminal& terminal) { return pageText(options, knowledge, snapshot, terminal); },
    };
    return endedBy(watch.run());
}

int reported(const Options& options) try {
    std::optional<Refresher> refresher = opened(options);
    if (!refresher) return failedStatus;
    if (options.watch) return watched(options, *refresher);
    const Knowledge knowledge = loadWithProgress(*refresher);
    if (knowledge.complaint) complain(failedStatus, *knowledge.complaint);
    const int status =
        options.job == Job::backtest ? printTrust(options, knowledge) : printSnapshot(options, *refresher, knowledge);
    return knowledge.complaint ? failedStatus : status;
} catch (const UsageIngest::SQLiteError& error) {
    const std::string database = AppPaths(options.home).database().string();
    return complain(failedStatus, "cannot read the database " + database + ": " + error.what() +
                                      "; move it away to have the logs read anew");
}

int run(const Options& options, const char* argv0) {
    switch (options.job) {
    case Job::report:
    case Job::backtest: return reported(options);
    case Job::helperInstall: return installedHelper(options, helperBeside(argv0));
    case Job::helperRemove: return removedHelper(options);
    case Job::helperStatus: return print(helperStatus(installerFor(AppPaths(options.home))) + "\n");
    }
    return misuseStatus;
}

int answer(const Answer& answer) {
    return answer.status == successStatus ? print(answer.text) : complain(answer.status, answer.text);
}

} // namespace

int main(int argc, char** argv) try {
    // A reader that went away is a failed write, told like any other.
    std::signal(SIGPIPE, SIG_IGN);
    const Options defaults{
        .home = AppPaths::currentHome(),
        .calendar = UsageModel::Calendar::local(),
    };
    const auto read = readOptions({argv + std::min(argc, 1), argv + argc}, defaults);
    const auto* options = std::get_if<Options>(&read);
    return options != nullptr ? run(*options, argv[0]) : answer(std::get<Answer>(read));
} catch (const std::exception& error) {
    return complain(failedStatus, error.what());
}
