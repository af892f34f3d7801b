#include "Pipeline/HeavyUser.h"

#include <algorithm>
#include <cmath>

#include "Pipeline/OfficialCount.h"
#include "SampleHome/Pen.h"
#include "Support/TemporaryFolder.h"

namespace Pipeline {

namespace {

using UsageModel::Date;
using UsageModel::ModelClass;
using UsageModel::UsageEvent;
using UsageModel::WindowKind;

constexpr double minuteSeconds = 60.0;

UsageEvent drawnTurn(std::string_view model, std::uint64_t context, SampleHome::Random& random) {
    UsageEvent turn{.modelClass = UsageModel::modelClass(model)};
    turn.input = static_cast<std::int64_t>(random.between(2, 12));
    turn.output = static_cast<std::int64_t>(random.between(100, 1200));
    turn.cacheCreation = static_cast<std::int64_t>(random.between(500, 4000));
    turn.cacheRead = static_cast<std::int64_t>(context);
    return turn;
}

std::string usageText(const UsageEvent& turn) {
    return R"("usage":{"input_tokens":)" + std::to_string(turn.input) + R"(,"cache_creation_input_tokens":)" +
           std::to_string(turn.cacheCreation) + R"(,"cache_read_input_tokens":)" + std::to_string(turn.cacheRead) +
           R"(,"output_tokens":)" + std::to_string(turn.output) + "}";
}

/// As Claude Code writes it: "2pm" at a full hour, else "6:40pm".
std::string clockText(const absl::CivilSecond& civil) {
    const int hour = civil.hour() % 12 == 0 ? 12 : civil.hour() % 12;
    std::string text = std::to_string(hour);
    if (civil.minute() > 0) text += (civil.minute() < 10 ? ":0" : ":") + std::to_string(civil.minute());
    return text + (civil.hour() < 12 ? "am" : "pm");
}

bool countsAgainst(WindowKind window, ModelClass modelClass) {
    return window != WindowKind::weeklyOpus || isOpusClass(modelClass);
}

} // namespace

HeavyUser::HeavyUser(const Plan& plan) : plan_(plan) {
    for (Date minute = plan.begin; minute < plan.end; minute = minute + minuteSeconds) {
        for (Machine& machine : machines_) live(machine, minute);
    }
}

double HeavyUser::limit(WindowKind window) {
    constexpr std::array<double, UsageModel::caseCount<WindowKind>> limits{0.26, 2.5, 1.75};
    return limits[caseIndex(window)];
}

void HeavyUser::live(Machine& machine, Date minute) {
    if (minute < machine.lockedUntil || !random_.chance(eagerness(machine, minute), 100)) return;
    const Date at = minute + machine.second + static_cast<double>(random_.below(29)) + 0.5;
    openWindows(at);
    perhapsChangeModel(machine);
    if (const auto full = fullWindow(machine))
        hit(*full, machine, at);
    else
        takeTurn(machine, at);
}

/// How likely a turn is in a minute, in percent.
unsigned HeavyUser::eagerness(const Machine& machine, Date at) const {
    if (&machine == &machines_.front() && at >= plan_.asleep && at < plan_.awake) return 0;
    const int hour = calendar(at).hour(at);
    const unsigned calm = at < plan_.heavyFrom ? 4 : 1;
    switch (calendar(at).weekday(at)) {
    case 1: return 0;
    case 7: return hour >= 11 && hour < 14 ? 15 / calm : 0;
    default: break;
    }
    if ((hour >= 9 && hour < 12) || (hour >= 13 && hour < 19)) return 45 / calm;
    return hour >= 20 && hour < 23 ? 8 / calm : 0;
}

void HeavyUser::openWindows(Date at) {
    for (const WindowKind window : UsageModel::allCases<WindowKind>) {
        Window& open = windows_[caseIndex(window)];
        if (at < open.start + nominalDuration(window)) continue;
        const double grid = window == WindowKind::session5h ? minuteSeconds : nominalDuration(window);
        open = {.start = startOfSpan(at, grid)};
        if (window == WindowKind::session5h) sessionStarts_.push_back(open.start);
    }
}

std::optional<WindowKind> HeavyUser::fullWindow(const Machine& machine) const {
    for (const WindowKind window : UsageModel::allCases<WindowKind>) {
        if (!countsAgainst(window, UsageModel::modelClass(machine.model))) continue;
        if (windows_[caseIndex(window)].used >= limit(window)) return window;
    }
    return std::nullopt;
}

void HeavyUser::perhapsChangeModel(Machine& machine) {
    constexpr std::array<std::string_view, 3> models{"claude-opus-4-5", "claude-sonnet-4-5", "claude-haiku-4-5"};
    constexpr std::array<unsigned, 3> weights{50, 35, 15};
    if (random_.chance(1, 40)) machine.model = models[random_.weighted(weights)];
}

void HeavyUser::takeTurn(Machine& machine, Date at) {
    constexpr std::uint64_t fullContext = 150'000;
    const UsageEvent turn = drawnTurn(machine.model, machine.context, random_);
    machine.context += static_cast<std::uint64_t>(turn.cacheCreation);
    if (machine.context > fullContext) machine.context = 20'000;

    turns_.push_back({.at = at, .modelClass = turn.modelClass, .weight = weightOf(turn)});
    for (const WindowKind window : UsageModel::allCases<WindowKind>) {
        if (countsAgainst(window, turn.modelClass)) windows_[caseIndex(window)].used += turns_.back().weight;
    }
    const std::string id = std::to_string(turns_.size());
    addLine(machine, at,
            R"("requestId":"r)" + id + R"(","message":{"id":"m)" + id + R"(","model":")" + std::string(machine.model) +
                R"(",)" + usageText(turn) + "}");
}

