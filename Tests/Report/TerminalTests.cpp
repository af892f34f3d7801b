#include "Report/Terminal.h"

#include <gtest/gtest.h>

#include "UsageModel/Rows.h"

namespace Report {
namespace {

struct TerminalRow : TestSupport::Named {
    TerminalFacts facts;
    Terminal terminal;
};

class TerminalTest : public testing::TestWithParam<TerminalRow> {};

TEST_P(TerminalTest, IsToldByTheFacts) {
    const Terminal terminal = terminalOf(GetParam().facts);
    EXPECT_EQ(terminal.columns, GetParam().terminal.columns);
    EXPECT_EQ(terminal.rows, GetParam().terminal.rows);
    EXPECT_EQ(terminal.palette, GetParam().terminal.palette);
    EXPECT_EQ(terminal.movesCursor, GetParam().terminal.movesCursor);
}

TerminalFacts window() {
    return {.isTerminal = true, .columns = 100, .rows = 30, .charset = "UTF-8", .term = "xterm-256color"};
}

TerminalFacts window(TerminalFacts facts, void (*change)(TerminalFacts&)) {
    change(facts);
    return facts;
}

const Terminal shown{.columns = 100, .rows = 30, .palette = {.colour = true, .unicode = true}, .movesCursor = true};
const Terminal plain{.columns = 100, .rows = 30, .palette = {.colour = false, .unicode = true}, .movesCursor = true};
const Terminal dumb{.columns = 100, .rows = 30, .palette = {}, .movesCursor = false};

INSTANTIATE_TEST_SUITE_P(
    Rows, TerminalTest,
    testing::Values(
        TerminalRow{{"a window"}, window(), shown},
        TerminalRow{{"NO_COLOR"}, window(window(), [](auto& f) { f.noColor = "1"; }), plain},
        TerminalRow{{"an empty NO_COLOR means nothing"}, window(window(), [](auto& f) { f.noColor = ""; }), shown},
        TerminalRow{{"a dumb one"}, window(window(), [](auto& f) { f.term = "dumb"; }), dumb},
        TerminalRow{{"one without a name"},
                    window(window(), [](auto& f) { f.term.reset(); }),
                    {.columns = 100, .rows = 30, .palette = {.unicode = true}}},
        TerminalRow{{"the console has few glyphs"},
                    window(window(), [](auto& f) { f.term = "linux"; }),
                    {.columns = 100, .rows = 30, .palette = {.colour = true}, .movesCursor = true}},
        TerminalRow{{"another charset"},
                    window(window(), [](auto& f) { f.charset = "ISO-8859-1"; }),
                    {.columns = 100, .rows = 30, .palette = {.colour = true}, .movesCursor = true}},
        TerminalRow{{"the charset in small letters"}, window(window(), [](auto& f) { f.charset = "utf8"; }), shown},
        TerminalRow{{"a window's size is worth more than COLUMNS"},
                    window(window(), [](auto& f) { f.columnsSetting = "40"; }),
                    shown},
        TerminalRow{{"a window without a size"},
                    window(window(), [](auto& f) { f.columns = f.rows = 0; }),
                    {.columns = 80, .rows = {}, .palette = {true, true}, .movesCursor = true}},
        TerminalRow{{"a pipe"}, {.charset = "UTF-8", .term = "xterm"}, {.palette = {.unicode = true}}},
        TerminalRow{{"a pipe with COLUMNS"}, {.columnsSetting = "132"}, {.columns = 132}},
        TerminalRow{{"a pipe with senseless COLUMNS"}, {.columnsSetting = "wide"}, {.columns = 80}},
        TerminalRow{{"a pipe with COLUMNS of none"}, {.columnsSetting = "0"}, {.columns = 80}},
        TerminalRow{{"a pipe with COLUMNS below none"}, {.columnsSetting = "-5"}, {.columns = 80}},
        TerminalRow{{"a pipe of the console's user draws in full"},
                    {.charset = "UTF-8", .term = "linux"},
                    {.palette = {.unicode = true}}}),
    TestSupport::rowName);

} // namespace
} // namespace Report
