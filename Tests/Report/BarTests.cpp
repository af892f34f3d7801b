#include "Report/Bar.h"

#include <gmock/gmock.h>

#include "UsageModel/Rows.h"

namespace Report {
namespace {

struct BarRow : TestSupport::Named {
    Bar bar;
    std::string_view drawn;
};

class BarTest : public testing::TestWithParam<BarRow> {};

TEST_P(BarTest, IsDrawnInItsColumns) {
    EXPECT_EQ(written(drawn(GetParam().bar), {.unicode = true}), GetParam().drawn);
    EXPECT_EQ(drawn(GetParam().bar).columns(), GetParam().bar.columns);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BarTest,
    testing::Values(BarRow{{"empty"}, {.columns = 4, .filled = 0}, "░░░░"},
                    BarRow{{"full"}, {.columns = 4, .filled = 1}, "████"},
                    BarRow{{"half a column"}, {.columns = 4, .filled = 0.375}, "█▌░░"},
                    BarRow{{"a trace shows"}, {.columns = 4, .filled = 1e-9}, "▏░░░"},
                    BarRow{{"beyond full"}, {.columns = 4, .filled = 7}, "████"},
                    BarRow{{"below nothing"}, {.columns = 4, .filled = -1}, "░░░░"},
                    BarRow{{"mark at the start"}, {.columns = 4, .filled = 0.5, .mark = 0}, "┃█░░"},
                    BarRow{{"mark in the middle"}, {.columns = 4, .filled = 1, .mark = 0.5}, "██┃█"},
                    BarRow{{"mark at the end"}, {.columns = 4, .filled = 0, .mark = 1}, "░░░┃"},
                    BarRow{{"no room"}, {.columns = 0, .filled = 1, .mark = 1}, ""}),
    TestSupport::rowName);

TEST(Bar, WhatLiesBeyondTheMarkHasAnInkOfItsOwn) {
    const Line line = drawn({.columns = 4, .filled = 0.8, .mark = 0.3, .beyondMark = Ink::critical});
    EXPECT_THAT(line.pieces(),
                testing::ElementsAre(Piece{"█", Ink::good}, Piece{"┃", Ink::strong}, Piece{"█▎", Ink::critical}));
}

} // namespace
} // namespace Report
