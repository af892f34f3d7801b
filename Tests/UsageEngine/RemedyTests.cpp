#include "UsageEngine/Remedy.h"

#include <gtest/gtest.h>

#include "UsageEngine/Spaces.h"
#include "UsageModel/Rows.h"

namespace UsageEngine {
namespace {

using namespace Spaces;
using Remedy::Option;
using Remedy::Outcome;
using Remedy::search;
using UsageModel::EffortLevel;
using UsageModel::ModelClass;
using UsageModel::text;
using UsageModel::WhatIfSpace;
using Case = Outcome::Case;

TEST(Remedy, TiersRiseFromCheapToDear) {
    EXPECT_EQ(Remedy::tiers, (std::array{haiku, sonnet, opus, fable}));
}

struct TierRow : TestSupport::Named {
    Shares byFamily;
    std::optional<ModelClass> tier;
};

class DominantTierTest : public testing::TestWithParam<TierRow> {};

TEST_P(DominantTierTest, TakesTheLargestShare) {
    EXPECT_EQ(Remedy::dominantTier({.byFamily = GetParam().byFamily}), GetParam().tier);
}

INSTANTIATE_TEST_SUITE_P(
    Mixes, DominantTierTest,
    testing::Values(TierRow{"nothing", {}, {}}, TierRow{"nothing above zero", {{opus, 0}, {haiku, -1}}, {}},
                    TierRow{"one", {{haiku, 1}}, haiku}, TierRow{"the least", {{haiku, 1e-300}}, haiku},
                    TierRow{"the larger", {{opus, 0.4}, {sonnet, 0.6}}, sonnet},
                    TierRow{"the larger that comes first", {{opus, 0.6}, {sonnet, 0.4}}, opus},
                    TierRow{"zeros and less are passed over", {{opus, 0}, {fable, -2}, {haiku, 0.1}}, haiku},
                    TierRow{"a tie goes by the alphabet and not by the order", {{opus, 0.5}, {fable, 0.5}}, fable},
                    TierRow{"nor by the price", {{opus, 0.5}, {haiku, 0.5}}, haiku},
                    TierRow{"a tie of all", {{opus, 1}, {fable, 1}, {sonnet, 1}, {haiku, 1}, {other, 1}}, fable},
                    TierRow{"an unknown model is like sonnet", {{other, 1}}, sonnet},
                    TierRow{"also in a mix", {{other, 0.6}, {opus, 0.4}}, sonnet},
                    TierRow{"an unknown model tied with sonnet", {{other, 0.5}, {sonnet, 0.5}}, sonnet},
                    TierRow{"an unknown model tied with opus", {{other, 0.5}, {opus, 0.5}}, opus}),
    TestSupport::rowName);

struct SearchRow {
    std::string_view name;
    WhatIfSpace space = on(opus);
    double used = 0.0;
    double endFraction = 1.5;
    double limit = 1.0;
    double remaining = 100000.0;
    Case kind = Case::change;
    std::optional<Option> option;
    bool effortAloneWasEnough = false;
    double seconds = 0.0;

