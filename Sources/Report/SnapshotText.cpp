#include "Report/SnapshotText.h"

#include <algorithm>

#include "Report/AdviceLines.h"
#include "Report/ForecastLines.h"
#include "Report/ModelLines.h"
#include "Report/Options.h"
#include "Report/Text.h"
#include "Report/View.h"
#include "Report/WeekChartLines.h"
#include "Report/WindowLines.h"
#include "UsageEngine/TimeText.h"

namespace Report {

namespace {

using UsageModel::Severity;
using UsageModel::UsageSnapshot;

namespace TimeText = UsageEngine::TimeText;

// Longer lines are hard to read on.
constexpr std::size_t widest = 96;
// From here on there is room for two columns of sections.
constexpr std::size_t twoColumnsFrom = 120;
constexpr std::size_t columnGap = 4;
// In fewer, nothing would be left of the drawings; what does not fit is cut off.
constexpr std::size_t narrowest = 36;

/// Appends a section with an empty line before it; nothing where it has no lines.
void addSection(Lines& lines, const Lines& section) {
    if (section.empty()) return;
    if (!lines.empty()) lines.emplace_back();
    append(lines, section);
}

Lines headed(std::string_view heading, const Lines& section) {
    if (section.empty()) return {};
    Lines lines{Line(heading, Ink::strong)};
    append(lines, section);
    return lines;
}

Ink headlineInk(Severity severity) {
    switch (severity) {
    case Severity::green: return Ink::strongGood;
    case Severity::amber: return Ink::strongWarning;
    case Severity::red: break;
    }
    return Ink::strongCritical;
}

Lines verdictLines(const UsageSnapshot& snapshot, std::size_t width) {
    Lines lines = wrapped(Line(oneLine(snapshot.verdict.headline), headlineInk(snapshot.verdict.severity)), width);
    append(lines, wrapped(Line(oneLine(snapshot.verdict.subtext)), width));
    return lines;
}

Lines welcomeLines(const Page& page, std::size_t width) {
    const bool hasLogs = page.history == History::noTurns;
    Lines lines = wrapped(Line(hasLogs ? "Waiting for your first turn" : "Nothing to measure yet", Ink::strong), width);
    const std::string text = hasLogs ? "Claude Code is here, but hasn't billed a token yet. This report shows your "
                                       "week after its first answer."
                                     : "There are no session logs yet. Once you have used Claude Code, it leaves them "
                                       "in the folder below, and this report will show what they hold.";
    append(lines, wrapped(Line(text), width));
    if (!hasLogs) append(lines, wrapped(Line(oneLine(page.logFolder.native()), Ink::faint), width));
    return lines;
}

/// What to do where the official limits do not come in.
Lines helperLines(const Page& page, std::size_t width) {
    using State = UsageGauge::StatusLineInstaller::State;
    if (page.helper == State::installed) return {};
    const std::string what = page.helper == State::conflict
                                 ? "The helper that brings the official limits was replaced"
                                 : "The helper that brings the official limits is not installed";
    const std::string command = std::string(programName) + " helper install";
    return arranged({Line(what), Line("run ").add(command, Ink::accent)}, width);
}

Lines weekLines(const View& view) {
    const Lines chart = weekChartLines(view);
    if (chart.empty()) return {};
    std::vector<Line> heading{Line("This week", Ink::strong)};
    const UsageModel::WeekSeries& series = *view.snapshot.weekSeries;
    if (series.intensityIsMeaningful)
        heading.emplace_back("heading for " + multipleText(series.intensity) + " a typical one");
    Lines lines = arranged(heading, view.width);
    append(lines, chart);
    return lines;
}

Lines limitSections(const Page& page, const View& view) {
    Lines lines;
    addSection(lines, headed("Windows", windowLines(view)));
    addSection(lines, helperLines(page, view.width));
    addSection(lines, headed("Forecast", forecastLines(view)));
    addSection(lines, adviceLines(view));
    return lines;
}

Lines weekSections(const View& view) {
    Lines lines;
    addSection(lines, weekLines(view));
    addSection(lines, headed("Models this week", modelLines(view)));
    addSection(lines, headed("Live, last " + TimeText::duration(view.snapshot.live.lookback), liveLines(view)));
    return lines;
}

Lines sections(const Page& page, const Terminal& terminal) {
    const auto viewOf = [&](std::size_t width) {
        return View{.snapshot = page.snapshot,
                    .calendar = page.calendar,
                    .width = std::clamp(width, narrowest, widest),
                    .unicode = terminal.palette.unicode};
    };
    if (terminal.columns >= twoColumnsFrom) {
        const View view = viewOf((terminal.columns - columnGap) / 2);
        return sideBySide(limitSections(page, view), weekSections(view), view.width + columnGap);
    }
    const View view = viewOf(terminal.columns);
    Lines lines = limitSections(page, view);
    addSection(lines, weekSections(view));
    return lines;
}

std::string stampText(const Page& page) {
    const UsageModel::Date now = page.snapshot.generatedAt;
    return absl::FormatCivilTime(absl::CivilDay(page.calendar.civil(now))) + ", " +
           TimeText::shortStamp(now, page.calendar) + ", " + oneLine(page.calendar.zoneName());
}

Lines footerLines(const Page& page, std::size_t width) {
    Lines lines;
    if (page.complaint) lines = wrapped(Line(oneLine(*page.complaint), Ink::critical), width);
    append(lines, wrapped(Line(stampText(page), Ink::faint), width));
    return lines;
}

bool hasReading(const UsageSnapshot& snapshot) {
    return std::ranges::any_of(snapshot.meters, [](const auto& meter) { return meter.confidence.anchored; });
}

} // namespace

std::string snapshotText(const Page& page, const Terminal& terminal) {
    const std::size_t width = std::clamp(terminal.columns, narrowest, widest);
    const bool isReady = page.history == History::turns;
    Lines lines = isReady ? verdictLines(page.snapshot, width) : welcomeLines(page, width);
    if (isReady || hasReading(page.snapshot)) {
        addSection(lines, sections(page, terminal));
    } else {
        addSection(lines, helperLines(page, width));
    }
    addSection(lines, footerLines(page, width));
    return writtenLines(lines, terminal);
}

std::string writtenLines(const Lines& lines, const Terminal& terminal) {
    std::string text;
    for (const Line& line : lines) text.append(written(clipped(line, terminal.columns), terminal.palette)).append("\n");
    return text;
}

} // namespace Report
