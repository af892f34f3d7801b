#include "UsageModel/EnumMap.h"

#include <string>

#include <gmock/gmock.h>

#include "UsageModel/EffortLevel.h"

namespace UsageModel {
namespace {

using testing::ElementsAre;
using testing::Pair;
using Map = EnumMap<EffortLevel, double>;

TEST(EnumMap, IsEmptyAtFirst) {
    const Map map;
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.size(), 0U);
    EXPECT_EQ(map.begin(), map.end());
    for (const EffortLevel level : allCases<EffortLevel>) EXPECT_FALSE(map.contains(level));
}

TEST(EnumMap, TellsAnAbsentKeyFromAZero) {
    const Map map{{EffortLevel::low, 0.0}};
    EXPECT_TRUE(map.contains(EffortLevel::low));
    EXPECT_EQ(map.find(EffortLevel::low), 0.0);
    EXPECT_EQ(map.find(EffortLevel::max), std::nullopt);
    EXPECT_EQ(map.valueOr(EffortLevel::low, 7.0), 0.0);
    EXPECT_EQ(map.valueOr(EffortLevel::max, 7.0), 7.0);
    EXPECT_FALSE(map.empty());
    EXPECT_NE(map, Map{});
}

TEST(EnumMap, WalksInTheOrderOfTheEnumeration) {
    const Map map{{EffortLevel::max, 3.0}, {EffortLevel::low, 1.0}, {EffortLevel::high, 2.0}};
    EXPECT_EQ(map.size(), 3U);
    std::vector<std::pair<EffortLevel, double>> walked;
    for (const auto& entry : map) walked.push_back(entry);
    EXPECT_THAT(walked,
                ElementsAre(Pair(EffortLevel::low, 1.0), Pair(EffortLevel::high, 2.0), Pair(EffortLevel::max, 3.0)));
}

TEST(EnumMap, AStepBehindGivesTheEntryBeforeIt) {
    const Map map{{EffortLevel::medium, 1.0}, {EffortLevel::max, 2.0}};
    auto place = map.begin();
    EXPECT_EQ((*place++).first, EffortLevel::medium);
    EXPECT_EQ((*place).first, EffortLevel::max);
    EXPECT_EQ(++place, map.end());
}

TEST(EnumMap, TheLaterOfTwoValuesForAKeyCounts) {
    Map map{{EffortLevel::low, 1.0}, {EffortLevel::low, 2.0}};
    EXPECT_EQ(map.find(EffortLevel::low), 2.0);
    map.set(EffortLevel::low, 3.0);
    EXPECT_EQ(map.find(EffortLevel::low), 3.0);
    EXPECT_EQ(map.size(), 1U);
}

TEST(EnumMap, AnIndexMakesTheMissingValue) {
    Map map;
    map[EffortLevel::high] += 1.5;
    map[EffortLevel::high] += 1.5;
    EXPECT_EQ(map, (Map{{EffortLevel::high, 3.0}}));
    EXPECT_EQ(map[EffortLevel::low], 0.0);
    EXPECT_TRUE(map.contains(EffortLevel::low));
}

TEST(EnumMap, HoldsValuesThatOwnMemory) {
    EnumMap<ModelClass, std::string> map{{ModelClass::opus, std::string(100, 'x')}};
    map[ModelClass::other] = "y";
    const auto copy = map;
    map.set(ModelClass::opus, "changed");
    EXPECT_EQ(copy.find(ModelClass::opus), std::string(100, 'x'));
    EXPECT_EQ(copy.valueOr(ModelClass::haiku, "none"), "none");
}

TEST(EnumMap, EqualityIsByKeysAndValues) {
    const Map map{{EffortLevel::low, 1.0}, {EffortLevel::max, 2.0}};
    EXPECT_EQ(map, (Map{{EffortLevel::max, 2.0}, {EffortLevel::low, 1.0}}));
    EXPECT_NE(map, (Map{{EffortLevel::low, 1.0}}));
    EXPECT_NE(map, (Map{{EffortLevel::low, 1.0}, {EffortLevel::max, 2.5}}));
}

TEST(SumOfValues, AddsInTheOrderOfTheEnumeration) {
    EXPECT_EQ(sumOfValues(Map{}), 0.0);
    EXPECT_EQ(sumOfValues(Map{{EffortLevel::low, 1.0}, {EffortLevel::max, -3.0}}), -2.0);
    // In this order the small value is lost in the large one; in the order of insertion it would not be.
    const Map map{{EffortLevel::max, -1e20}, {EffortLevel::high, 1e20}, {EffortLevel::low, 1.0}};
    EXPECT_EQ(sumOfValues(map), 0.0);
}

} // namespace
} // namespace UsageModel
