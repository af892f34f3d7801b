#include "Report/Report.h"

#include <algorithm>
#include <map>
#include <string>

#include "UsageModel/Saturating.h"

namespace Report {

namespace {

using UsageModel::AnchorSource;
using UsageModel::Date;
using UsageModel::GaugeReading;
using UsageModel::saturatingSum;
using UsageModel::UsageEvent;
using UsageModel::WindowKind;

using DayTallies = std::map<Date, Tally>;

// Both ends belong to a span: a turn of this very second counts, and so does one exactly the span's length ago.
// A turn after `now`, as a clock set wrong leaves it, belongs to all time alone.
bool counts(const UsageEvent& event, Span span, Date now) {
    const std::optional<double> length = seconds(span);
    return !length || (now - *length <= event.ts && event.ts <= now);
}

void add(UsageReport& report, const UsageEvent& event, double units) {
    for (const Span span : UsageModel::allCases<Span>) {
        if (!counts(event, span, report.now)) continue;
        SpanUsage& usage = report.spans[span];
        usage.byClass[event.modelClass].add(event, units);
        usage.total.add(event, units);
    }
}

std::vector<DayUsage> heaviest(const DayTallies& days) {
    std::vector<DayUsage> heaviest;
    for (const auto& [start, tally] : days) heaviest.push_back({.start = start, .tally = tally});
    std::ranges::sort(heaviest, [](const DayUsage& a, const DayUsage& b) {
        return a.tally.units != b.tally.units ? a.tally.units > b.tally.units : a.start > b.start;
    });
    if (heaviest.size() > busiestDayCount) heaviest.resize(busiestDayCount);
    return heaviest;
}

std::vector<OfficialWindow> statedWindows(const GaugeReading& gauge) {
    std::vector<OfficialWindow> windows;
    for (const WindowKind kind : UsageModel::allCases<WindowKind>) {
        const auto window = gauge.windows.find(std::string(statusLineKey(kind)));
        if (window == gauge.windows.end() || !window->second.usedPercentage) continue;
        const auto& resetsAt = window->second.resetsAt;
        windows.push_back({
            .window = kind,
            .usedPercentage = *window->second.usedPercentage,
            .resetsAt = resetsAt ? std::optional(Date{*resetsAt}) : std::nullopt,
        });
    }
    return windows;
}

std::optional<OfficialReading> officialReading(const std::optional<GaugeReading>& gauge) {
    if (!gauge) return std::nullopt;
    OfficialReading reading{
        .capturedAt = Date{gauge->capturedAt},
        .source = gauge->source == "oauth" ? AnchorSource::oauth : AnchorSource::statusLine,
        .windows = statedWindows(*gauge),
    };
    if (reading.windows.empty()) return std::nullopt;
    return reading;
}

} // namespace

std::optional<double> seconds(Span span) {
    constexpr double sessionSeconds = 18000.0;
    constexpr double weekSeconds = 604800.0;
    if (span == Span::allTime) return std::nullopt;
    return span == Span::fiveHours ? sessionSeconds : weekSeconds;
}

void Tally::add(const UsageEvent& event, double eventUnits) {
    turns += 1;
    input = saturatingSum({input, event.input});
    output = saturatingSum({output, event.output});
    cacheCreation = saturatingSum({cacheCreation, event.cacheCreation});
    cacheRead = saturatingSum({cacheRead, event.cacheRead});
    units += eventUnits;
}

std::int64_t Tally::tokens() const {
    return saturatingSum({input, output, cacheCreation, cacheRead});
}

UsageReport makeReport(const ReportInput& input) {
    UsageReport report{
        .now = input.now, .calendar = input.calendar, .logFiles = input.logFiles, .helper = input.helper};
    report.official = officialReading(input.gauge);
    for (const Span span : UsageModel::allCases<Span>) report.spans.set(span, {});

    DayTallies days;
    for (const UsageEvent& event : input.events) {
        const double units = input.weights.effective(event);
        add(report, event, units);
        days[input.calendar.startOfDay(event.ts)].add(event, units);
    }
    report.busiestDays = heaviest(days);
    return report;
}

} // namespace Report
