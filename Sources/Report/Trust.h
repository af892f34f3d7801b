#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/EnumMap.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/Fields.h"

namespace Report {

/// The ways to say where a week will end. The last two take no skill: the straight line through what was used so far,
/// and that this week will be as the last.
enum class Method { bottomUp, composite, shape, straightLine, lastWeek };

} // namespace Report

template <>
struct UsageModel::EnumNames<Report::Method> {
    static constexpr std::array<std::string_view, 5> names{"bottomUp", "composite", "shape", "straightLine",
                                                           "lastWeek"};
};

namespace Report {

/// How good a method was. Errors are shares of the week's real total.
struct Score {
    std::int64_t trials = 0;
    double medianAbsoluteError = 0.0;
    double p90AbsoluteError = 0.0;
    /// Above 0 where the method says too much.
    double medianSignedError = 0.0;
    double shareOverPredicted = 0.0;

    friend bool operator==(const Score&, const Score&) = default;
};

struct Week {
    UsageModel::Date start;
    UsageModel::Date end;

    friend bool operator==(const Week&, const Week&) = default;
};

/// How far the forecasts may be trusted, by the user's own history: every week that is over is replayed at twelve
/// instants, and what each method said is held against what the week became.
struct Trust {
    static constexpr std::size_t instantsPerWeek = 12;
    /// Habits of more than a year ago tell nothing of today's.
    static constexpr std::size_t mostWeeks = 52;

    /// Those that were replayed, by time. Each has a week of history before it: without one there is nothing to learn
    /// from.
    std::vector<Week> weeks;
    /// Those left out because nothing was used in them: no error can be a share of nothing.
    std::int64_t unusedWeeks = 0;
    /// Every method; without trials where no week was replayed.
    UsageModel::EnumMap<Method, Score> scores;

    friend bool operator==(const Trust&, const Trust&) = default;
};

struct TrustQuestion {
    UsageEngine::WeighedTurns turns;
    const UsageModel::Calendar& calendar;
    /// Where the running week began: the weeks that are over end here, and seven days earlier, and so on.
    UsageModel::Date weekStart;
};

[[nodiscard]] Trust trustOf(const TrustQuestion& question);

template <UsageModel::FieldsOf<Score> Self>
void visitFields(Self& self, auto&& visit) {
    visit("trials", self.trials);
    visit("medianAbsoluteError", self.medianAbsoluteError);
    visit("p90AbsoluteError", self.p90AbsoluteError);
    visit("medianSignedError", self.medianSignedError);
    visit("shareOverPredicted", self.shareOverPredicted);
}

template <UsageModel::FieldsOf<Week> Self>
void visitFields(Self& self, auto&& visit) {
    visit("start", self.start);
    visit("end", self.end);
}

template <UsageModel::FieldsOf<Trust> Self>
void visitFields(Self& self, auto&& visit) {
    visit("weeks", self.weeks);
    visit("unusedWeeks", self.unusedWeeks);
    visit("scores", self.scores);
}

} // namespace Report
