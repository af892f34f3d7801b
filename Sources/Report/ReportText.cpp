#include "Report/ReportText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "Report/Numbers.h"
#include "Report/Options.h"

namespace Report {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::displayName;

using Row = std::vector<std::string>;

constexpr std::string_view indent = "  ";
constexpr std::string_view columnGap = "  ";

constexpr std::string_view bold = "1";
constexpr std::string_view faint = "2";
constexpr std::string_view red = "31";
constexpr std::string_view yellow = "33";

class Page {
public:
    explicit Page(Style style) : style_(style) {}

    void line(std::string_view text, std::string_view code = "") {
        const bool coloured = style_ == Style::coloured && !code.empty();
        if (coloured) text_.append("\x1b[").append(code).append("m");
        text_.append(text);
        if (coloured) text_.append("\x1b[0m");
        text_.append("\n");
    }
    void heading(std::string_view text) {
        line("");
        line(text, bold);
    }
    [[nodiscard]] std::string text() && { return std::move(text_); }

private:
    Style style_;
    std::string text_;
};

std::string weekdayName(int weekday) {
    constexpr std::array<const char*, 7> names{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    return names[static_cast<std::size_t>(weekday - 1)];
}

std::string dayText(const Calendar& calendar, Date date) {
    return weekdayName(calendar.weekday(date)) + " " + absl::FormatCivilTime(absl::CivilDay(calendar.civil(date)));
}

std::string clockText(const Calendar& calendar, Date date) {
    const absl::CivilSecond civil = calendar.civil(date);
    std::array<char, 16> clock{};
    std::snprintf(clock.data(), clock.size(), " %02d:%02d", civil.hour(), civil.minute());
    return dayText(calendar, date) + clock.data();
}

std::vector<std::size_t> columnWidths(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(rows.front().size());
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], columnsOf(row[i]));
    }
    return widths;
}

/// One line a row: the first column begins at the left, the others end at the right.
std::vector<std::string> aligned(const std::vector<Row>& rows) {
    const std::vector<std::size_t> widths = columnWidths(rows);
    std::vector<std::string> lines;
    for (const Row& row : rows) {
        std::string line(indent);
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string filling(widths[i] - columnsOf(row[i]), ' ');
            line.append(i == 0 ? row[i] + filling : std::string(columnGap) + filling + row[i]);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string resetText(const UsageReport& report, Date resetsAt) {
    const double left = resetsAt - report.now;
    if (left <= 0) return "reset " + durationText(-left) + " ago";
    return "resets in " + durationText(left) + " (" + clockText(report.calendar, resetsAt) + ")";
}

std::string_view alarm(double usedPercentage) {
    // The last quarter is worth a glance, the last tenth a change of plans.
    constexpr double nearlyFull = 90;
    constexpr double gettingFull = 75;
    if (usedPercentage >= nearlyFull) return red;
    return usedPercentage >= gettingFull ? yellow : "";
}

std::string ageText(double age) {
    return age < 0 ? "taken after the time of this report" : "read " + durationText(age) + " ago";
}

void addHelper(Page& page, const UsageReport& report) {
    using State = UsageGauge::StatusLineInstaller::State;
    if (report.helper == State::installed) return;
    const std::string what =
        report.helper == State::conflict ? "the helper was replaced" : "the helper is not installed";
    page.line(std::string(indent) + what + ": run `" + std::string(programName) + " helper install`", faint);
}

bool isOver(const UsageReport& report, const OfficialWindow& window) {
    return window.resetsAt && *window.resetsAt <= report.now;
}

std::string usedText(const UsageReport& report, const OfficialWindow& window) {
    const std::string used = percentText(window.usedPercentage) + " used";
    return isOver(report, window) ? "was " + used : used;
}

void addLimits(Page& page, const UsageReport& report) {
    if (!report.official) {
        page.heading("Official limits");
        page.line(std::string(indent) + "no official reading yet");
        return;
    }
    page.heading("Official limits, " + ageText(report.now - report.official->capturedAt));
    std::vector<Row> rows;
    for (const OfficialWindow& window : report.official->windows)
        rows.push_back({std::string(displayName(window.window)), usedText(report, window)});
    std::vector<std::string> lines = aligned(rows);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const OfficialWindow& window = report.official->windows[i];
        if (window.resetsAt) lines[i].append(columnGap).append(resetText(report, *window.resetsAt));
        page.line(lines[i], isOver(report, window) ? faint : alarm(std::round(window.usedPercentage)));
    }
}

void addOfficial(Page& page, const UsageReport& report) {
    addLimits(page, report);
    addHelper(page, report);
}

Row usageRow(std::string_view name, const Tally& tally) {
    return {std::string(name),     grouped(tally.turns),         compact(tally.input),
            compact(tally.output), compact(tally.cacheCreation), compact(tally.cacheRead),
            unitsText(tally.units)};
}

std::string_view heading(Span span) {
    constexpr std::array<std::string_view, 3> headings{"Last 5 hours", "Last 7 days", "All time"};
    return headings[UsageModel::caseIndex(span)];
}

void addSpan(Page& page, const UsageReport& report, Span span) {
    page.heading(heading(span));
    const SpanUsage usage = report.usage(span);
    if (usage.total.turns == 0) {
        page.line(std::string(indent) + "no turns");
        return;
    }
    std::vector<Row> rows{{"Model", "Turns", "Input", "Output", "Cache creation", "Cache read", "Units"}};
    for (const auto& [modelClass, tally] : usage.byClass) rows.push_back(usageRow(displayName(modelClass), tally));
    rows.push_back(usageRow("Total", usage.total));

    const std::vector<std::string> lines = aligned(rows);
    page.line(lines.front(), faint);
    for (std::size_t i = 1; i < lines.size(); ++i) page.line(lines[i]);
}

void addBusiestDays(Page& page, const UsageReport& report) {
    page.heading("Busiest days");
    std::vector<Row> rows{{"Day", "Turns", "Tokens", "Units"}};
    for (const DayUsage& day : report.busiestDays) {
        rows.push_back({dayText(report.calendar, day.start), grouped(day.tally.turns), compact(day.tally.tokens()),
                        unitsText(day.tally.units)});
    }
    const std::vector<std::string> lines = aligned(rows);
    page.line(lines.front(), faint);
    for (std::size_t i = 1; i < lines.size(); ++i) page.line(lines[i]);
}

void addAbsence(Page& page, const UsageReport& report, const std::filesystem::path& logFolder) {
    page.line("");
    if (report.logFiles > 0) {
        page.line("The session logs hold no turns yet. They will show here after the first");
        page.line("answer of Claude Code.");
        return;
    }
    page.line("There are no session logs yet. Once you have used Claude Code, it leaves them in");
    page.line(std::string(indent) + oneLine(logFolder.native()));
    page.line("and this report will show what they hold.");
}

} // namespace

std::string reportText(const UsageReport& report, const std::filesystem::path& logFolder, Style style) {
    Page page(style);
    page.line("Brindlewick, " + clockText(report.calendar, report.now) + " (" + oneLine(report.calendar.zoneName()) +
                  ")",
              bold);
    addOfficial(page, report);
    if (report.usage(Span::allTime).total.turns == 0) {
        addAbsence(page, report, logFolder);
        return std::move(page).text();
    }
    for (const Span span : UsageModel::allCases<Span>) addSpan(page, report, span);
    addBusiestDays(page, report);
    return std::move(page).text();
}

} // namespace Report
