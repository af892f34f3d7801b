#include "SampleHome/SampleHome.h"

#include "SampleHome/Conversation.h"
#include "SampleHome/LogFile.h"
#include "SampleHome/Pen.h"
#include "SampleHome/Projects.h"
#include "SampleHome/WeekPlan.h"

#include <algorithm>
#include <chrono>
#include <system_error>

namespace SampleHome {

namespace fs = std::filesystem;

namespace {

void requireSensible(const Options& options) {
    // An empty path would mean the current folder, which may well be somebody's real home.
    if (options.home.empty()) throw std::invalid_argument("the home must be named");
    // A forecast would find nothing to say about years before, and timestamps have room for four digits.
    constexpr double earliest = 315532800;
    constexpr double latest = 221845392000;
    if (!(options.now >= earliest && options.now <= latest))
        throw std::invalid_argument("the end of the history must lie between 1980 and 9000");
    if (options.days < 1 || options.days > 3650) throw std::invalid_argument("the history must have 1 to 3650 days");
}

[[noreturn]] void fail(std::string_view what, const fs::path& path, const std::error_code& error) {
    throw std::runtime_error("cannot " + std::string(what) + " " + path.string() + ": " + error.message());
}

/// Creates `.claude` itself as the last step, so that two makers cannot both take a home.
fs::path claimClaudeFolder(const fs::path& home) {
    std::error_code error;
    fs::path claude = home / ".claude";
    if (fs::exists(fs::symlink_status(claude, error))) throw HomeOccupied(claude.string() + " exists already");
    fs::create_directories(home, error);
    if (error) fail("create", home, error);
    const bool isNew = fs::create_directory(claude, error);
    if (error) fail("create", claude, error);
    if (!isNew) throw HomeOccupied(claude.string() + " exists already");
    return claude;
}

fs::path pathOf(const FilePlan& plan, const fs::path& claude) {
    const fs::path folder = claude / "projects" / ("-home-user-" + std::string(projects[plan.project].name));
    if (plan.kind != FileKind::SubAgent) return folder / (plan.sessionId + ".jsonl");
    return folder / plan.sessionId / "subagents" / ("agent-" + plan.agentId + ".jsonl");
}

void setModified(const fs::path& path, std::int64_t instant) {
    using namespace std::chrono;
    const sys_time<milliseconds> moment{milliseconds{instant}};
    std::error_code error;
    fs::last_write_time(path, time_point_cast<fs::file_time_type::duration>(file_clock::from_sys(moment)), error);
    if (error) fail("date", path, error);
}

enum class LastLine { Complete, Torn };

Tally writeLines(const FilePlan& plan, LogFile& file, LastLine lastLine) {
    Random random(plan.seed);
    Pen pen(plan, file, random);
    if (plan.kind == FileKind::Quiet) {
        writeQuietSession(pen);
        return {};
    }
    Conversation conversation(pen);
    Tally tally = conversation.run();
    if (lastLine == LastLine::Torn) {
        conversation.putLineToTear();
        file.tearLastLine(static_cast<unsigned>(random.between(30, 90)));
    }
    return tally;
}

void add(Summary& summary, const LogFile& file, const Tally& tally) {
    ++summary.files;
    summary.lines += file.lines();
    summary.bytes += file.bytes();
    summary.turns += tally.turns;
    summary.limitMessages += tally.limitMessages;
    summary.tokens.input += tally.tokens.input;
    summary.tokens.output += tally.tokens.output;
    summary.tokens.cacheCreation += tally.tokens.cacheCreation;
    summary.tokens.cacheRead += tally.tokens.cacheRead;
}

} // namespace

Summary makeSampleHome(const Options& options) {
    requireSensible(options);
    const fs::path claude = claimClaudeFolder(options.home);
    std::vector<FilePlan> plans = planWeeks(options);
    Summary summary;
    std::uint64_t planned = 0;
    for (FilePlan& plan : plans) {
        // What one file has too much, the next has less: the sum stays within a line of the wish.
        planned += plan.bytes;
        plan.bytes = planned - std::min(planned, summary.bytes);
        const fs::path path = pathOf(plan, claude);
        LogFile file(path);
        const Tally tally = writeLines(plan, file, &plan == &plans.back() ? LastLine::Torn : LastLine::Complete);
        file.close();
        setModified(path, plan.end);
        add(summary, file, tally);
    }
    return summary;
}

} // namespace SampleHome
