#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "UsageModel/EnumMap.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/Fields.h"
#include "UsageModel/WhatIfSpace.h"
#include "UsageModel/WindowKind.h"

/// What to change so that a window lands inside its limit, and what one can afford where all of them have room. Only
/// what is still to come can be changed: a window lands at `used + (endFraction - used) * factor`.
namespace UsageEngine::Remedy {

/// From cheap to dear. `other` is none of them.
inline constexpr std::array<UsageModel::ModelClass, 4> tiers{
    UsageModel::ModelClass::haiku, UsageModel::ModelClass::sonnet, UsageModel::ModelClass::opus,
    UsageModel::ModelClass::fable};

/// The share of a limit that a change must land within: the rest is for the forecast's own error.
inline constexpr double searchMargin = 0.97;
/// The share of each limit that an upgrade must land within.
inline constexpr double upgradeMargin = 0.85;

struct Option {
    /// Absent: as it is.
    std::optional<UsageModel::ModelClass> model;
    std::optional<UsageModel::EffortLevel> effort;
    /// The fraction of the window that is used by its reset.
    double landing = 0.0;
    /// Steps of effort; one of model counts as two.
    std::int64_t disruption = 0;

    friend bool operator==(const Option&, const Option&) = default;
};

struct Outcome {
    /// Do `option`; stop for `seconds`; nothing to do; no change and no short pause helps.
    enum class Case { change, pause, fine, pastSaving };

    Case kind = Case::fine;
    /// Of `change`.
    std::optional<Option> option;
    bool effortAloneWasEnough = false;
    /// Of `pause`.
    double seconds = 0.0;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

struct SearchQuestion {
    const UsageModel::WhatIfSpace& space;
    double used = 0.0;
    double endFraction = 0.0;
    double limit = 1.0;
    /// Seconds until the reset.
    double remaining = 0.0;
};

/// The least disruptive step down that lands within 97 % of the limit; of equals the one that lands lowest. Where none
/// does, a pause of less than half the time that is left.
[[nodiscard]] Outcome search(const SearchQuestion& question);

/// One window, for the question what it can afford.
struct Room {
    UsageModel::WindowKind kind = UsageModel::WindowKind::session5h;
    UsageModel::WhatIfSpace space;
    double used = 0.0;
    double endFraction = 0.0;
    double limit = 1.0;

    friend bool operator==(const Room&, const Room&) = default;
};

struct Upgrade {
    std::optional<UsageModel::ModelClass> model;
    std::optional<UsageModel::EffortLevel> effort;
    /// Where each window lands.
    UsageModel::EnumMap<UsageModel::WindowKind, double> landings;
    /// Steps of effort; one of model counts as two.
    std::int64_t gain = 0;

    friend bool operator==(const Upgrade&, const Upgrade&) = default;
};

/// The largest step up from a class and an effort after which every window still lands within 85 % of its limit; of
/// equals the one whose fullest window lands lowest, then the first. Absent where a window is not clear of its limit,
/// without rooms, and for a class that is no tier. An effort that is not known is not raised.
[[nodiscard]] std::optional<Upgrade> upgrade(std::span<const Room> rooms, std::optional<UsageModel::ModelClass> from,
                                             std::optional<UsageModel::EffortLevel> effort);

/// The class that takes the largest share, of equals the alphabetically first; `sonnet` stands for `other`. Absent
/// where no share is above 0.
[[nodiscard]] std::optional<UsageModel::ModelClass> dominantTier(const UsageModel::WhatIfSpace& space);

template <UsageModel::FieldsOf<Option> Self>
void visitFields(Self& self, auto&& visit) {
    visit("model", self.model);
    visit("effort", self.effort);
    visit("landing", self.landing);
    visit("disruption", self.disruption);
}

template <UsageModel::FieldsOf<Room> Self>
void visitFields(Self& self, auto&& visit) {
    visit("kind", self.kind);
    visit("space", self.space);
    visit("used", self.used);
    visit("endFraction", self.endFraction);
    visit("limit", self.limit);
}

template <UsageModel::FieldsOf<Upgrade> Self>
void visitFields(Self& self, auto&& visit) {
    visit("model", self.model);
    visit("effort", self.effort);
    visit("landings", self.landings);
    visit("gain", self.gain);
}

} // namespace UsageEngine::Remedy

template <>
struct UsageModel::EnumNames<UsageEngine::Remedy::Outcome::Case> {
    static constexpr std::array<std::string_view, 4> names{"change", "pause", "fine", "pastSaving"};
};
