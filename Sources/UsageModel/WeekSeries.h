#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "UsageModel/Date.h"
#include "UsageModel/EnumMap.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/Fields.h"
#include "UsageModel/ModelClass.h"
#include "UsageModel/WhatIfSpace.h"

namespace UsageModel {

/// On what a session's fill rests: its own ceiling, the gauge, what a full cap usually costs, or nothing.
enum class SessionCapBasis { ownCeiling, liveGauge, learnedScale, uncalibrated };

template <>
struct EnumNames<SessionCapBasis> {
    static constexpr std::array<std::string_view, 4> names{"ownCeiling", "liveGauge", "learnedScale", "uncalibrated"};
};

/// How full a session got, as it may be quoted to a user.
struct SessionCapReadout {
    enum class Case { measured, estimated, atOrOverCap, unknown };

    Case kind = Case::unknown;
    /// The share of a full cap where `kind` is `measured` or `estimated`; else 0 and without a meaning.
    double value = 0.0;

    friend bool operator==(const SessionCapReadout&, const SessionCapReadout&) = default;
};

template <>
struct EnumNames<SessionCapReadout::Case> {
    static constexpr std::array<std::string_view, 4> names{"measured", "estimated", "atOrOverCap", "unknown"};
};

/// A session as the week chart shows it.
struct SessionBar {
    Date start;
    Date end;
    /// How full the session got, 1 being a full cap.
    double fillFraction = 0.0;
    /// What it cost of the week, in the scale of the `WeekSeries`.
    double weeklyCost = 0.0;
    EnumMap<ModelClass, double> byModelClass;
    bool isCurrent = false;
    SessionCapBasis capBasis = SessionCapBasis::uncalibrated;

    /// Seconds from start to end.
    [[nodiscard]] double duration() const { return end - start; }
    [[nodiscard]] SessionCapReadout capReadout() const;

    friend bool operator==(const SessionBar&, const SessionBar&) = default;
};

/// A point of a curve over the week; `used` in the scale of its `WeekSeries`.
struct SeriesPoint {
    Date t;
    double used = 0.0;

    friend bool operator==(const SeriesPoint&, const SeriesPoint&) = default;
};

/// The unit of a `WeekSeries`: 1 is the weekly limit, or, where no limit is known, a typical week.
enum class SeriesScale { capFraction, typicalWeeks };

template <>
struct EnumNames<SeriesScale> {
    static constexpr std::array<std::string_view, 2> names{"capFraction", "typicalWeeks"};
};

/// What a typical week is.
struct WeeklyNorm {
    /// How it was arrived at.
    enum class Basis { median, mean, single, currentPace, none };

    /// The total of a typical week, in log units.
    double rawTypicalTotal = 0.0;
    /// The totals of the past weeks it was learnt from.
    std::vector<double> samples;
    Basis basis = Basis::none;
    /// The upper and lower factors of the forecast cone.
    double coneHigh = 1.1;
    double coneLow = 0.74;

    [[nodiscard]] static WeeklyNorm empty() { return {}; }

    [[nodiscard]] std::size_t sampleCount() const { return samples.size(); }
    [[nodiscard]] double scaled(double factor) const { return rawTypicalTotal * factor; }
    /// One week is too little to tell a user that they under-use.
    [[nodiscard]] bool supportsUnderUseClaims() const;
    [[nodiscard]] bool hasTypicalCurve() const;

