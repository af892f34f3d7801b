#include "HarrowlaneApp/Copy/NowTexts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "HarrowlaneApp/Copy/Words.h"
#include "UsageEngine/TimeText.h"

namespace HarrowlaneApp::NowTexts {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;
using UsageModel::WindowState;
namespace TimeText = UsageEngine::TimeText;

constexpr std::string_view absent = "—";

std::int64_t wholeSeconds(double seconds) {
    constexpr double longest = 9e15; // exact in a double, and longer than anything told
    return static_cast<std::int64_t>(std::clamp(std::isnan(seconds) ? 0.0 : seconds, 0.0, longest));
}

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace

std::string clockString(const Reset& reset, const Calendar& calendar) {
    if (!reset.at) return std::string(absent);
    return reset.isWeekly ? TimeText::hourStamp(*reset.at, calendar) : TimeText::clock(*reset.at, calendar);
}

std::string timeLeft(std::optional<Date> resetsAt, Date now) {
    constexpr std::int64_t day = 86400;
    constexpr std::int64_t hour = 3600;
    constexpr std::int64_t minute = 60;
    if (!resetsAt) return std::string(absent);
    const std::int64_t s = wholeSeconds(*resetsAt - now);
    if (s >= day) return std::to_string(s / day) + "d " + std::to_string(s % day / hour) + "h";
    if (s >= hour) return std::to_string(s / hour) + "h " + twoDigits(s % hour / minute) + "m";
    return std::to_string(s / minute) + "m";
}

Body body(const State& state) {
    if (state.isShowingSample || state.readiness == Readiness::ready) return Body::cards;
    return state.readiness == Readiness::warmingUp ? Body::warmingUp : Body::firstRun;
}

HeaderChip headerChip(const State& state, const UsageSnapshot& snapshot) {
    if (state.isShowingSample) return HeaderChip::sample;
    const WindowState* binding = snapshot.bindingMeter();
    if (binding == nullptr || binding->confidence.anchored) return HeaderChip::none;
    return state.helper == HelperState::installed ? HeaderChip::estimated : HeaderChip::connectGauge;
}

std::string_view text(HeaderChip chip) {
    switch (chip) {
    case HeaderChip::sample: return sampleMark;
    case HeaderChip::estimated: return "Estimated";
    case HeaderChip::connectGauge: return "Connect gauge";
    case HeaderChip::none: break;
    }
    return "";
}

std::vector<Card> cards(const UsageSnapshot& snapshot) {
    std::vector<Card> cards;
    if (meter(snapshot, WindowKind::session5h) != nullptr) cards.push_back(Card::session);
    if (snapshot.weekSeries)
        cards.push_back(Card::weekChart);
    else if (meter(snapshot, WindowKind::weeklyAll) != nullptr)
        cards.push_back(Card::weekWindow);
    if (snapshot.recommendation) cards.push_back(Card::recommendation);
    return cards;
}

const WindowState* meter(const UsageSnapshot& snapshot, WindowKind kind) {
    const auto found = std::ranges::find(snapshot.meters, kind, &WindowState::kind);
    return found == snapshot.meters.end() ? nullptr : &*found;
}

WindowCard windowCard(const WindowCardQuestion& question, const Calendar& calendar) {
    const WindowState& meter = question.meter;
    const Pace::Shares shares{.tokensUsed = meter.used, .timeUsed = meter.elapsedFraction};
    return {
        .title = question.isWeekly ? "This week" : "Current session",
        .shares = shares,
        .status = Pace::status(shares),
        .clock = clockString({.at = meter.resetsAt, .isWeekly = question.isWeekly}, calendar),
        .timeLeft = timeLeft(meter.resetsAt, question.now),
    };
}

std::string accessibleWeek(const WeekCopy::Compact& week) {
    std::vector<std::string> figures;
    for (const auto& stat : week.stats) figures.push_back(stat.value + " " + stat.label);
    const std::vector<std::string> sentences{std::string(weekCardTitle), week.badge, week.headline,
                                             Words::joined(figures, ", "), week.resetLine};
    return Words::joined(sentences, ". ");
}

AdviceIcon adviceIcon(UsageModel::Recommendation::Kind kind) {
    return kind == UsageModel::Recommendation::Kind::spendMore ? AdviceIcon::arrowUp : AdviceIcon::lightbulb;
}

std::string copyName(std::string_view command) {
    return "Copy " + std::string(command);
}

FirstRunCard firstRunCard(Readiness readiness) {
    if (readiness == Readiness::noLogsFound) {
        return {.title = "Nothing to measure yet",
                .text = "Brindlewick reads the logs Claude Code already writes to ~/.claude/projects. There aren't any "
                        "on this Mac yet — start a session and the meter fills in seconds after your first turn."};
    }
    return {.title = "Waiting for your first turn",
            .text = "Claude Code is here, but hasn't billed a token yet. Send it something and Brindlewick starts "
                    "drawing your week."};
}

Footer footer(const FooterQuestion& question, const Calendar& calendar) {
    if (question.lastError) return {.text = *question.lastError, .isError = true};
    return {.text = "updated " + TimeText::clock(question.generatedAt, calendar)};
}

} // namespace HarrowlaneApp::NowTexts
