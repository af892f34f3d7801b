#include "Report/Options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <system_error>

#include <CLI/CLI.hpp>

#include "Report/Text.h"

namespace Report {

namespace {

namespace fs = std::filesystem;

constexpr const char* purpose = "How close are you to your Claude Code limits, and where is this week heading?\n"
                                "Brings the record of your sessions up to date with their logs, and prints the\n"
                                "verdict first; then each limit window, the forecast, what to do, the week as a\n"
                                "chart, models and live sessions.";

constexpr const char* afterword = R"(Examples:
  brindlewick-report
  brindlewick-report --watch
  brindlewick-report backtest
  brindlewick-report helper install
  brindlewick-report --json | jq .verdict
  brindlewick-report --home /backup/alex --now 1760000000 --time-zone Asia/Tokyo

Marks:
  ?  the share of the limit is not known: no official reading tells it
  ~  estimated from your own sessions
The mark on a window's bar is the time that is gone; the pace is the share of
tokens over the share of time.

JSON: --json prints the snapshot that the report is drawn from, as one object on
one line. Instants are seconds since 1970, spans seconds, shares 1 at the limit;
what is not known is left out. `backtest --json` prints its figures as shares.

Exit status:
  0  the report is printed, also where there are no logs yet, or the watch was
     interrupted
  1  a log could not be read, the database not opened, or the report not
     written; where only a log failed, the report shows what was known before
  2  the options are wrong

Files, below the home folder:
  reads   .claude/projects/
          the session logs
  reads   Library/Application Support/Brindlewick/gauge.json
          the official limits
  writes  Library/Application Support/Brindlewick/usage.db
          the record, readable by you alone
  writes  .claude/settings.json
          its status line, by `helper install` and `helper remove` alone

Environment:
  HOME      the home folder, where --home is not given
  TZ        the time zone, where --time-zone is not given
  COLUMNS   the width, where the output is no terminal
  LANG      and LC_ALL, LC_CTYPE: a UTF-8 one lets the report draw in Unicode
  TERM      a `dumb` terminal gets neither colours nor a screen of its own
  NO_COLOR  where set and not empty, a terminal gets no bold or coloured text)";

class Misuse : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Given {
    std::optional<std::string> home;
    std::optional<std::string> now;
    std::optional<std::string> zone;
    bool json = false;
    bool watch = false;
    Job job = Job::report;
};

void declareHelper(CLI::App& app, Given& given) {
    CLI::App* helper = app.add_subcommand("helper", "install, remove or look up the status line helper");
    helper->require_subcommand(1)->fallthrough();
    const auto add = [&](const char* name, Job job, const char* description) {
        helper->add_subcommand(name, description)->fallthrough()->callback([&given, job] { given.job = job; });
    };
    add("install", Job::helperInstall, "let it keep the official limits whenever Claude Code draws its status line");
    add("remove", Job::helperRemove, "put the status line back as it was");
    add("status", Job::helperStatus, "tell whether it is installed");
}

void declare(CLI::App& app, Given& given) {
    app.add_option("--home", given.home, "home folder whose logs to read (default: yours)")->type_name("DIR");
    app.add_option("--now", given.now, "instant to report, since 1970 (default: the present)")->type_name("SECONDS");
    app.add_option("--time-zone", given.zone, "zone such as Europe/Berlin (default: local)")->type_name("ZONE");
    app.add_flag("--json", given.json, "print one JSON object, for scripts");
    app.add_flag("--watch", given.watch, "redraw when the gauge changes and every 30 seconds");
    app.add_subcommand("backtest", "replay your past weeks: how far to trust the forecast")
        ->fallthrough()
        ->callback([&given] { given.job = Job::backtest; });
    declareHelper(app, given);
    app.require_subcommand(0, 1);
    app.set_version_flag("--version", std::string(programName) + " " + REPORT_VERSION);
    app.footer(afterword);
    constexpr std::size_t optionColumn = 22; // leaves room for the descriptions in 80 columns
    app.get_formatter()->column_width(optionColumn);
}

fs::path homeFolder(const std::optional<std::string>& given, const fs::path& standard) {
    if (!given && standard.empty()) throw Misuse("cannot tell your home folder; name it with --home");
    const fs::path home = given ? fs::path(*given) : standard;
    std::error_code error;
    if (!fs::is_directory(home, error)) throw Misuse("the home is not a folder: '" + home.string() + "'");
    fs::path canonical = fs::canonical(home, error);
    if (error) throw Misuse("the home cannot be reached: " + home.string());
    return canonical;
}

UsageModel::Date instant(const std::string& given) {
    double seconds = 0;
    const char* end = given.data() + given.size();
    const auto [rest, error] = std::from_chars(given.data(), end, seconds);
    // Beyond the year 90,000 there is no calendar.
    constexpr double furthest = 2.7e12;
    if (error != std::errc() || rest != end || !(std::abs(seconds) < furthest))
        throw Misuse("--now takes a number of seconds since 1970, not: '" + given + "'");
    return UsageModel::Date{seconds};
}

UsageModel::Calendar calendarOf(const std::string& zone) {
    const auto calendar = UsageModel::Calendar::inZone(zone);
    if (!calendar)
        throw Misuse("--time-zone takes a name such as Europe/Berlin, and knows none called: '" + zone + "'");
    return *calendar;
}

void checkWatch(const Given& given) {
    if (!given.watch) return;
    if (given.job != Job::report) throw Misuse("--watch is for the report, not for a command");
    if (given.json) throw Misuse("--watch draws for people and cannot go with --json");
    if (given.now) throw Misuse("--watch follows the present and cannot go with --now");
}

Options checked(const Given& given, const Options& defaults) {
    checkWatch(given);
    return {
        .job = given.job,
        .home = homeFolder(given.home, defaults.home),
        .now = given.now ? std::optional(instant(*given.now)) : defaults.now,
        .calendar = given.zone ? calendarOf(*given.zone) : defaults.calendar,
        .json = given.json || defaults.json,
        .watch = given.watch || defaults.watch,
    };
}

Answer misuse(const std::string& message) {
    return {.status = misuseStatus, .text = oneLine(message) + " (see --help)"};
}

} // namespace

std::variant<Options, Answer> readOptions(std::vector<std::string> arguments, const Options& defaults) {
    Given given;
    CLI::App app(purpose, std::string(programName));
    declare(app, given);
    std::ranges::reverse(arguments); // the parser takes them from the back
    try {
        app.parse(arguments);
        return checked(given, defaults);
    } catch (const CLI::CallForHelp&) {
        return Answer{.status = successStatus, .text = app.help()};
    } catch (const CLI::CallForVersion& version) {
        return Answer{.status = successStatus, .text = std::string(version.what()) + "\n"};
    } catch (const CLI::ExtrasError&) {
        return misuse("unknown argument: " + app.remaining(true).back());
    } catch (const CLI::ParseError& error) {
        return misuse(error.what());
    } catch (const Misuse& error) {
        return misuse(error.what());
    }
}

} // namespace Report
