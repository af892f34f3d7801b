#include "SampleHome/WeekPlan.h"

#include "SampleHome/Identifiers.h"
#include "SampleHome/Projects.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace SampleHome {

namespace {

constexpr std::int64_t minute = 60'000;
constexpr std::int64_t day = 1440 * minute;

// From Sunday on, as std::chrono counts them.
constexpr std::array<std::uint64_t, 7> weekdayLoad{22, 100, 115, 110, 105, 82, 18};
constexpr std::array<unsigned, 24> hourLoad{2,  1,  0,  0,  0,  0,  1, 3, 9, 20, 25, 22,
                                            10, 18, 25, 23, 20, 14, 8, 4, 5, 6,  4,  2};

constexpr Spread dayMood{{50, 65, 80, 100, 125, 150, 190, 220, 230}};
constexpr Spread sessionMinutes{{4, 16, 32, 58, 95, 150, 240, 300, 320}};
// Kilobytes for a minute's work, in tenths; only the proportions matter.
constexpr Spread intensity{{15, 28, 38, 50, 66, 88, 140, 190, 220}};

struct History {
    std::int64_t start = 0;
    std::int64_t end = 0;
};

struct FileCounts {
    std::size_t sessions = 1; ///< the last one included, which runs until now
    std::size_t subAgents = 0;
};

std::size_t naturalFiles(const Options& options) {
    constexpr std::uint64_t naturalSize = 400'000;
    constexpr std::uint64_t smallestNaturalSize = 40'000;
    // A quarter are sub-agents' and weekends are calm, which leaves about two sessions for a working day.
    const auto twoADay = static_cast<std::uint64_t>(options.days) * 2;
    return std::max(options.bytes / naturalSize, std::min(twoADay, options.bytes / smallestNaturalSize));
}

FileCounts fileCounts(const Options& options) {
    constexpr std::uint64_t smallestFile = 4096;
    const std::size_t wished = options.files > 0 ? options.files : naturalFiles(options);
    const std::size_t files = std::max<std::size_t>(1, std::min<std::size_t>(wished, options.bytes / smallestFile));
    const std::size_t subAgents = files / 4;
    return {.sessions = files - subAgents, .subAgents = subAgents};
}

unsigned dayLoad(std::int64_t dayNumber, Random& random) {
    using namespace std::chrono;
    const weekday name{sys_days{days{dayNumber}}};
    const std::uint64_t load = weekdayLoad[name.c_encoding()] * dayMood.draw(random) / 10;
    return random.chance(1, 14) ? 0U : static_cast<unsigned>(load);
}

std::vector<unsigned> dayLoads(const History& history, Random& random) {
    std::vector<unsigned> loads;
    for (std::int64_t number = history.start / day; number <= history.end / day; ++number)
        loads.push_back(dayLoad(number, random));
    return loads;
}

/// The days of `count` sessions in order, each day getting its share evenly rather than by luck.
std::vector<std::int64_t> sessionDays(const History& history, std::size_t count, Random& random) {
    const std::vector<unsigned> loads = dayLoads(history, random);
    std::uint64_t total = 0;
    for (const unsigned load : loads) total += load;
    std::vector<std::int64_t> days;
    std::size_t index = 0;
    std::uint64_t passed = loads[0];
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint64_t mark = (total * i + random.below(total)) / std::max<std::size_t>(count, 1);
        while (passed <= mark && index + 1 < loads.size()) passed += loads[++index];
        days.push_back(history.start / day + static_cast<std::int64_t>(index));
    }
    return days;
}

/// A start on that day, moved by whole days where the history's ends cut the day.
std::int64_t startOn(std::int64_t dayNumber, const History& history, Random& random) {
    std::int64_t start = dayNumber * day + static_cast<std::int64_t>(random.weighted(hourLoad)) * 60 * minute;
    start += static_cast<std::int64_t>(random.below(60 * minute));
    while (start + 10 * minute > history.end) start -= day;
    while (start < history.start) start += day;
    return start;
}

std::vector<Pause> pausesOf(Random& random) {
    std::vector<Pause> pauses(random.below(4));
    for (Pause& pause : pauses) pause = {.afterShare = random.between(50, 950), .lengthShare = random.between(30, 200)};
    std::ranges::sort(pauses, {}, &Pause::afterShare);
    return pauses;
}

std::uint64_t ageAt(std::int64_t instant, const History& history) {
    const std::int64_t age = (history.end - instant) * 1000 / (history.end - history.start);
    return static_cast<std::uint64_t>(std::clamp<std::int64_t>(age, 0, 1000));
}

/// What sessions and sub-agents share. `bytes` holds a mere proportion until all files are known.
FilePlan newFile(const History& history, std::int64_t start, std::int64_t end, Random& random) {
    const auto minutes = static_cast<std::uint64_t>((end - start) / minute);
    return {.seed = random.next(),
            .start = start,
            .end = end,
            .age = ageAt(end, history),
            .bytes = (minutes + 1) * intensity.draw(random),
            .pauses = pausesOf(random)};
}

