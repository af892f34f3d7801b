#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "UsageModel/Date.h"
#include "UsageModel/EnumMap.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/Fields.h"
#include "UsageModel/IngestProgress.h"
#include "UsageModel/LiveModel.h"
#include "UsageModel/ModelClass.h"
#include "UsageModel/WeekSeries.h"
#include "UsageModel/WindowKind.h"

namespace UsageModel {

/// How bad it is; green is the least.
enum class Severity { green, amber, red };

template <>
struct EnumNames<Severity> {
    static constexpr std::array<std::string_view, 3> names{"green", "amber", "red"};
};

/// What hitting the limit would do.
enum class Consequence { fine, sessionPause, downgradeToSonnet, lockout };

template <>
struct EnumNames<Consequence> {
    static constexpr std::array<std::string_view, 4> names{"fine", "sessionPause", "downgradeToSonnet", "lockout"};
};

/// How far to trust a used fraction.
struct Confidence {
    /// It rests on an official reading.
    bool anchored = false;
    /// The age of that reading.
    std::optional<double> secondsSinceAnchor;
    /// The error to expect, as a fraction of the limit.
    double estimatedError = 0.0;

    [[nodiscard]] static constexpr Confidence unknown() { return {.estimatedError = 0.5}; }

    friend bool operator==(const Confidence&, const Confidence&) = default;
};

/// One limit window now. Fractions are shares of the limit and may exceed 1.
struct WindowState {
    WindowKind kind = WindowKind::session5h;
    double used = 0.0;
    Date windowStart;
    std::optional<Date> resetsAt;
    /// How much of the window's time has passed, 0 to 1.
    double elapsedFraction = 0.0;
    /// Where a typical user would stand by now.
    double baselineFraction = 0.0;
    /// The user's ratio to that; very large while the typical user stands near 0.
    double paceVsBaseline = 0.0;
    Confidence confidence;

    friend bool operator==(const WindowState&, const WindowState&) = default;
};

/// Where a window is heading.
struct Projection {
    WindowKind window = WindowKind::weeklyAll;
    /// When the limit is reached at the fast pace.
    std::optional<Date> earliestEmpty;
    /// When it is reached at the likely pace.
    std::optional<Date> likelyEmpty;
    /// The fraction expected at the reset.
    double endFraction = 0.0;
    bool willBreachBeforeReset = false;

    friend bool operator==(const Projection&, const Projection&) = default;
};

/// The headline of the moment.
struct Verdict {
    std::string headline;
    Consequence consequence = Consequence::fine;
    Severity severity = Severity::green;
    std::string subtext;

    friend bool operator==(const Verdict&, const Verdict&) = default;
};

/// The one piece of advice.
struct Recommendation {
    enum class Kind { easeOff, spendMore };

    Kind kind = Kind::easeOff;
    std::string title;
    std::string detail;
    std::string impact;
    /// A slash command that the user can copy.
    std::optional<std::string> command;

    friend bool operator==(const Recommendation&, const Recommendation&) = default;
};

template <>
struct EnumNames<Recommendation::Kind> {
    static constexpr std::array<std::string_view, 2> names{"easeOff", "spendMore"};
};

/// Burn by class, in log units.
struct ModelBreakdown {
    EnumMap<ModelClass, double> byClass;

    [[nodiscard]] double total() const;
    /// The class's share of the total; 0 where the total is not above 0 or the class is absent.
    [[nodiscard]] double fraction(ModelClass modelClass) const;

    friend bool operator==(const ModelBreakdown&, const ModelBreakdown&) = default;
};

/// One cell of the daily heat map.
struct DayCell {
    Date day;
    /// Log units that day.
    double weighted = 0.0;
    /// The heat level, 0 (nothing) to 4.
    std::int64_t level = 0;

    friend bool operator==(const DayCell&, const DayCell&) = default;
};

/// One five-hour block.
struct SessionBlock {
    Date start;
    Date end;
    /// The fraction of the session limit used in it.
    double usedFraction = 0.0;
    EnumMap<ModelClass, double> byModelClass;
    bool isCurrent = false;

    /// The class with the largest burn; absent when there is none. Of equals, the first in the enumeration's order.
    [[nodiscard]] std::optional<ModelClass> dominantClass() const;

