#include "HarrowlaneApp/Copy/SessionDetail.h"

#include <algorithm>

#include "HarrowlaneApp/Copy/Figures.h"
#include "HarrowlaneApp/Copy/Words.h"
#include "UsageEngine/TimeText.h"

namespace HarrowlaneApp::SessionDetail {

namespace {

using UsageModel::Calendar;
using UsageModel::SeriesScale;
using UsageModel::SessionBar;
using UsageModel::SessionCapBasis;
using UsageModel::WeekSeries;
namespace TimeText = UsageEngine::TimeText;

constexpr std::string_view estimateNote = "estimated from how much a full cap usually costs";
constexpr std::string_view unknownNote = "no gauge — session cap unknown";

std::string mixLine(const SessionBar& bar) {
    std::vector<std::string> parts;
    for (const BucketShare& share : mixBreakdown(bar)) parts.push_back(mixText(share));
    return Words::joined(parts, ", ");
}

} // namespace

std::string times(const SessionBar& bar, const Calendar& calendar) {
    return TimeText::shortStamp(bar.start, calendar) + " – " + TimeText::clock(bar.end, calendar);
}

std::string weekCost(const SessionBar& bar, const WeekSeries& series) {
    if (series.scale == SeriesScale::typicalWeeks) return Figures::multiple(bar.weeklyCost) + " a typical week";
    return Figures::percent(bar.weeklyCost) + " of the week";
}

std::optional<std::string> capText(const SessionBar& bar) {
    using Case = UsageModel::SessionCapReadout::Case;
    const UsageModel::SessionCapReadout readout = bar.capReadout();
    switch (readout.kind) {
    case Case::measured: return Figures::percent(readout.value) + " of the 5h cap";
    case Case::estimated: return "≈" + Figures::percent(readout.value) + " of the 5h cap";
    case Case::atOrOverCap: return "over cap on this estimate";
    case Case::unknown: break;
    }
    return std::nullopt;
}

std::optional<std::string_view> capNote(const SessionBar& bar) {
    if (bar.capBasis == SessionCapBasis::learnedScale) return estimateNote;
    if (bar.capBasis == SessionCapBasis::uncalibrated) return unknownNote;
    return std::nullopt;
}

std::string plainText(const SessionBar& bar, const WeekSeries& series, const Calendar& calendar) {
    std::vector<std::string> parts{times(bar, calendar), weekCost(bar, series)};
    if (bar.isCurrent) parts.front() += runningMark;
    if (auto cap = capText(bar)) parts.push_back(*std::move(cap));
    if (std::string mix = mixLine(bar); !mix.empty()) parts.push_back(std::move(mix));
    if (const auto note = capNote(bar)) parts.emplace_back(*note);
    return Words::joined(parts, "  ·  ");
}

std::vector<LogRow> log(const WeekSeries& series, const Calendar& calendar) {
    std::vector<LogRow> rows;
    double total = 0.0;
    for (const SessionBar& bar : series.sessions) {
        const double before = total;
        total += bar.weeklyCost;
        rows.push_back({
            .times = times(bar, calendar),
            .isRunning = bar.isCurrent,
            .mix = mixBreakdown(bar),
            .cost = weekCost(bar, series),
            .capText = capText(bar),
            .totalBefore = before,
            .total = total,
            .totalText = series.scale == SeriesScale::typicalWeeks ? Figures::multiple(total) : Figures::percent(total),
            .plainText = plainText(bar, series, calendar),
        });
    }
    std::ranges::reverse(rows);
    return rows;
}

std::optional<std::string> logNote(std::span<const SessionBar> sessions) {
    const auto has = [&](SessionCapBasis basis) {
        return std::ranges::find(sessions, basis, &SessionBar::capBasis) != sessions.end();
    };
    if (has(SessionCapBasis::learnedScale)) return "≈ " + std::string(estimateNote);
    if (has(SessionCapBasis::uncalibrated)) return std::string(unknownNote);
    return std::nullopt;
}

} // namespace HarrowlaneApp::SessionDetail
