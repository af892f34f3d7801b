#include "HarrowlaneApp/Copy/WhatIfTexts.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::capWeek;
using TestSupport::day;
using TestSupport::monday;
using TestSupport::opusSpace;
using TestSupport::utc;
using UsageModel::EffortLevel;
using UsageModel::ModelAndEffort;
using UsageModel::ModelClass;
using UsageModel::WeekSeries;
using WhatIfTexts::Panel;

WeekSeries series() {
    WeekSeries series = capWeek(1.2);
    series.usedNow = 0.5;
    series.whatIf = opusSpace();
    series.forecastLikely = {{series.now, 0.5}, {series.windowEnd, 1.2}};
    return series;
}

Panel panelOf(const WeekSeries& series, const ModelAndEffort& choice = {}) {
    return WhatIfTexts::panel(series, choice, utc()).value();
}

template <typename Value, typename Property>
std::vector<Value> whichAre(const std::vector<WhatIfTexts::Chip<Value>>& chips, Property property) {
    std::vector<Value> values;
    for (const auto& chip : chips) {
        if (chip.*property) values.push_back(chip.value);
    }
    return values;
}

using ModelChip = WhatIfTexts::Chip<ModelClass>;
using EffortChip = WhatIfTexts::Chip<EffortLevel>;

TEST(WhatIfPanel, IsAbsentWithoutASpaceOfChanges) {
    EXPECT_EQ(WhatIfTexts::panel(capWeek(1.0), {}, utc()), std::nullopt);
    EXPECT_EQ(WhatIfTexts::chartFactor(capWeek(1.0), {.model = ModelClass::haiku}), std::nullopt);
}

TEST(WhatIfPanel, OffersThePricedModelsTheCheapestFirst) {
    std::vector<std::string> labels;
    for (const auto& chip : panelOf(series()).models) labels.push_back(chip.label);
    EXPECT_THAT(labels, ElementsAre("Haiku", "Sonnet", "Opus", "Fable"));

    WeekSeries odd = series();
    odd.whatIf->familyMultiplier = {{ModelClass::opus, 0.0}, {ModelClass::fable, -1.0}, {ModelClass::sonnet, 0.6}};
    labels.clear();
    for (const auto& chip : panelOf(odd).models) labels.push_back(chip.label);
    EXPECT_THAT(labels, ElementsAre("Sonnet"));
}

TEST(WhatIfPanel, MarksWhatIsInUseAndWhatCostsMore) {
    const Panel panel = panelOf(series(), {.model = ModelClass::sonnet, .effort = EffortLevel::low});
    EXPECT_EQ(panel.dominantFamily, ModelClass::opus);
    EXPECT_THAT(whichAre(panel.models, &ModelChip::isNow), ElementsAre(ModelClass::opus));
    EXPECT_THAT(whichAre(panel.models, &ModelChip::isSelected), ElementsAre(ModelClass::sonnet));
    EXPECT_THAT(whichAre(panel.models, &ModelChip::costsMore), ElementsAre(ModelClass::fable));
    EXPECT_THAT(whichAre(panel.efforts, &EffortChip::isNow), ElementsAre(EffortLevel::high));
    EXPECT_THAT(whichAre(panel.efforts, &EffortChip::isSelected), ElementsAre(EffortLevel::low));
    EXPECT_THAT(whichAre(panel.efforts, &EffortChip::costsMore), ElementsAre(EffortLevel::xhigh, EffortLevel::max));
    EXPECT_EQ(panel.models[2].tooltip, "Where your logs say you are now");
    EXPECT_EQ(panel.models[0].tooltip, "Switch the rest of the week to Haiku");
    EXPECT_EQ(panel.efforts[3].tooltip, "Switch the rest of the week to X-High");
}

TEST(WhatIfPanel, TakesHighForAnEffortThatTheLogsDoNotTell) {
    WeekSeries unknown = series();
    unknown.whatIf->currentEffort.reset();
    const Panel panel = panelOf(unknown, {.effort = EffortLevel::high});
    EXPECT_THAT(whichAre(panel.efforts, &EffortChip::isNow), ElementsAre(EffortLevel::high));
    EXPECT_EQ(panel.effortNote, "assumed — your logs don't record a level");
    EXPECT_FALSE(panel.result.isEstimate) << "no other level than the assumed one";
    EXPECT_TRUE(panel.isChanged);
}

TEST(WhatIfPanel, IgnoresAnEffortOnHaiku) {
    const ModelAndEffort choice{.model = ModelClass::haiku, .effort = EffortLevel::low};
    const Panel panel = panelOf(series(), choice);
    EXPECT_THAT(panel.efforts, IsEmpty());
    EXPECT_EQ(panel.effortNote, "Not offered on Haiku");
    EXPECT_EQ(panel.factor, opusSpace().modelFactor(ModelClass::haiku));
    EXPECT_TRUE(panel.isChanged);
    EXPECT_FALSE(panel.result.isEstimate);
    EXPECT_EQ(WhatIfTexts::chartFactor(series(), choice), panel.factor);
}

TEST(WhatIfPanel, TakesTheEffortUpAgainWhenHaikuIsGone) {
    const ModelAndEffort choice{.effort = EffortLevel::low};
    const Panel panel = panelOf(series(), choice);
    EXPECT_DOUBLE_EQ(panel.factor, 0.865);
    EXPECT_EQ(WhatIfTexts::chartFactor(series(), choice), panel.factor);
    EXPECT_TRUE(panel.result.isEstimate);
}

