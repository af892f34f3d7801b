#include "Report/TrustText.h"

#include <algorithm>
#include <cmath>

#include "Report/SnapshotText.h"
#include "Report/Text.h"

namespace Report {

namespace {

// What the program itself shows.
constexpr Method shown = Method::bottomUp;
constexpr std::size_t readable = 76;
// Fewer weeks than a month say little of the next one.
constexpr std::size_t fewWeeks = 4;

std::string_view nameOf(Method method) {
    constexpr std::array<std::string_view, 5> names{"Bottom-up", "Composite", "Shape", "Straight line", "Last week"};
    return names[UsageModel::caseIndex(method)];
}

std::string errorText(double error) {
    constexpr double most = 9.99;
    return error > most ? ">999%" : percentText(error);
}

std::string signedText(double error) {
    const std::string text = errorText(error);
    const bool hasSign = text.starts_with('-') || text.starts_with('>') || text == "0%";
    return hasSign ? text : "+" + text;
}

/// One row of the table, the name at the left.
struct Row {
    std::string_view name;
    std::string median;
    std::string p90;
    std::string signedError;
    std::string over;
};

Line rowLine(const Row& row, std::size_t gap, Ink ink) {
    return Line(padded(row.name, 13), ink)
        .add(rightAligned(row.median, gap + 6), ink)
        .add(rightAligned(row.p90, gap + 5), ink)
        .add(rightAligned(row.signedError, gap + 6), ink)
        .add(rightAligned(row.over, gap + 4), ink);
}

Lines table(const Trust& trust, std::size_t width) {
    constexpr std::size_t narrowBelow = 50;
    const std::size_t gap = width < narrowBelow ? 1 : 3;
    Lines lines{rowLine({"", "median", "p90", "signed", "over"}, gap, Ink::faint)};
    for (const auto& [method, score] : trust.scores) {
        const Row row{nameOf(method), errorText(score.medianAbsoluteError), errorText(score.p90AbsoluteError),
                      signedText(score.medianSignedError), percentText(score.shareOverPredicted)};
        lines.push_back(rowLine(row, gap, method == shown ? Ink::strong : Ink::plain));
    }
    return lines;
}

std::string counted(std::size_t count, const std::string& noun) {
    return grouped(static_cast<std::int64_t>(count)) + " " + noun + (count == 1 ? "" : "s");
}

std::string answer(const Trust& trust) {
    const Score score = trust.scores.valueOr(shown, {});
    return "Half the time the forecast that you see (bottom-up) missed the week's total by less than " +
           errorText(score.medianAbsoluteError) + ", one time in ten by more than " +
           errorText(score.p90AbsoluteError) + ".";
}

/// Against the better of the methods that take no skill.
std::string comparison(const Trust& trust) {
    const double own = trust.scores.valueOr(shown, {}).medianAbsoluteError;
    const double line = trust.scores.valueOr(Method::straightLine, {}).medianAbsoluteError;
    const double last = trust.scores.valueOr(Method::lastWeek, {}).medianAbsoluteError;
    const std::string simple = line <= last ? "a straight line" : "last week's total";
    const double best = std::min(line, last);
    if (own < best) return "That is better than " + simple + " (" + errorText(best) + ").";
    return "That is no better than " + simple + " (" + errorText(best) + ").";
}

std::string basis(const Trust& trust, const UsageModel::Calendar& calendar) {
    const auto day = [&](UsageModel::Date date) { return absl::FormatCivilTime(absl::CivilDay(calendar.civil(date))); };
    std::string text = "Replayed: " + counted(trust.weeks.size(), "completed week") + ", from " +
                       day(trust.weeks.front().start) + " to " + day(trust.weeks.back().end) + ", at " +
                       std::to_string(Trust::instantsPerWeek) + " instants each.";
    const auto unused = static_cast<std::size_t>(trust.unusedWeeks);
    if (unused > 0) text += " Left out: " + counted(unused, "week") + " without any use.";
    if (trust.weeks.size() < fewWeeks) text += " That is little; take the figures as a first hint.";
    return text;
}

constexpr std::string_view explanation =
    "An error is the part of the week's real total by which a method missed it. Half of the errors lie below the "
    "median, nine of ten below p90. Signed is the middle error with its sign, above 0 where a method says too much; "
    "over is how often it did. Straight line and last week take no skill: what was used so far, carried on, and the "
    "total of the week before.";

Lines nothingReplayed(const Trust& trust, std::size_t width) {
    const std::string_view reason =
        trust.unusedWeeks > 0
            ? "There is too little history: nothing was used in the weeks that are over."
            : "There is too little history: a week can be replayed once it is over, and only if there is a whole week "
              "of history before it to learn from.";
    return wrapped(Line(reason), width);
}

} // namespace

std::string trustText(const Trust& trust, const UsageModel::Calendar& calendar, const Terminal& terminal) {
    const std::size_t width = std::clamp<std::size_t>(terminal.columns, 1, readable);
    Lines lines = wrapped(Line("How far may I trust the forecast?", Ink::strong), width);
    if (trust.weeks.empty()) {
        append(lines, nothingReplayed(trust, width));
        return writtenLines(lines, terminal);
    }
    append(lines, wrapped(Line(answer(trust) + " " + comparison(trust)), width));
    lines.emplace_back();
    append(lines, table(trust, width));
    lines.emplace_back();
    append(lines, wrapped(Line(basis(trust, calendar)), width));
    append(lines, wrapped(Line(explanation, Ink::faint), width));
    return writtenLines(lines, terminal);
}

} // namespace Report
