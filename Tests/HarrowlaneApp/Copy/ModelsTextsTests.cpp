#include "HarrowlaneApp/Copy/ModelsTexts.h"

#include <gmock/gmock.h>

namespace HarrowlaneApp {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using UsageModel::ModelClass;

TEST(ModelRows, AreAllFamiliesInTheirOrder) {
    const auto rows =
        ModelsTexts::rows({.byClass = {{ModelClass::haiku, 0.2}, {ModelClass::opus, 1.0}, {ModelClass::fable, 0.8}}});
    ASSERT_THAT(rows, SizeIs(5));
    EXPECT_EQ(rows[0].name, "Opus");
    EXPECT_EQ(rows[0].percentNumber, "50");
    EXPECT_EQ(rows[0].share, 0.5);
    EXPECT_EQ(rows[2].name, "Sonnet");
    EXPECT_EQ(rows[2].percentNumber, "0");
    EXPECT_FALSE(rows[2].isUsed);
    EXPECT_EQ(rows[4].name, "Other");
}

TEST(ModelRows, OfNothingAreNone) {
    EXPECT_THAT(ModelsTexts::rows({}), IsEmpty());
    EXPECT_THAT(ModelsTexts::rows({.byClass = {{ModelClass::opus, 0.0}}}), IsEmpty());
}

TEST(ModelNote, TellsOfTheSharedCapWhereBothAreInUse) {
    using UsageModel::EnumMap;
    const auto note = [](const EnumMap<ModelClass, double>& byClass) { return ModelsTexts::note({byClass}); };
    EXPECT_EQ(note({{ModelClass::opus, 0.45}, {ModelClass::fable, 0.43}, {ModelClass::sonnet, 0.12}}),
              "Opus and Fable share the same weekly cap — together they are 88% of this week.");
    EXPECT_EQ(note({{ModelClass::opus, 1.0}, {ModelClass::fable, 0.0}}), std::nullopt);
    EXPECT_EQ(note({{ModelClass::fable, 1.0}}), std::nullopt);
    EXPECT_EQ(note({}), std::nullopt);
    EXPECT_EQ(note({{ModelClass::opus, 1.0}, {ModelClass::fable, 1.0}, {ModelClass::other, -5.0}}), std::nullopt)
        << "shares of a negative total say nothing";
}

} // namespace
} // namespace HarrowlaneApp
