#include "HarrowlaneApp/Copy/WhatIfTexts.h"

#include <algorithm>

#include "HarrowlaneApp/Copy/Figures.h"
#include "HarrowlaneApp/Copy/Words.h"
#include "UsageEngine/TimeText.h"
#include "UsageModel/LiveModel.h"

namespace HarrowlaneApp::WhatIfTexts {

namespace {

using UsageModel::Calendar;
using UsageModel::EffortLevel;
using UsageModel::ModelAndEffort;
using UsageModel::ModelClass;
using UsageModel::WeekSeries;
using UsageModel::WhatIfSpace;

std::span<const EffortLevel> available(const ModelAndEffort& choice) {
    return availableEfforts(choice.model.value_or(ModelClass::opus));
}

bool changesAnything(const ModelAndEffort& choice) {
    return choice.model || choice.effort;
}

/// The classes that have a price, the cheapest first.
std::vector<ModelClass> pricedModels(const WhatIfSpace& space) {
    std::vector<ModelClass> models;
    for (const auto& [modelClass, price] : space.familyMultiplier) {
        if (modelClass != ModelClass::other && price > 0) models.push_back(modelClass);
    }
    std::ranges::stable_sort(models, {}, [&](ModelClass model) { return *space.familyMultiplier.find(model); });
    return models;
}

std::optional<ModelClass> dominantFamily(const WhatIfSpace& space) {
    const auto top = UsageModel::topShare(space.byFamily);
    return top ? std::optional(top->first) : std::nullopt;
}

double blendedFamilyCost(const WhatIfSpace& space) {
    double cost = 0.0;
    for (const auto& [modelClass, share] : space.byFamily)
        cost += share * space.familyMultiplier.valueOr(modelClass, 1.0);
    return cost;
}

std::string tooltip(std::string_view label, bool isNow) {
    if (isNow) return "Where your logs say you are now";
    return "Switch the rest of the week to " + std::string(label);
}

std::vector<Chip<ModelClass>> modelChips(const WhatIfSpace& space, const ModelAndEffort& choice) {
    const double now = blendedFamilyCost(space);
    const auto dominant = dominantFamily(space);
    std::vector<Chip<ModelClass>> chips;
    for (const ModelClass model : pricedModels(space)) {
        chips.push_back({
            .value = model,
            .label = std::string(displayName(model)),
            .isNow = model == dominant,
            .isSelected = model == choice.model,
            .costsMore = now < *space.familyMultiplier.find(model),
            .tooltip = tooltip(displayName(model), model == dominant),
        });
    }
    return chips;
}

std::vector<Chip<EffortLevel>> effortChips(const WhatIfSpace& space, const ModelAndEffort& choice) {
    const EffortLevel now = space.anchorEffort();
    std::vector<Chip<EffortLevel>> chips;
    for (const EffortLevel effort : available(choice)) {
        chips.push_back({
            .value = effort,
            .label = std::string(label(effort)),
            .isNow = effort == now,
            .isSelected = effort == choice.effort,
            .costsMore = effort > now,
            .tooltip = tooltip(label(effort), effort == now),
        });
    }
    return chips;
}

std::optional<std::string> modelNote(const WhatIfSpace& space) {
    constexpr double leastShare = 0.005;
    constexpr std::size_t mostTold = 2;
    std::vector<std::pair<ModelClass, double>> shares;
    for (const auto& [modelClass, share] : space.byFamily) {
        if (share > leastShare) shares.emplace_back(modelClass, share);
    }
    if (shares.empty()) return std::nullopt;
    std::ranges::stable_sort(shares, std::ranges::greater(), [](const auto& entry) { return entry.second; });
    if (shares.size() > mostTold) shares.resize(mostTold);

    std::vector<std::string> parts(shares.size());
    std::ranges::transform(shares, parts.begin(), [](const auto& entry) {
        return Figures::percent(entry.second) + " " + Words::lowerCase(displayName(entry.first));
    });
    return "now · " + Words::joined(parts, ", ");
}

std::string effortNote(const WhatIfSpace& space, const ModelAndEffort& choice) {
    constexpr double asGoodAsAll = 0.999;
    if (available(choice).empty()) return "Not offered on Haiku";
    if (!space.currentEffort) return "assumed — your logs don't record a level";
    const double share = space.effortMix.valueOr(*space.currentEffort, 0.0);
    const std::string effort = Words::lowerCase(label(*space.currentEffort));
    return "now · " + (share >= asGoodAsAll ? "all" : Figures::percent(share)) + " " + effort;
}

/// `change` is what is in force of the choice.
Result resultOf(const WeekSeries& series, const ModelAndEffort& change, const Calendar& calendar) {
    if (!changesAnything(change)) {
        return {.texts = {"Pick a model or an effort level to see where the week would land instead."}};
    }
    const double factor = series.whatIf->factor(change);
    const double landing = series.ghostLanding(factor);
    Result result{.isEstimate = series.whatIf->isEstimate(change.effort)};
    if (!series.limitLevel) {
        result.texts = {"lands ≈" + Figures::multiple(landing) + " typical"};
        result.signal = Signal::warn;
        return result;
    }
    const bool isInside = landing <= *series.limitLevel;
    result.texts = {"lands ≈" + Figures::percent(landing)};
    result.signal = isInside ? Signal::good : Signal::crit;
    const auto crossing = series.ghostCrossing(factor);
    if (isInside)
        result.texts.emplace_back("inside the cap");
    else if (crossing)
        result.texts.push_back("runs out " + UsageEngine::TimeText::dayAndTime(*crossing, calendar));
    return result;
}

} // namespace

std::optional<Panel> panel(const WeekSeries& series, const ModelAndEffort& choice, const Calendar& calendar) {
    if (!series.whatIf) return std::nullopt;
    const WhatIfSpace& space = *series.whatIf;
    const ModelAndEffort change = inForce(choice);
    return Panel{
        .models = modelChips(space, choice),
        .efforts = effortChips(space, choice),
        .dominantFamily = dominantFamily(space),
        .blendedFamilyCost = blendedFamilyCost(space),
        .factor = space.factor(change),
        .isChanged = changesAnything(change),
        .modelNote = modelNote(space),
        .effortNote = effortNote(space, choice),
        .result = resultOf(series, change, calendar),
    };
}

std::optional<double> chartFactor(const WeekSeries& series, const ModelAndEffort& choice) {
    const ModelAndEffort change = inForce(choice);
    if (!series.whatIf || !changesAnything(change)) return std::nullopt;
    return series.whatIf->factor(change);
}

ModelAndEffort inForce(const ModelAndEffort& choice) {
    return {.model = choice.model, .effort = available(choice).empty() ? std::nullopt : choice.effort};
}

} // namespace HarrowlaneApp::WhatIfTexts
