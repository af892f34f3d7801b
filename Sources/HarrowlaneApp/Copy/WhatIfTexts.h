#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HarrowlaneApp/Copy/Signal.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/WeekSeries.h"

/// The what-if panel: where the week would land if the rest of it ran on another model or at another effort.
namespace HarrowlaneApp::WhatIfTexts {

inline constexpr std::string_view title = "IF I CHANGE SOMETHING";
inline constexpr std::string_view resetButton = "Reset";
inline constexpr std::string_view modelAxis = "Model";
inline constexpr std::string_view effortAxis = "Effort";
inline constexpr std::string_view estimateMark = "est.";
inline constexpr std::string_view estimateTooltip =
    "Effort's cost isn't published and can't be measured from these logs — and it moves only the output share of your "
    "burn, so this is a floor.";

/// What can be chosen, with the value that it stands for.
template <typename Value>
struct Chip {
    Value value{};
    std::string label;
    /// The logs say that it is in use now.
    bool isNow = false;
    bool isSelected = false;
    /// It costs more than what is in use now.
    bool costsMore = false;
    std::string tooltip;

    friend bool operator==(const Chip&, const Chip&) = default;
};

/// What the choice comes to.
struct Result {
    /// The first is the main one.
    std::vector<std::string> texts;
    /// The colour of the first text; absent while nothing is chosen.
    std::optional<Signal> signal;
    /// The result rests on a guess at what the effort costs: `estimateMark` stands behind it.
    bool isEstimate = false;

    friend bool operator==(const Result&, const Result&) = default;
};

/// What the panel shows.
struct Panel {
    std::vector<Chip<UsageModel::ModelClass>> models;
    std::vector<Chip<UsageModel::EffortLevel>> efforts;
    /// The class that costs the most of the week; absent where nothing was used.
    std::optional<UsageModel::ModelClass> dominantFamily;
    /// The relative price of the mix in use.
    double blendedFamilyCost = 0.0;
    /// The factor on the rest of the week's burn.
    double factor = 1.0;
    /// There is a choice that can be taken back.
    bool isChanged = false;
    std::optional<std::string> modelNote;
    std::string effortNote;
    Result result;

    friend bool operator==(const Panel&, const Panel&) = default;
};

/// Absent where the series has no space of changes.
[[nodiscard]] std::optional<Panel> panel(const UsageModel::WeekSeries& series, const UsageModel::ModelAndEffort& choice,
                                         const UsageModel::Calendar& calendar);

/// The factor for the chart's ghost line; absent while no choice is in force.
[[nodiscard]] std::optional<double> chartFactor(const UsageModel::WeekSeries& series,
                                                const UsageModel::ModelAndEffort& choice);

/// The choice without an effort that its model does not offer.
[[nodiscard]] UsageModel::ModelAndEffort inForce(const UsageModel::ModelAndEffort& choice);

/// What a click on a chip leaves chosen: its value, or nothing where it was chosen already.
template <typename Value>
[[nodiscard]] std::optional<Value> toggled(std::optional<Value> chosen, Value clicked) {
    return chosen == clicked ? std::nullopt : std::optional(clicked);
}

} // namespace HarrowlaneApp::WhatIfTexts
