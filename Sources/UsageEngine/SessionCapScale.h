#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Anchor.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/UsageSnapshot.h"

namespace UsageEngine {

/// Points of truth about sessions, for one look after another.
class SessionAnchors {
public:
    /// Those of the anchors that speak of a session.
    explicit SessionAnchors(std::span<const UsageModel::Anchor> anchors);
    /// Of them those that tell of a ceiling.
    [[nodiscard]] SessionAnchors ceilings() const;

    /// The latest after the block's start and up to its end, the first of equals; null where there is none. Points
    /// into this list.
    [[nodiscard]] const UsageModel::Anchor* latestIn(const UsageModel::SessionBlock& block) const;
    [[nodiscard]] bool empty() const { return byTime_.empty(); }

private:
    std::vector<UsageModel::Anchor> byTime_;
};

/// How many log units one full five-hour session is worth: the bridge from what the logs say to the official percent.
struct SessionCapScale {
    /// What the value rests on.
    struct Evidence {
        /// Sessions that hit their ceiling, the gauge as it stands, the value learnt before, or nothing.
        enum class Case { ceilings, liveGauge, held, none };

        Case kind = Case::none;
        /// How many ceilings; 0 for the other cases.
        std::int64_t count = 0;

        friend bool operator==(const Evidence&, const Evidence&) = default;
    };

    /// Absent while unknown.
    std::optional<double> capInLogUnits;
    Evidence evidence;

    /// The fraction of a full session that one log unit is worth; absent where the cap is unknown or unsound.
    [[nodiscard]] std::optional<double> scale() const;

    /// A moment at which a session was known to be full.
    struct CeilingObservation {
        UsageModel::Date blockStart;
        UsageModel::Date at;
        /// What the session had used by then.
        double capInLogUnits = 0.0;

        friend bool operator==(const CeilingObservation&, const CeilingObservation&) = default;
    };

    struct LearnQuestion {
        std::span<const UsageModel::SessionBlock> blocks;
        std::span<const UsageModel::Anchor> anchors;
        WeighedTurns turns;
        /// Not owned; null for none.
        const UsageModel::GaugeReading* gauge = nullptr;
        /// The start of the session that the gauge was read in.
        std::optional<UsageModel::Date> sessionWindowStart;
        UsageModel::Date now;
        /// The cap that was learnt before: the last resort.
        std::optional<double> held;
    };

    /// The median of the ceilings and of what the gauge says now; the count does not hold the latter.
    [[nodiscard]] static SessionCapScale learn(const LearnQuestion& question);

    /// One for each block of the last 60 days that holds a ceiling, by its latest; in the order of the blocks.
    [[nodiscard]] static std::vector<CeilingObservation> ceilingObservations(const LearnQuestion& question);

    /// 0 of no values.
    [[nodiscard]] static double median(std::vector<double> values);

    friend bool operator==(const SessionCapScale&, const SessionCapScale&) = default;
};

/// A factor between log units and fractions of a limit, where it is one to compute with: above 0 and not so large
/// (1e100) that a sum would leave the range of numbers; else absent.
[[nodiscard]] std::optional<double> soundFactor(double factor);

} // namespace UsageEngine

template <>
struct UsageModel::EnumNames<UsageEngine::SessionCapScale::Evidence::Case> {
    static constexpr std::array<std::string_view, 4> names{"ceilings", "liveGauge", "held", "none"};
};