TEST(WhatIfPanel, WithoutUseKnowsNoMixAndEveryModelCostsMore) {
    WeekSeries unused = series();
    unused.whatIf->byFamily = {};
    const Panel panel = panelOf(unused);
    EXPECT_EQ(panel.modelNote, std::nullopt);
    EXPECT_EQ(panel.dominantFamily, std::nullopt);
    EXPECT_EQ(panel.blendedFamilyCost, 0.0);
    EXPECT_THAT(whichAre(panel.models, &ModelChip::isNow), IsEmpty());
    EXPECT_EQ(whichAre(panel.models, &ModelChip::costsMore).size(), 4U);
}

TEST(WhatIfPanel, PricesAClassWithoutAPriceAtOne) {
    WeekSeries mixed = series();
    mixed.whatIf->byFamily = {{ModelClass::opus, 0.5}, {ModelClass::sonnet, 0.5}};
    mixed.whatIf->familyMultiplier = {{ModelClass::opus, 0.4}};
    EXPECT_DOUBLE_EQ(panelOf(mixed).blendedFamilyCost, 0.7);
}

TEST(WhatIfPanel, NotesTheTwoLargestShares) {
    WeekSeries mixed = series();
    mixed.whatIf->byFamily = {{ModelClass::opus, 0.45}, {ModelClass::fable, 0.43}, {ModelClass::sonnet, 0.12}};
    EXPECT_EQ(panelOf(mixed).modelNote, "now · 45% opus, 43% fable");
    mixed.whatIf->byFamily = {{ModelClass::opus, 0.004}, {ModelClass::sonnet, 0.996}};
    EXPECT_EQ(panelOf(mixed).modelNote, "now · 100% sonnet");
    mixed.whatIf->byFamily = {{ModelClass::opus, 0.005}};
    EXPECT_EQ(panelOf(mixed).modelNote, std::nullopt) << "exactly at the edge is too small";
    mixed.whatIf->byFamily = {{ModelClass::other, 0.5}, {ModelClass::haiku, 0.5}};
    EXPECT_EQ(panelOf(mixed).modelNote, "now · 50% haiku, 50% other");
}

TEST(WhatIfPanel, NotesHowMuchRunsAtTheEffort) {
    WeekSeries mixed = series();
    const auto note = [&](double share) {
        mixed.whatIf->effortMix = {{EffortLevel::high, share}};
        return panelOf(mixed).effortNote;
    };
    EXPECT_EQ(note(0.9995), "now · all high");
    EXPECT_EQ(note(0.999), "now · all high");
    EXPECT_EQ(note(0.9989), "now · 100% high");
    EXPECT_EQ(note(0.62), "now · 62% high");
    mixed.whatIf->currentEffort = EffortLevel::xhigh;
    EXPECT_EQ(note(0.62), "now · 0% x-high");
}

TEST(WhatIfResult, AsksForAChoice) {
    const Panel panel = panelOf(series());
    EXPECT_FALSE(panel.isChanged);
    EXPECT_THAT(panel.result.texts,
                ElementsAre("Pick a model or an effort level to see where the week would land instead."));
    EXPECT_EQ(panel.result.signal, std::nullopt);
    EXPECT_EQ(WhatIfTexts::chartFactor(series(), {}), std::nullopt);
}

TEST(WhatIfResult, LandsInsideTheCap) {
    const Panel panel = panelOf(series(), {.model = ModelClass::sonnet});
    EXPECT_THAT(panel.result.texts, ElementsAre("lands ≈92%", "inside the cap"));
    EXPECT_EQ(panel.result.signal, Signal::good);
    EXPECT_FALSE(panel.result.isEstimate);
}

TEST(WhatIfResult, ExactlyAtTheLimitIsInside) {
    WeekSeries exact = series();
    exact.limitLevel = exact.ghostLanding(exact.whatIf->modelFactor(ModelClass::sonnet));
    EXPECT_EQ(panelOf(exact, {.model = ModelClass::sonnet}).result.signal, Signal::good);
}

TEST(WhatIfResult, RunsOutEarlier) {
    WeekSeries early = series();
    early.forecastLikely = {{monday + 3 * day, 0.5}, {monday + 7 * day, 1.2}};
    const Panel panel = panelOf(early, {.model = ModelClass::fable});
    // 0.5 + 2 * 0.7: the limit is reached 5/14 of the way through the four days that are left.
    EXPECT_THAT(panel.result.texts, ElementsAre("lands ≈190%", "runs out Saturday at 3:17 AM"));
    EXPECT_EQ(panel.result.signal, Signal::crit);
}

TEST(WhatIfResult, WithoutACurveTellsOnlyWhereItLands) {
    WeekSeries bare = series();
    bare.forecastLikely.clear();
    EXPECT_THAT(panelOf(bare, {.model = ModelClass::fable}).result.texts, ElementsAre("lands ≈190%"));
}

TEST(WhatIfResult, WithoutALimitIsAMultipleOfATypicalWeek) {
    WeekSeries unlimited = series();
    unlimited.limitLevel.reset();
    const Panel panel = panelOf(unlimited, {.model = ModelClass::fable, .effort = EffortLevel::max});
    EXPECT_THAT(panel.result.texts, ElementsAre("lands ≈2.15× typical"));
    EXPECT_EQ(panel.result.signal, Signal::warn);
    EXPECT_TRUE(panel.result.isEstimate);
}

TEST(WhatIfChip, ClickedAgainTakesTheChoiceBack) {
    EXPECT_EQ(WhatIfTexts::toggled<ModelClass>({}, ModelClass::haiku), ModelClass::haiku);
    EXPECT_EQ(WhatIfTexts::toggled<ModelClass>(ModelClass::opus, ModelClass::haiku), ModelClass::haiku);
    EXPECT_EQ(WhatIfTexts::toggled<ModelClass>(ModelClass::haiku, ModelClass::haiku), std::nullopt);
}

} // namespace
} // namespace HarrowlaneApp