    friend std::ostream& operator<<(std::ostream& out, const SearchRow& row) { return out << row.name; }
};

class SearchTest : public testing::TestWithParam<SearchRow> {};

TEST_P(SearchTest, FindsTheLeastDisruptiveStep) {
    const SearchRow& row = GetParam();
    const Outcome found = search({.space = row.space,
                                  .used = row.used,
                                  .endFraction = row.endFraction,
                                  .limit = row.limit,
                                  .remaining = row.remaining});
    EXPECT_EQ(text(found.kind), text(row.kind));
    EXPECT_EQ(found.effortAloneWasEnough, row.effortAloneWasEnough);
    EXPECT_NEAR(found.seconds, row.seconds, 1e-6);
    ASSERT_EQ(found.option.has_value(), row.option.has_value());
    if (!row.option) return;
    EXPECT_EQ(found.option->model, row.option->model);
    EXPECT_EQ(found.option->effort, row.option->effort);
    EXPECT_EQ(found.option->disruption, row.option->disruption);
    EXPECT_DOUBLE_EQ(found.option->landing, row.option->landing);
}

Option byEffort(EffortLevel effort, double landing, std::int64_t disruption) {
    return {.model = {}, .effort = effort, .landing = landing, .disruption = disruption};
}

Option byModel(ModelClass model, double landing, std::int64_t disruption) {
    return {.model = model, .effort = {}, .landing = landing, .disruption = disruption};
}

/// Half of the burn goes by a move to Haiku, and nothing else helps.
const WhatIfSpace halvedByHaiku = withPrices(on(sonnet, 0.0), {{sonnet, 1.0}, {haiku, 0.5}});
/// No step down is left.
const WhatIfSpace atTheBottom = withEffort(on(haiku), EffortLevel::low);
/// Low effort costs nothing at all.
const WhatIfSpace freeAtLow = on(opus, 10.0);
/// Sonnet is as cheap as low effort, to the last bit.
const WhatIfSpace tied =
    withMultipliers(withPrices(on(opus), {{opus, 1.0}, {sonnet, 0.5}}),
                    {{EffortLevel::low, 0.5}, {EffortLevel::medium, 1.0}, {EffortLevel::high, 1.0}});

INSTANTIATE_TEST_SUITE_P(
    Bounds, SearchTest,
    testing::Values(
        SearchRow{.name = "well inside", .endFraction = 0.5, .kind = Case::fine},
        SearchRow{.name = "at the limit", .endFraction = 1.0, .kind = Case::fine},
        SearchRow{.name = "a hair above the limit",
                  .endFraction = justAbove(1.0),
                  .option = byEffort(EffortLevel::medium, 0.75, 1),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "inside though the margin is spent", .used = 0.99, .endFraction = 0.995, .kind = Case::fine},
        SearchRow{.name = "margin spent", .space = freeAtLow, .used = 0.98, .kind = Case::pastSaving},
        SearchRow{.name = "margin just spent", .space = freeAtLow, .used = 0.97, .kind = Case::pastSaving},
        SearchRow{.name = "margin not quite spent",
                  .space = freeAtLow,
                  .used = justBelow(0.97),
                  .option = byEffort(EffortLevel::medium, justBelow(0.97), 1),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "no time left", .remaining = 0.0, .kind = Case::pastSaving},
        SearchRow{.name = "less than none", .remaining = -1.0, .kind = Case::pastSaving},
        SearchRow{.name = "hardly any time left",
                  .endFraction = 1.2,
                  .remaining = 1e-300,
                  .option = byEffort(EffortLevel::medium, 0.9, 1),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "no time and inside", .endFraction = 1.0, .remaining = 0.0, .kind = Case::fine},
        SearchRow{.name = "lands on the margin",
                  .space = halvedByHaiku,
                  .endFraction = 2 * 0.97,
                  .option = byModel(haiku, 0.97, 2)},
        SearchRow{.name = "lands a hair above the margin",
                  .space = halvedByHaiku,
                  .endFraction = 2 * justAbove(0.97),
                  .kind = Case::pause,
                  .seconds = 100000 - 100000 / 1.94},
        SearchRow{.name = "the margin is of the limit",
                  .endFraction = 0.6,
                  .limit = 0.5,
                  .option = byEffort(EffortLevel::medium, 0.45, 1),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "what lands inside the limit but in its margin is passed over",
                  .endFraction = 0.65,
                  .limit = 0.5,
                  .option = byEffort(EffortLevel::low, 0.65 * 0.55, 2),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "only what is to come is changed",
                  .used = 0.5,
                  .endFraction = 1.1,
                  .option = byEffort(EffortLevel::medium, 0.5 + 0.6 * 0.75, 1),
                  .effortAloneWasEnough = true}),
    TestSupport::rowName);

INSTANTIATE_TEST_SUITE_P(
    Steps, SearchTest,
    testing::Values(
        SearchRow{.name = "an unknown effort counts as high",
                  .space = withEffort(on(haiku), {}),
                  .endFraction = 1.2,
                  .option = byEffort(EffortLevel::medium, 0.9, 1),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "from medium only low",
                  .space = withEffort(on(haiku), EffortLevel::medium),
                  .endFraction = 1.2,
                  .option = byEffort(EffortLevel::low, 1.2 * 0.55 / 0.75, 1),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "from max by one step",
                  .space = withEffort(on(haiku), EffortLevel::max),
                  .endFraction = 1.1,
                  .option = byEffort(EffortLevel::xhigh, 1.1 * 1.3 / 1.6, 1),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "from max by four steps",
                  .space = withEffort(on(haiku), EffortLevel::max),
                  .endFraction = 2.5,
                  .option = byEffort(EffortLevel::low, 2.5 * 0.55 / 1.6, 4),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "two steps of effort and one of model: effort lands lower",
                  .option = byEffort(EffortLevel::low, 1.5 * 0.55, 2),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "two steps of effort and one of model: the model lands lower",
                  .space = on(opus, 0.8),
                  .option = byModel(sonnet, 0.9, 2),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "and both land alike",
                  .space = tied,
                  .option = byModel(sonnet, 0.75, 2),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "a step of model alone", .space = on(opus, 0.0), .option = byModel(sonnet, 0.9, 2)},
        SearchRow{
            .name = "two steps of model", .space = on(opus, 0.0), .endFraction = 2.0, .option = byModel(haiku, 0.4, 4)},
        SearchRow{.name = "three steps of model",
                  .space = on(fable, 0.0),
                  .endFraction = 5.0,
                  .option = byModel(haiku, 0.5, 6)},
        SearchRow{
            .name = "from fable to opus", .space = on(fable, 0.0), .endFraction = 1.8, .option = byModel(opus, 0.9, 2)},
        SearchRow{.name = "model and effort together",
                  .endFraction = 2.0,
                  .option = Option{.model = sonnet, .effort = EffortLevel::medium, .landing = 0.9, .disruption = 3}},
        SearchRow{.name = "effort is lowered on haiku too",
                  .endFraction = 6.0,
                  .option = Option{.model = haiku, .effort = EffortLevel::medium, .landing = 0.9, .disruption = 5}},
        SearchRow{.name = "all the way down",
                  .endFraction = 8.0,
                  .option = Option{.model = haiku, .effort = EffortLevel::low, .landing = 0.88, .disruption = 6}},
        SearchRow{.name = "an unknown model moves like sonnet",
                  .space = on(other, 0.0),
                  .option = byModel(haiku, 1.5 * 0.2 / 0.6, 2)},
        SearchRow{.name = "no mix at all: only effort",
                  .space = withMix(on(opus), {}),
                  .endFraction = 1.2,
                  .option = byEffort(EffortLevel::medium, 0.9, 1),
                  .effortAloneWasEnough = true},
        SearchRow{.name = "the class that runs is no step, though it is cheaper than the mix",
                  .space = withMix(on(opus, 0.0), {{opus, 0.6}, {fable, 0.4}}),
                  .endFraction = 1.2,
                  .option = byModel(sonnet, 1.2 * (0.6 * 0.6 + 0.4 * 0.3), 2)},
        SearchRow{.name = "a mix moves all of it",
                  .space = withMix(on(opus, 0.0), {{opus, 0.75}, {haiku, 0.25}}),
                  .endFraction = 0.96,
                  .limit = 0.95,
                  .option = byModel(haiku, 0.96 * (0.75 * 0.2 + 0.25), 4)}),
    TestSupport::rowName);

INSTANTIATE_TEST_SUITE_P(
    Pauses, SearchTest,
    testing::Values(SearchRow{.name = "no step is left",
                              .space = atTheBottom,
                              .used = 0.5,
                              .endFraction = 1.2,
                              .kind = Case::pause,
                              .seconds = 100000 - 0.5 / 0.000007},
                    SearchRow{.name = "a pause of more than half the time",
                              .space = atTheBottom,
                              .used = 0.5,
                              .endFraction = 2.5,
                              .kind = Case::pastSaving},
                    SearchRow{.name = "a pause of half the time",
                              .space = atTheBottom,
                              .endFraction = 2.0,
                              .remaining = 65536.0,
                              .kind = Case::pastSaving},
                    SearchRow{.name = "a pause of a little less",
                              .space = atTheBottom,
                              .endFraction = justBelow(2.0),
                              .remaining = 65536.0,
                              .kind = Case::pause,
                              .seconds = 32768.0},
                    SearchRow{.name = "a pause for a small limit",
                              .space = atTheBottom,
                              .used = 0.25,
                              .endFraction = 0.625,
                              .limit = 0.5,
                              .kind = Case::pause,
                              .seconds = 100000.0 / 3},
                    SearchRow{
                        .name = "dearer classes are never tried",
                        .space = withPrices(atTheBottom, {{haiku, 1.0}, {sonnet, 0.1}, {opus, 0.1}, {fable, 0.1}}),
                        .endFraction = 1.25,
                        .kind = Case::pause,
                        .seconds = 20000},
                    SearchRow{.name = "nor higher efforts",
                              .space = withMultipliers(atTheBottom, {{EffortLevel::low, 1.0}, {EffortLevel::max, 0.1}}),
                              .endFraction = 1.25,
                              .kind = Case::pause,
                              .seconds = 20000},
                    SearchRow{.name = "a pause that rounds to nothing",
                              .space = atTheBottom,
                              .used = 0.07291473165964048,
                              .endFraction = justAbove(0.23299828752622165),
                              .limit = 0.23299828752622165,
                              .remaining = 3,
                              .kind = Case::fine},
                    SearchRow{.name = "an endless time is no rate",
                              .space = atTheBottom,
                              .endFraction = 1.25,
                              .remaining = infinity,
                              .kind = Case::fine}),
    TestSupport::rowName);

} // namespace
} // namespace UsageEngine
