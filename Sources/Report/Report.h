#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "UsageGauge/StatusLineInstaller.h"
#include "UsageModel/Anchor.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/CategoryWeights.h"
#include "UsageModel/EnumMap.h"
#include "UsageModel/Fields.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/ModelClass.h"
#include "UsageModel/UsageEvent.h"
#include "UsageModel/WindowKind.h"

/// What a terminal is told about the recorded use.
namespace Report {

/// The stretches of time, each ending at the report's `now`, that use is summed over.
enum class Span { fiveHours, sevenDays, allTime };

} // namespace Report

template <>
struct UsageModel::EnumNames<Report::Span> {
    static constexpr std::array<std::string_view, 3> names{"fiveHours", "sevenDays", "allTime"};
};

namespace Report {

/// A span's length in seconds; absent for all time.
[[nodiscard]] std::optional<double> seconds(Span span);

/// A sum of turns: their tokens by category, and what they weigh in log units. Counts beyond 64 bits are held at the
/// nearest that fits.
struct Tally {
    std::int64_t turns = 0;
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheCreation = 0;
    std::int64_t cacheRead = 0;
    double units = 0.0;

    void add(const UsageModel::UsageEvent& event, double eventUnits);
    /// The tokens of the four categories together.
    [[nodiscard]] std::int64_t tokens() const;

    friend bool operator==(const Tally&, const Tally&) = default;
};

template <UsageModel::FieldsOf<Tally> Self>
void visitFields(Self& self, auto&& visit) {
    visit("turns", self.turns);
    visit("input", self.input);
    visit("output", self.output);
    visit("cacheCreation", self.cacheCreation);
    visit("cacheRead", self.cacheRead);
    visit("units", self.units);
}

struct SpanUsage {
    /// Only the classes that occur.
    UsageModel::EnumMap<UsageModel::ModelClass, Tally> byClass;
    Tally total;
};

struct DayUsage {
    /// The first instant of the local day.
    UsageModel::Date start;
    Tally tally;
};

struct OfficialWindow {
    UsageModel::WindowKind window = UsageModel::WindowKind::session5h;
    /// Not clamped.
    double usedPercentage = 0.0;
    std::optional<UsageModel::Date> resetsAt;
};

/// The last word of the service on its limits.
struct OfficialReading {
    UsageModel::Date capturedAt;
    UsageModel::AnchorSource source = UsageModel::AnchorSource::statusLine;
    /// In the order of the windows; never empty.
    std::vector<OfficialWindow> windows;
};

struct UsageReport {
    UsageModel::Date now;
    UsageModel::Calendar calendar;
    /// How many log files there are.
    std::int64_t logFiles = 0;
    UsageGauge::StatusLineInstaller::State helper = UsageGauge::StatusLineInstaller::State::notInstalled;
    /// Absent where there is no reading, or one that states no window's percentage.
    std::optional<OfficialReading> official;
    /// Every span.
    UsageModel::EnumMap<Span, SpanUsage> spans;
    /// The days with turns that weigh most, heaviest first; of equals the later one first.
    std::vector<DayUsage> busiestDays;

    /// The use over a span.
    [[nodiscard]] SpanUsage usage(Span span) const { return spans.valueOr(span, {}); }
};

struct ReportInput {
    /// In any order.
    std::span<const UsageModel::UsageEvent> events;
    std::optional<UsageModel::GaugeReading> gauge;
    UsageModel::Date now;
    UsageModel::Calendar calendar;
    UsageModel::CategoryWeights weights = UsageModel::CategoryWeights::priors(UsageModel::liveWeightScale);
    std::int64_t logFiles = 0;
    UsageGauge::StatusLineInstaller::State helper = UsageGauge::StatusLineInstaller::State::notInstalled;
};

inline constexpr std::size_t busiestDayCount = 5;

[[nodiscard]] UsageReport makeReport(const ReportInput& input);

} // namespace Report
