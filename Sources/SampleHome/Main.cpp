#include "SampleHome/Put.h"
#include "SampleHome/SampleHome.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>

namespace {

constexpr int failedStatus = 1;
constexpr int misuseStatus = 2;

int complain(int status, const std::string& message) {
    std::fprintf(stderr, "make-sample-home: %s\n", message.c_str());
    return status;
}

double currentTime() {
    using namespace std::chrono;
    return duration<double>(system_clock::now().time_since_epoch()).count();
}

void declare(CLI::App& app, SampleHome::Options& options, double& megabytes, std::filesystem::path& statusLine) {
    app.add_option("--home", options.home, "folder to fill; must not hold a .claude yet")->required();
    app.add_option("--seed", options.seed, "another seed is another person")
        ->check(CLI::Range(std::int64_t{0}, std::numeric_limits<std::int64_t>::max()))
        ->capture_default_str();
    CLI::Option* size = app.add_option("--megabytes", megabytes, "size of all logs, in millions of bytes (default 20)");
    size->check(CLI::Range(0.001, 1e6));
    app.add_option("--bytes", options.bytes, "the same in bytes")->check(CLI::Range(1.0, 1e12))->excludes(size);
    app.add_option("--days", options.days, "length of the history")->check(CLI::Range(1, 3650))->capture_default_str();
    app.add_option("--now", options.now, "end of the history, in seconds since 1970 (default: the current time)");
    app.add_option("--status-line", statusLine, "file to write a status line document to");
    app.add_option("--files", options.files, "number of log files (default: a natural one)")
        ->check(CLI::Range(0, 1'000'000));
}

int make(const SampleHome::Options& options) {
    const SampleHome::Summary summary = SampleHome::makeSampleHome(options);
    std::string text;
    SampleHome::put(text, options.home.string(), ": ", summary.files, " files, ", summary.lines, " lines, ",
                    summary.turns, " turns, ", summary.limitMessages, " limit messages, ", summary.bytes,
                    " bytes; tokens: ", summary.tokens.input, " input, ", summary.tokens.output, " output, ",
                    summary.tokens.cacheCreation, " cache creation, ", summary.tokens.cacheRead, " cache read\n");
    if (std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0)
        return complain(failedStatus, "cannot write to the standard output");
    return 0;
}

int writeStatusLine(const std::filesystem::path& file, double now) {
    std::ofstream stream(file, std::ios::binary);
    stream << SampleHome::statusLineDocument(now);
    stream.close();
    return stream ? 0 : complain(failedStatus, "cannot write " + file.string());
}

} // namespace

int main(int argc, char** argv) {
    SampleHome::Options options;
    options.now = currentTime();
    double megabytes = 0;
    CLI::App app("Fills a home folder with session logs as a person at work leaves them.", "make-sample-home");
    std::filesystem::path statusLine;
    declare(app, options, megabytes, statusLine);
    try {
        app.parse(argc, argv);
        // The range check lets it pass, as it compares false with both ends.
        if (std::isnan(megabytes)) throw CLI::ValidationError("--megabytes", "not a number");
        if (megabytes > 0) options.bytes = static_cast<std::uint64_t>(megabytes * 1e6);
        const int status = make(options);
        return status != 0 || statusLine.empty() ? status : writeStatusLine(statusLine, options.now);
    } catch (const CLI::CallForHelp& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        return complain(misuseStatus, error.what());
    } catch (const std::invalid_argument& error) {
        return complain(misuseStatus, error.what());
    } catch (const SampleHome::HomeOccupied& error) {
        return complain(misuseStatus, error.what());
    } catch (const std::exception& error) {
        return complain(failedStatus, error.what());
    }
}
