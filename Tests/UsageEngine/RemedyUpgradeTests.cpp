#include <gtest/gtest.h>

#include "UsageEngine/Remedy.h"
#include "UsageEngine/Spaces.h"
#include "UsageModel/Rows.h"

namespace UsageEngine {
namespace {

using namespace Spaces;
using Remedy::Room;
using Remedy::Upgrade;
using UsageModel::EffortLevel;
using UsageModel::ModelClass;
using UsageModel::text;
using UsageModel::WhatIfSpace;
using UsageModel::WindowKind;

/// A window with the share that it will have used.
Room room(const WhatIfSpace& space, double endFraction, WindowKind kind = WindowKind::weeklyAll) {
    return {.kind = kind, .space = space, .used = 0.0, .endFraction = endFraction, .limit = 1.0};
}

struct UpgradeRow {
    std::string_view name;
    std::vector<Room> rooms;
    std::optional<ModelClass> from = opus;
    std::optional<EffortLevel> effort = EffortLevel::high;
    std::optional<Upgrade> upgrade;

    friend std::ostream& operator<<(std::ostream& out, const UpgradeRow& row) { return out << row.name; }
};

class UpgradeTest : public testing::TestWithParam<UpgradeRow> {};

TEST_P(UpgradeTest, IsTheRichestThatAllWindowsAfford) {
    const UpgradeRow& row = GetParam();
    const auto found = Remedy::upgrade(row.rooms, row.from, row.effort);
    ASSERT_EQ(found.has_value(), row.upgrade.has_value());
    if (!found) return;
    EXPECT_EQ(found->model, row.upgrade->model);
    EXPECT_EQ(found->effort, row.upgrade->effort);
    EXPECT_EQ(found->gain, row.upgrade->gain);
    ASSERT_EQ(found->landings.size(), row.upgrade->landings.size());
    for (const auto& [kind, end] : row.upgrade->landings)
        EXPECT_DOUBLE_EQ(found->landings.valueOr(kind, -1.0), end) << text(kind);
}

using Landings = UsageModel::EnumMap<WindowKind, double>;

Upgrade raising(EffortLevel effort, std::int64_t gain, double landing) {
    return {.model = {}, .effort = effort, .landings = {{WindowKind::weeklyAll, landing}}, .gain = gain};
}

Upgrade movingTo(ModelClass model, std::int64_t gain, double landing) {
    return {.model = model, .effort = {}, .landings = {{WindowKind::weeklyAll, landing}}, .gain = gain};
}

Upgrade both(ModelClass model, EffortLevel effort, std::int64_t gain, double landing) {
    return {.model = model, .effort = effort, .landings = {{WindowKind::weeklyAll, landing}}, .gain = gain};
}

Room spent(double used, double endFraction, double limit = 1.0) {
    return {
        .kind = WindowKind::weeklyAll, .space = on(fable), .used = used, .endFraction = endFraction, .limit = limit};
}

INSTANTIATE_TEST_SUITE_P(
    Refusals, UpgradeTest,
    testing::Values(
        UpgradeRow{.name = "no rooms", .rooms = {}, .upgrade = {}},
        UpgradeRow{.name = "from an unknown class", .rooms = {room(on(opus), 0.1)}, .from = {}, .upgrade = {}},
        UpgradeRow{
            .name = "from a class that is no tier", .rooms = {room(on(other), 0.1)}, .from = other, .upgrade = {}},
        // What is used by a dearer class than the one that runs: a step up makes it land lower.
        UpgradeRow{.name = "ends just inside",
                   .rooms = {spent(0.0, justBelow(1.0))},
                   .from = sonnet,
                   .effort = {},
                   .upgrade = movingTo(opus, 2, 0.5)},
        UpgradeRow{
            .name = "ends at the limit", .rooms = {spent(0.0, 1.0)}, .from = sonnet, .effort = {}, .upgrade = {}},
        UpgradeRow{.name = "used up", .rooms = {spent(0.0, -1.0, 0.0)}, .from = sonnet, .upgrade = {}},
        UpgradeRow{.name = "used beyond", .rooms = {spent(1.2, 0.5)}, .from = sonnet, .upgrade = {}},
        UpgradeRow{.name = "one room of two is not clear",
                   .rooms = {spent(0.0, 0.5), spent(0.0, 1.0)},
                   .from = sonnet,
                   .effort = {},
                   .upgrade = {}},
        UpgradeRow{.name = "nothing above",
                   .rooms = {room(on(fable), 0.1)},
                   .from = fable,
                   .effort = EffortLevel::max,
                   .upgrade = {}},
        UpgradeRow{.name = "haiku has no effort to raise",
                   .rooms = {room(on(haiku, 0.1), 0.7)},
                   .from = haiku,
                   .effort = EffortLevel::low,
                   .upgrade = {}},
        UpgradeRow{.name = "an unknown effort is not raised",
                   .rooms = {room(on(fable), 0.1)},
                   .from = fable,
                   .effort = {},
                   .upgrade = {}},
        UpgradeRow{.name = "nothing that would change anything",
                   .rooms = {room(on(fable, 0.001), 0.1)},
                   .from = fable,
                   .effort = EffortLevel::high,
                   .upgrade = {}},
        UpgradeRow{.name = "a class without a price changes nothing",
                   .rooms = {room(withPrices(on(opus), {{opus, 1.0}}), 0.1)},
                   .from = opus,
                   .effort = {},
                   .upgrade = {}}),
    TestSupport::rowName);

INSTANTIATE_TEST_SUITE_P(
    Steps, UpgradeTest,
    testing::Values(
        UpgradeRow{.name = "all the way up",
                   .rooms = {room(on(haiku), 0.01)},
                   .from = haiku,
                   .effort = EffortLevel::medium,
                   .upgrade = both(fable, EffortLevel::max, 9, 0.01 * 10 * 1.6)},
        UpgradeRow{.name = "from haiku to sonnet, as it is",
                   .rooms = {room(on(haiku), 0.25)},
                   .from = haiku,
                   .effort = EffortLevel::high,
                   .upgrade = movingTo(sonnet, 2, 0.25 * (0.6 / 0.2))},
        UpgradeRow{.name = "from haiku two steps",
                   .rooms = {room(on(haiku), 0.15)},
                   .from = haiku,
                   .effort = {},
                   .upgrade = movingTo(opus, 4, 0.15 * 5)},
        UpgradeRow{.name = "from fable only effort",
                   .rooms = {room(on(fable), 0.5)},
                   .from = fable,
                   .effort = EffortLevel::high,
                   .upgrade = raising(EffortLevel::max, 2, 0.8)},
        UpgradeRow{.name = "a smaller step where the larger is too much",
                   .rooms = {room(on(fable), 0.6)},
                   .from = fable,
                   .effort = EffortLevel::high,
                   .upgrade = raising(EffortLevel::xhigh, 1, 0.6 * 1.3)},
        UpgradeRow{.name = "an unknown effort stays as the model moves",
                   .rooms = {room(on(sonnet), 0.1)},
                   .from = sonnet,
                   .effort = {},
                   .upgrade = movingTo(fable, 4, 0.1 * 2 / 0.6)},
        UpgradeRow{.name = "from max only the model",
                   .rooms = {room(withEffort(on(opus), EffortLevel::max), 0.1)},
                   .effort = EffortLevel::max,
                   .upgrade = movingTo(fable, 2, 0.2)},
        UpgradeRow{.name = "lands at 85 percent",
                   .rooms = {room(on(opus), 0.85 / 2)},
                   .effort = {},
                   .upgrade = movingTo(fable, 2, 0.85)},
        UpgradeRow{
            .name = "lands a hair above", .rooms = {room(on(opus), justAbove(0.85) / 2)}, .effort = {}, .upgrade = {}},
        UpgradeRow{.name = "85 percent of the limit",
                   .rooms = {{.kind = WindowKind::weeklyAll, .space = on(opus), .endFraction = 0.25, .limit = 0.5}},
                   .effort = {},
                   .upgrade = {}},
        UpgradeRow{.name = "85 percent of a larger limit",
                   .rooms = {{.kind = WindowKind::weeklyAll, .space = on(opus), .endFraction = 0.5, .limit = 1.25}},
                   .effort = {},
                   .upgrade = movingTo(fable, 2, 1.0)},
        UpgradeRow{.name = "only what is to come is changed",
                   .rooms = {{.kind = WindowKind::weeklyAll, .space = on(opus), .used = 0.5, .endFraction = 0.6}},
                   .effort = {},
                   .upgrade = movingTo(fable, 2, 0.7)},
        UpgradeRow{.name = "an end below what is used is what is used",
                   .rooms = {{.kind = WindowKind::weeklyAll, .space = on(opus), .used = 0.5, .endFraction = 0.4}},
                   .effort = {},
                   .upgrade = movingTo(fable, 2, 0.5)}),
    TestSupport::rowName);

/// Fable, or the highest effort, costs so many times as much.
WhatIfSpace raisedBy(double fablePrice, double maxEffort) {
    return withMultipliers(withPrices(on(opus), {{opus, 1.0}, {fable, fablePrice}}),
                           {{EffortLevel::high, 1.0}, {EffortLevel::xhigh, 1.25}, {EffortLevel::max, maxEffort}});
}

INSTANTIATE_TEST_SUITE_P(Ties, UpgradeTest,
                         testing::Values(UpgradeRow{.name = "the effort lands lower",
                                                    .rooms = {room(raisedBy(1.625, 1.5), 0.5)},
                                                    .upgrade = raising(EffortLevel::max, 2, 0.75)},
                                         UpgradeRow{.name = "the model lands lower",
                                                    .rooms = {room(raisedBy(1.5, 1.625), 0.5)},
                                                    .upgrade = movingTo(fable, 2, 0.75)},
                                         UpgradeRow{.name = "both land alike",
                                                    .rooms = {room(raisedBy(1.5, 1.5), 0.5)},
                                                    .upgrade = raising(EffortLevel::max, 2, 0.75)},
                                         UpgradeRow{.name = "the fullest window counts, not the last or the sum",
                                                    .rooms = {room(raisedBy(7.5, 1.0), 0.1, WindowKind::session5h),
                                                              room(raisedBy(1.5, 1.625), 0.5, WindowKind::weeklyAll)},
                                                    .upgrade = Upgrade{.model = fable,
                                                                       .effort = {},
                                                                       .landings = {{WindowKind::session5h, 0.75},
                                                                                    {WindowKind::weeklyAll, 0.75}},
                                                                       .gain = 2}},
                                         UpgradeRow{.name = "nor the first",
                                                    .rooms = {room(raisedBy(1.5, 1.625), 0.5, WindowKind::session5h),
                                                              room(raisedBy(7.5, 1.0), 0.1, WindowKind::weeklyAll)},
                                                    .upgrade = Upgrade{.model = fable,
                                                                       .effort = {},
                                                                       .landings = {{WindowKind::session5h, 0.75},
                                                                                    {WindowKind::weeklyAll, 0.75}},
                                                                       .gain = 2}}),
                         TestSupport::rowName);

INSTANTIATE_TEST_SUITE_P(
    Windows, UpgradeTest,
    testing::Values(UpgradeRow{.name = "every window must afford it",
                               .rooms = {room(on(opus), 0.1, WindowKind::session5h), room(on(opus), 0.6)},
                               .effort = {},
                               .upgrade = {}},
                    UpgradeRow{
                        .name = "one window that it applies to is enough",
                        .rooms = {room(on(fable, 0.0), 0.8, WindowKind::session5h), room(on(fable), 0.5)},
                        .from = fable,
                        .upgrade = Upgrade{.model = {},
                                           .effort = EffortLevel::max,
                                           .landings = {{WindowKind::session5h, 0.8}, {WindowKind::weeklyAll, 0.8}},
                                           .gain = 2}},
                    UpgradeRow{.name = "two windows of one kind land as the last",
                               .rooms = {room(on(opus), 0.1), room(on(opus), 0.2)},
                               .effort = {},
                               .upgrade = movingTo(fable, 2, 0.4)}),
    TestSupport::rowName);

Room opusWeek(const Shares& byFamily, double used, double endFraction) {
    return {.kind = WindowKind::weeklyOpus,
            .space = withMix(on(opus), byFamily),
            .used = used,
            .endFraction = endFraction,
            .limit = 1.0};
}

Upgrade inOpusWeek(std::optional<ModelClass> model, std::optional<EffortLevel> effort, std::int64_t gain,
                   double landing) {
    return {.model = model, .effort = effort, .landings = {{WindowKind::weeklyOpus, landing}}, .gain = gain};
}

INSTANTIATE_TEST_SUITE_P(
    OpusWeek, UpgradeTest,
    testing::Values(UpgradeRow{.name = "another class adds nothing to it",
                               .rooms = {opusWeek({{haiku, 0.5}, {opus, 0.5}}, 0.4, 0.8)},
                               .from = haiku,
                               .effort = {},
                               .upgrade = inOpusWeek(sonnet, {}, 2, 0.4)},
                    UpgradeRow{.name = "another class at any effort adds nothing to it",
                               .rooms = {opusWeek({{haiku, 0.5}, {opus, 0.5}}, 0.4, 0.8)},
                               .from = haiku,
                               .effort = EffortLevel::high,
                               .upgrade = inOpusWeek(sonnet, EffortLevel::max, 4, 0.4)},
                    UpgradeRow{.name = "without a share of its own it cannot tell",
                               .rooms = {opusWeek({{sonnet, 1.0}}, 0.1, 0.1)},
                               .from = sonnet,
                               .effort = {},
                               .upgrade = {}},
                    UpgradeRow{.name = "a share of next to nothing is none",
                               .rooms = {opusWeek({{sonnet, 1.0}, {opus, 1e-9}}, 0.1, 0.1)},
                               .from = sonnet,
                               .effort = {},
                               .upgrade = {}},
                    UpgradeRow{.name = "a share of a little more is one",
                               .rooms = {opusWeek({{sonnet, 1.0}, {opus, justAbove(1e-9)}}, 0.1, 0.1)},
                               .from = sonnet,
                               .effort = {},
                               .upgrade = inOpusWeek(fable, {}, 4, 0.1)},
                    UpgradeRow{.name = "all of the burn moves onto its share",
                               .rooms = {opusWeek({{sonnet, 0.75}, {opus, 0.25}}, 0.0, 0.1)},
                               .from = sonnet,
                               .effort = {},
                               .upgrade = inOpusWeek(opus, {}, 2, 0.1 * (0.75 / 0.6 + 0.25) / 0.25)},
                    UpgradeRow{.name = "fable is part of its share",
                               .rooms = {opusWeek({{sonnet, 0.5}, {opus, 0.25}, {fable, 0.25}}, 0.0, 0.25)},
                               .from = sonnet,
                               .effort = {},
                               .upgrade = inOpusWeek(opus, {}, 2, 0.25 * (0.5 / 0.6 + 0.25 + 0.125) / 0.5)},
                    UpgradeRow{.name = "effort counts on top of the model",
                               .rooms = {opusWeek({{opus, 1.0}}, 0.0, 0.25)},
                               .upgrade = inOpusWeek(fable, EffortLevel::max, 4, 0.25 * 2 * 1.6)},
                    UpgradeRow{.name = "effort alone counts as everywhere",
                               .rooms = {opusWeek({{sonnet, 0.75}, {opus, 0.25}}, 0.0, 0.5)},
                               .from = sonnet,
                               .upgrade = inOpusWeek({}, EffortLevel::max, 2, 0.8)},
                    UpgradeRow{.name = "the whole week counts every class",
                               .rooms = {room(withMix(on(opus), {{sonnet, 0.75}, {opus, 0.25}}), 0.1)},
                               .from = sonnet,
                               .effort = {},
                               .upgrade = movingTo(fable, 4, 0.1 * (0.75 * 2 / 0.6 + 0.25 * 2))}),
    TestSupport::rowName);

} // namespace
} // namespace UsageEngine