void HeavyUser::hit(WindowKind window, Machine& machine, Date at) {
    constexpr std::array<std::string_view, UsageModel::caseCount<WindowKind>> openings{
        "You've hit your session limit", "You've hit your weekly limit", "Opus weekly limit reached"};
    if (window == WindowKind::weeklyOpus)
        machine.model = "claude-sonnet-4-5";
    else
        machine.lockedUntil = windows_[caseIndex(window)].start + nominalDuration(window);
    ceilings_.push_back({.at = at, .window = window});
    addLine(machine, at,
            R"("isApiErrorMessage":true,"message":{"id":"c)" + std::to_string(ceilings_.size()) +
                R"(","model":"<synthetic>",)" + usageText({}) + R"(,"content":[{"type":"text","text":")" +
                std::string(openings[caseIndex(window)]) + " · resets " + resetText(window, at) + R"("}]})");
}

/// Mornings and afternoons are sessions of their own.
void HeavyUser::addLine(const Machine& machine, Date at, const std::string& rest) {
    const absl::CivilSecond civil = calendar(at).civil(at);
    const std::string session = std::string(machine.name) + "-" + absl::FormatCivilTime(absl::CivilDay(civil)) +
                                (civil.hour() < 13 ? "-morning" : "-afternoon");
    std::string text = R"({"type":"assistant","timestamp":")";
    SampleHome::putTimestamp(text, static_cast<std::int64_t>(at.secondsSince1970 * 1000.0));
    text += R"(","sessionId":")" + session + R"(",)" + rest + "}\n";
    lines_.push_back({.at = at,
                      .log = "-home-user-" + std::string(machine.name) + "/" + session + ".jsonl",
                      .text = std::move(text)});
}

std::string HeavyUser::resetText(WindowKind window, Date at) const {
    const Date reset = windows_[caseIndex(window)].start + nominalDuration(window);
    return clockText(calendar(at).civil(reset)) + " (" + calendar(at).zoneName() + ")";
}

void HeavyUser::liveUntil(Date instant, const std::filesystem::path& logs) {
    for (; linesTold_ < lines_.size() && lines_[linesTold_].at < instant; ++linesTold_)
        TestSupport::appendFile(logs / lines_[linesTold_].log, lines_[linesTold_].text);
    toldUntil_ = instant;
}

/// Who is not at work is told of a session that would begin now.
Date HeavyUser::startAt(WindowKind window, Date instant) const {
    const double length = nominalDuration(window);
    if (window != WindowKind::session5h) return startOfSpan(instant, length);
    const auto next = std::ranges::upper_bound(sessionStarts_, instant);
    const bool isOpen = next != sessionStarts_.begin() && instant < *std::prev(next) + length;
    return isOpen ? *std::prev(next) : instant;
}

UsageModel::GaugeReading HeavyUser::reading(Date instant) const {
    UsageModel::GaugeReading reading{.capturedAt = instant.secondsSince1970, .source = "statusLine", .windows = {}};
    for (const WindowKind window : UsageModel::allCases<WindowKind>) {
        const Date start = startAt(window, instant);
        const double percent = std::round(100.0 * spent(window, start, instant) / limit(window));
        reading.windows[std::string(statusLineKey(window))] = {
            .usedPercentage = std::min(percent, 100.0), .resetsAt = (start + nominalDuration(window)).secondsSince1970};
    }
    return reading;
}

double HeavyUser::spent(WindowKind window, Date from, Date to) const {
    double sum = 0.0;
    for (auto turn = std::ranges::lower_bound(turns_, from, {}, &Turn::at);
         turn != turns_.end() && turn->at < std::min(to, toldUntil_); ++turn) {
        if (countsAgainst(window, turn->modelClass)) sum += turn->weight;
    }
    return sum;
}

std::size_t HeavyUser::ceilingsTold() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(ceilings_, [this](const Ceiling& ceiling) { return ceiling.at < toldUntil_; }));
}

} // namespace Pipeline