FilePlan sessionOn(std::int64_t dayNumber, const History& history, Random& random) {
    // The running session alone is the newest.
    const std::int64_t lastEnd = history.end - 2 * minute;
    const std::int64_t start = startOn(dayNumber, history, random);
    const std::int64_t length = static_cast<std::int64_t>(sessionMinutes.draw(random)) * minute;
    const std::int64_t end = std::min(start + length, lastEnd);
    FilePlan plan = newFile(history, std::min(start, end - minute), end, random);
    plan.kind = random.chance(1, 25) ? FileKind::Quiet : FileKind::Session;
    plan.sessionId = makeUuid(random);
    return plan;
}

FilePlan runningSession(const History& history, Random& random) {
    const std::int64_t length = static_cast<std::int64_t>(random.between(45, 110)) * minute;
    FilePlan plan = newFile(history, std::max(history.start, history.end - length), history.end, random);
    plan.sessionId = makeUuid(random);
    return plan;
}

FilePlan subAgentOf(const FilePlan& parent, const History& history, Random& random) {
    const std::int64_t room = parent.end - parent.start;
    const std::int64_t start = parent.start + room * static_cast<std::int64_t>(random.below(900)) / 1000;
    const std::int64_t length = static_cast<std::int64_t>(random.between(1, 14)) * minute;
    FilePlan plan = newFile(history, start, std::min(start + length, parent.end - 1), random);
    plan.kind = FileKind::SubAgent;
    plan.bytes *= 3; // Helpers never wait for a person.
    plan.project = parent.project;
    plan.sessionId = parent.sessionId;
    plan.agentId = makeHex(random.chance(1, 2) ? 7 : 17, random);
    return plan;
}

/// Every third session takes the next project in turn, so that none is forgotten; the others follow the favourites.
void assignProjects(std::vector<FilePlan>& sessions, Random& random) {
    constexpr std::array<unsigned, projects.size()> favourites{34, 24, 14, 10, 8, 6, 4};
    for (std::size_t i = 0; i < sessions.size(); ++i)
        sessions[i].project = i % 3 == 0 ? i / 3 % projects.size() : random.weighted(favourites);
}

std::vector<FilePlan> plannedSessions(const History& history, std::size_t count, Random& random) {
    std::vector<FilePlan> sessions;
    for (const std::int64_t dayNumber : sessionDays(history, count - 1, random))
        sessions.push_back(sessionOn(dayNumber, history, random));
    // A home shown or tested should have a session that nobody answered, however small it is.
    if (sessions.size() > 4) sessions[sessions.size() / 2].kind = FileKind::Quiet;
    sessions.push_back(runningSession(history, random));
    assignProjects(sessions, random);
    return sessions;
}

void addSubAgents(std::vector<FilePlan>& plans, std::size_t count, const History& history, Random& random) {
    const std::size_t sessions = plans.size();
    while (count > 0) {
        const FilePlan parent = plans[random.below(sessions)];
        if (parent.kind != FileKind::Session) continue;
        plans.push_back(subAgentOf(parent, history, random));
        --count;
    }
}

/// Turns the proportions into bytes.
void shareOut(std::uint64_t bytes, std::vector<FilePlan>& plans) {
    constexpr std::uint64_t quietShare = 25;
    std::uint64_t total = 0;
    for (FilePlan& plan : plans) {
        if (plan.kind == FileKind::Quiet) plan.bytes = quietShare;
        total += plan.bytes;
    }
    for (FilePlan& plan : plans) {
        const std::uint64_t proportion = plan.bytes;
        plan.bytes = total == 0 ? 0 : bytes * proportion / total;
        bytes -= plan.bytes;
        total -= proportion;
    }
}

/// A limit message for every two and a half megabytes, told by sessions.
void plantLimits(std::vector<FilePlan>& plans) {
    constexpr std::uint64_t step = 2'500'000;
    std::uint64_t next = step / 8;
    std::uint64_t passed = 0;
    for (FilePlan& plan : plans) {
        passed += plan.bytes;
        if (plan.kind != FileKind::Session) continue;
        for (; next <= passed; next += step) ++plan.limitHits;
    }
}

} // namespace

std::vector<FilePlan> planWeeks(const Options& options) {
    const auto end = static_cast<std::int64_t>(options.now * 1000);
    const History history{.start = end - options.days * day, .end = end};
    const FileCounts counts = fileCounts(options);
    Random random = Random::part(options.seed, 0);
    std::vector<FilePlan> plans = plannedSessions(history, counts.sessions, random);
    addSubAgents(plans, counts.subAgents, history, random);
    std::ranges::stable_sort(plans, {}, &FilePlan::end);
    shareOut(options.bytes, plans);
    plantLimits(plans);
    return plans;
}

} // namespace SampleHome