    friend bool operator==(const WeeklyNorm&, const WeeklyNorm&) = default;
};

template <>
struct EnumNames<WeeklyNorm::Basis> {
    static constexpr std::array<std::string_view, 5> names{"median", "mean", "single", "currentPace", "none"};
};

/// What the curve of the typical week is called, as "a typical week for you"; empty for `none`.
[[nodiscard]] std::string_view curveLabel(WeeklyNorm::Basis basis);

/// The whole week chart. Levels are in `scale`.
struct WeekSeries {
    Date windowStart;
    Date windowEnd;
    /// The present on the chart.
    Date now;
    double usedNow = 0.0;
    /// The line so far.
    std::vector<SeriesPoint> actual;
    /// The typical week.
    std::vector<SeriesPoint> baseline;
    /// Where the week ends at the likely pace, and at the fast one.
    SeriesPoint coneLikelyEnd;
    SeriesPoint coneFastEnd;
    /// The likely line crosses the limit.
    bool breaches = false;
    SeriesScale scale = SeriesScale::capFraction;
    /// The window's edges are inferred, not official.
    bool boundaryEstimated = false;
    std::optional<double> limitLevel;
    std::vector<SeriesPoint> forecastLikely;
    std::vector<SeriesPoint> forecastHigh;
    std::vector<SeriesPoint> forecastLow;
    /// When the likely forecast reaches the limit.
    std::optional<Date> crossing;
    WeeklyNorm norm;
    /// This week's pace against the typical one, and whether it may be quoted.
    double intensity = 0.0;
    bool intensityIsMeaningful = false;
    std::vector<SessionBar> sessions;
    /// Shares of the burn that are Opus-class, and output tokens.
    double opusShare = 0.0;
    double outputShare = 0.0;
    std::optional<WhatIfSpace> whatIf;

    /// The place of a date on the chart, 0 to 1; 0 where the window has no length.
    [[nodiscard]] double x(Date date) const;
    /// The likely forecast if the rest of the week burned at `factor` times.
    [[nodiscard]] std::vector<SeriesPoint> ghost(double factor) const;
    /// Where the week then ends.
    [[nodiscard]] double ghostLanding(double factor) const;
    /// When the ghost reaches the limit, interpolated along its segments. Absent without a limit, and where it never
    /// gets there.
    [[nodiscard]] std::optional<Date> ghostCrossing(double factor) const;

    friend bool operator==(const WeekSeries&, const WeekSeries&) = default;
};

template <FieldsOf<SessionBar> Self>
void visitFields(Self& self, auto&& visit) {
    visit("start", self.start);
    visit("end", self.end);
    visit("fillFraction", self.fillFraction);
    visit("weeklyCost", self.weeklyCost);
    visit("byModelClass", self.byModelClass);
    visit("isCurrent", self.isCurrent);
    visit("capBasis", self.capBasis);
}

template <FieldsOf<SeriesPoint> Self>
void visitFields(Self& self, auto&& visit) {
    visit("t", self.t);
    visit("used", self.used);
}

template <FieldsOf<WeeklyNorm> Self>
void visitFields(Self& self, auto&& visit) {
    visit("rawTypicalTotal", self.rawTypicalTotal);
    visit("samples", self.samples);
    visit("basis", self.basis);
    visit("coneHigh", self.coneHigh);
    visit("coneLow", self.coneLow);
}

template <FieldsOf<WeekSeries> Self>
void visitFields(Self& self, auto&& visit) {
    visit("windowStart", self.windowStart);
    visit("windowEnd", self.windowEnd);
    visit("now", self.now);
    visit("usedNow", self.usedNow);
    visit("actual", self.actual);
    visit("baseline", self.baseline);
    visit("coneLikelyEnd", self.coneLikelyEnd);
    visit("coneFastEnd", self.coneFastEnd);
    visit("breaches", self.breaches);
    visit("scale", self.scale);
    visit("boundaryEstimated", self.boundaryEstimated);
    visit("limitLevel", self.limitLevel);
    visit("forecastLikely", self.forecastLikely);
    visit("forecastHigh", self.forecastHigh);
    visit("forecastLow", self.forecastLow);
    visit("crossing", self.crossing);
    visit("norm", self.norm);
    visit("intensity", self.intensity);
    visit("intensityIsMeaningful", self.intensityIsMeaningful);
    visit("sessions", self.sessions);
    visit("opusShare", self.opusShare);
    visit("outputShare", self.outputShare);
    visit("whatIf", self.whatIf);
}

} // namespace UsageModel