    friend bool operator==(const SessionBlock&, const SessionBlock&) = default;
};

/// Everything that one refresh produces. Immutable by convention: all that the user sees is drawn from it.
struct UsageSnapshot {
    /// The `now` of the refresh.
    Date generatedAt;
    /// The windows that are shown, in the order of `WindowKind`.
    std::vector<WindowState> meters;
    /// The window that governs the verdict.
    WindowKind binding = WindowKind::weeklyAll;
    Verdict verdict;
    Projection bindingProjection;
    /// One for each window in `meters`.
    std::vector<Projection> projections;
    std::vector<SessionBlock> weekSessions;
    /// Absent when there is not enough to draw.
    std::optional<WeekSeries> weekSeries;
    std::optional<double> sessionCapInLogUnits;
    ModelBreakdown models;
    std::vector<DayCell> calendar;
    std::optional<Recommendation> recommendation;
    LiveModel live;
    IngestProgress ingest;

    /// The placeholder until the first refresh.
    [[nodiscard]] static UsageSnapshot warmingUp(Date now);

    /// The meter of the binding window; null when no meter is of that kind. Points into this snapshot.
    [[nodiscard]] const WindowState* bindingMeter() const;

    friend bool operator==(const UsageSnapshot&, const UsageSnapshot&) = default;
};

template <FieldsOf<Confidence> Self>
void visitFields(Self& self, auto&& visit) {
    visit("anchored", self.anchored);
    visit("secondsSinceAnchor", self.secondsSinceAnchor);
    visit("estimatedError", self.estimatedError);
}

template <FieldsOf<WindowState> Self>
void visitFields(Self& self, auto&& visit) {
    visit("kind", self.kind);
    visit("used", self.used);
    visit("windowStart", self.windowStart);
    visit("resetsAt", self.resetsAt);
    visit("elapsedFraction", self.elapsedFraction);
    visit("baselineFraction", self.baselineFraction);
    visit("paceVsBaseline", self.paceVsBaseline);
    visit("confidence", self.confidence);
}

template <FieldsOf<Projection> Self>
void visitFields(Self& self, auto&& visit) {
    visit("window", self.window);
    visit("earliestEmpty", self.earliestEmpty);
    visit("likelyEmpty", self.likelyEmpty);
    visit("endFraction", self.endFraction);
    visit("willBreachBeforeReset", self.willBreachBeforeReset);
}

template <FieldsOf<Verdict> Self>
void visitFields(Self& self, auto&& visit) {
    visit("headline", self.headline);
    visit("consequence", self.consequence);
    visit("severity", self.severity);
    visit("subtext", self.subtext);
}

template <FieldsOf<Recommendation> Self>
void visitFields(Self& self, auto&& visit) {
    visit("kind", self.kind);
    visit("title", self.title);
    visit("detail", self.detail);
    visit("impact", self.impact);
    visit("command", self.command);
}

template <FieldsOf<ModelBreakdown> Self>
void visitFields(Self& self, auto&& visit) {
    visit("byClass", self.byClass);
}

template <FieldsOf<DayCell> Self>
void visitFields(Self& self, auto&& visit) {
    visit("day", self.day);
    visit("weighted", self.weighted);
    visit("level", self.level);
}

template <FieldsOf<SessionBlock> Self>
void visitFields(Self& self, auto&& visit) {
    visit("start", self.start);
    visit("end", self.end);
    visit("usedFraction", self.usedFraction);
    visit("byModelClass", self.byModelClass);
    visit("isCurrent", self.isCurrent);
}

template <FieldsOf<UsageSnapshot> Self>
void visitFields(Self& self, auto&& visit) {
    visit("generatedAt", self.generatedAt);
    visit("meters", self.meters);
    visit("binding", self.binding);
    visit("verdict", self.verdict);
    visit("bindingProjection", self.bindingProjection);
    visit("projections", self.projections);
    visit("weekSessions", self.weekSessions);
    visit("weekSeries", self.weekSeries);
    visit("sessionCapInLogUnits", self.sessionCapInLogUnits);
    visit("models", self.models);
    visit("calendar", self.calendar);
    visit("recommendation", self.recommendation);
    visit("live", self.live);
    visit("ingest", self.ingest);
}

} // namespace UsageModel
