#include "UsageModel/WindowKind.h"

#include <gmock/gmock.h>

#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

using testing::ElementsAre;

struct Row : TestSupport::Named {
    WindowKind kind;
    std::string_view statusLineKey;
    std::string_view displayName;
    double nominalDuration;
};

class WindowKindTest : public testing::TestWithParam<Row> {};

TEST_P(WindowKindTest, HasItsNamesAndItsLength) {
    const Row& row = GetParam();
    EXPECT_EQ(text(row.kind), row.name);
    EXPECT_EQ(fromText<WindowKind>(row.name), row.kind);
    EXPECT_EQ(statusLineKey(row.kind), row.statusLineKey);
    EXPECT_EQ(displayName(row.kind), row.displayName);
    EXPECT_EQ(nominalDuration(row.kind), row.nominalDuration);
}

INSTANTIATE_TEST_SUITE_P(Kinds, WindowKindTest,
                         testing::Values(Row{"session5h", WindowKind::session5h, "five_hour", "Session · 5h", 18000},
                                         Row{"weeklyAll", WindowKind::weeklyAll, "seven_day", "Weekly · all", 604800},
                                         Row{"weeklyOpus", WindowKind::weeklyOpus, "seven_day_opus", "Opus · weekly",
                                             604800}),
                         TestSupport::rowName);

TEST(WindowKind, EveryKindIsThereInItsOrder) {
    EXPECT_THAT(allCases<WindowKind>,
                ElementsAre(WindowKind::session5h, WindowKind::weeklyAll, WindowKind::weeklyOpus));
}

} // namespace
} // namespace UsageModel
