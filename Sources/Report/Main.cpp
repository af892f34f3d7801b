#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <unistd.h>

#include "Report/Helper.h"
#include "Report/Numbers.h"
#include "Report/Options.h"
#include "Report/ProgressBar.h"
#include "Report/Report.h"
#include "Report/ReportJson.h"
#include "Report/ReportText.h"
#include "UsageGauge/GaugeReader.h"
#include "UsageGauge/StatusLineInstaller.h"
#include "UsageIngest/IngestStore.h"
#include "UsageIngest/LogDiscovery.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"

namespace {

using namespace Report;
using UsageIngest::IngestStore;
using UsageModel::AppPaths;

using Logs = std::vector<std::filesystem::path>;

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

double secondsSince1970() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

double steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool isSet(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

Style styleOfOutput() {
    return isatty(STDOUT_FILENO) == 1 && !isSet("NO_COLOR") ? Style::coloured : Style::plain;
}

ProgressBar::Write terminalOfErrors() {
    if (isatty(STDERR_FILENO) != 1) return {};
    return [](std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); };
}

/// Absent, and said so, where the database cannot be opened.
std::optional<IngestStore> openStore(const AppPaths& paths) try {
    UsageModel::createPrivateFolders(paths.support());
    UsageModel::makePrivate(paths.support());
    return IngestStore(paths.database());
} catch (const std::exception& error) {
    complain(failedStatus, "cannot open the database " + paths.database().string() + ": " + error.what());
    return std::nullopt;
}

/// Why the record could not be brought up to date; absent where it could.
std::optional<std::string> sync(IngestStore& store, const Logs& logs) try {
    ProgressBar bar(terminalOfErrors(), steadySeconds);
    store.sync(logs, [&](const UsageModel::IngestProgress& progress) { bar.show(progress); });
    return std::nullopt;
} catch (const UsageIngest::SQLiteError& error) {
    return std::string("cannot store what is new; showing what was known before: ") + error.what();
} catch (const std::exception& error) {
    return std::string("cannot read the logs; showing what was known before: ") + error.what();
}

UsageGauge::StatusLineInstaller installerFor(const AppPaths& paths) {
    return UsageGauge::StatusLineInstaller(paths.claudeSettings(), paths.support());
}

int installedHelper(const Options& options, const std::filesystem::path& helper) try {
    return print(installHelper(installerFor(AppPaths(options.home)), helper, options.now) + "\n");
} catch (const std::exception& error) {
    return complain(failedStatus, std::string("Install failed: ") + error.what());
}

int removedHelper(const Options& options) try {
    return print(removeHelper(installerFor(AppPaths(options.home))) + "\n");
} catch (const std::exception& error) {
    return complain(failedStatus, std::string("Uninstall failed: ") + error.what());
}

int printReport(const Options& options) {
    const AppPaths paths(options.home);
    std::optional<IngestStore> store = openStore(paths);
    if (!store) return failedStatus;
    const Logs logs = UsageIngest::LogDiscovery(paths.sessionLogs()).discover();
    const std::optional<std::string> failure = sync(*store, logs);
    const UsageIngest::EventList events = store->allEvents();
    if (failure) complain(failedStatus, *failure);
    const UsageReport report = makeReport({
        .events = *events,
        .gauge = UsageGauge::GaugeReader{paths.gaugeFile()}.read(),
        .now = options.now,
        .calendar = options.calendar,
        .logFiles = static_cast<std::int64_t>(logs.size()),
        .helper = installerFor(paths).state(),
    });
    const int printStatus =
        print(options.json ? reportJson(report) : reportText(report, paths.sessionLogs(), styleOfOutput()));
    return failure ? failedStatus : printStatus;
}

int printedReport(const Options& options) try {
    return printReport(options);
} catch (const UsageIngest::SQLiteError& error) {
    const std::string database = AppPaths(options.home).database().string();
    return complain(failedStatus, "cannot read the database " + database + ": " + error.what() +
                                      "; move it away to have the logs read anew");
}

int run(const Options& options, const char* argv0) {
    switch (options.job) {
    case Job::report: return printedReport(options);
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
        .now = UsageModel::Date{secondsSince1970()},
        .calendar = UsageModel::Calendar::local(),
    };
    const auto read = readOptions({argv + std::min(argc, 1), argv + argc}, defaults);
    const auto* options = std::get_if<Options>(&read);
    return options != nullptr ? run(*options, argv[0]) : answer(std::get<Answer>(read));
} catch (const std::exception& error) {
    return complain(failedStatus, error.what());
}
