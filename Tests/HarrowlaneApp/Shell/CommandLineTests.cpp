#include "HarrowlaneApp/Shell/CommandLine.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

using HarrowlaneApp::Job;
using HarrowlaneApp::jobFor;
using Kind = Job::Kind;

struct Row {
    const char* story;
    std::vector<std::string> arguments;
    Job job;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.story;
}

class CommandLine : public testing::TestWithParam<Row> {};

TEST_P(CommandLine, ChoosesTheJob) {
    const Job job = jobFor(GetParam().arguments);
    EXPECT_EQ(job.kind, GetParam().job.kind);
    EXPECT_EQ(job.path, GetParam().job.path);
    EXPECT_EQ(job.scale, GetParam().job.scale);
}

const Job application{};

INSTANTIATE_TEST_SUITE_P(
    Switches, CommandLine,
    testing::Values(
        Row{"an empty vector starts the application", {}, application},
        Row{"the name alone starts the application", {"brindlewick"}, application},
        Row{"an unknown switch is none", {"b", "--dump", "x"}, application},
        Row{"meter", {"b", "--dump-meter", "a.png"}, {Kind::dumpMeter, "a.png"}},
        Row{"menu bar", {"b", "--dump-menubar", "a.png"}, {Kind::dumpMenuBar, "a.png"}},
        Row{"chart", {"b", "--dump-chart", "d"}, {Kind::dumpChart, "d"}},
        Row{"icon set", {"b", "--dump-iconset", "d"}, {Kind::dumpIconset, "d"}},
        Row{"notification test wants no value", {"b", "--notify-test"}, {Kind::notifyTest}},
        Row{"live chart is no prefix match of the chart", {"b", "--dump-chart-live", "d"}, {Kind::dumpChartLive, "d"}},
        Row{"views", {"b", "--dump-ui", "d"}, {Kind::dumpUI, "d"}},
        Row{"both charts run the first", {"b", "--dump-chart-live", "x", "--dump-chart", "y"}, {Kind::dumpChart, "y"}},
        Row{"a switch as the last argument is absent", {"b", "--dump-chart"}, application},
        Row{"a later job serves where the first has no value",
            {"b", "--dump-ui", "d", "--dump-chart"},
            {Kind::dumpUI, "d"}},
        Row{"the meter wins over the views",
            {"b", "--dump-meter", "a.png", "--dump-ui", "b"},
            {Kind::dumpMeter, "a.png"}},
        Row{"the probe wins over the views", {"b", "--notify-test", "--dump-ui", "x"}, {Kind::notifyTest}},
        Row{"a value may look like a switch",
            {"b", "--dump-meter", "--dump-menubar", "x"},
            {Kind::dumpMeter, "--dump-menubar"}},
        Row{"only the first occurrence counts", {"b", "--dump-ui", "x", "--dump-ui", "y"}, {Kind::dumpUI, "x"}},
        Row{"the program's own name may be a switch", {"--dump-ui", "x"}, {Kind::dumpUI, "x"}},
        Row{"case counts", {"b", "--Dump-UI", "x"}, application},
        Row{"no joined values", {"b", "--dump-ui=x"}, application},
        Row{"the first occurrence counts, also when it is another's value",
            {"b", "--dump-meter", "--dump-ui", "--dump-ui", "x"},
            {Kind::dumpMeter, "--dump-ui"}},
        Row{"a first occurrence that is followed by itself has that as its value",
            {"b", "--dump-ui", "--dump-ui"},
            {Kind::dumpUI, "--dump-ui"}},
        Row{"the probe's switch as a value loses to the row before",
            {"b", "--dump-iconset", "--notify-test"},
            {Kind::dumpIconset, "--notify-test"}},
        Row{"the probe's switch as a value wins over the rows behind",
            {"b", "--dump-ui", "--notify-test"},
            {Kind::notifyTest}},
        Row{"the probe's switch may stand last", {"b", "x", "--notify-test"}, {Kind::notifyTest}},
        Row{"a path is taken unchanged", {"b", "--dump-chart", "./a//../b "}, {Kind::dumpChart, "./a//../b "}},
        Row{"a scale alone starts the application", {"b", "--scale", "2"}, application},
        Row{"an empty argument is no switch", {"", ""}, application},
        Row{"an empty value is a value", {"b", "--dump-ui", ""}, {Kind::dumpUI, ""}}));

Row scaled(const char* text, double scale) {
    return {text, {"b", "--dump-menubar", "o.png", "--scale", text}, {Kind::dumpMenuBar, "o.png", scale}};
}

INSTANTIATE_TEST_SUITE_P(
    Scales, CommandLine,
    testing::Values(
        scaled("2", 2.0), scaled("1.5", 1.5), scaled("1e1", 10.0), scaled("-1", -1.0), scaled("+2", 2.0),
        scaled("abc", 4.0), scaled("", 4.0), scaled(" 2", 4.0), scaled("2 ", 4.0), scaled("2x", 4.0),
        scaled("0x10", 4.0), scaled("inf", 4.0), scaled("nan", 4.0), scaled("1e999", 4.0), scaled("2,5", 4.0),
        scaled("+-2", 4.0), scaled("++2", 4.0), scaled("-+2", 4.0), scaled("0", 0.0), scaled(".5", 0.5),
        scaled("5.", 5.0), scaled("-.5e-1", -0.05), scaled("2E0", 2.0), scaled(".", 4.0), scaled("e1", 4.0),
        scaled("1e", 4.0), scaled("+", 4.0), scaled("\t2", 4.0), scaled("2\n", 4.0), scaled("1e-999", 4.0),
        scaled("-inf", 4.0), scaled("infinity", 4.0), scaled("0x1p3", 4.0), scaled("1_000", 4.0),
        scaled("3.25e+0", 3.25),
        scaled("\xC2\xA0"
               "2",
               4.0),
        Row{"the switch may be the path of the job as well",
            {"b", "--dump-menubar", "--scale", "2"},
            {Kind::dumpMenuBar, "--scale", 2.0}},
        Row{"the path may be the number", {"b", "--scale", "--dump-menubar", "2"}, {Kind::dumpMenuBar, "2", 4.0}},
        Row{"the first counts, also when another follows",
            {"b", "--scale", "3", "--dump-menubar", "o.png", "--scale", "2"},
            {Kind::dumpMenuBar, "o.png", 3.0}},
        Row{"nothing behind it", {"b", "--dump-menubar", "o.png", "--scale"}, {Kind::dumpMenuBar, "o.png", 4.0}},
        Row{"before the job", {"b", "--scale", "3", "--dump-menubar", "o.png"}, {Kind::dumpMenuBar, "o.png", 3.0}},
        Row{"the first counts, also when it is bad",
            {"b", "--scale", "x", "--scale", "3", "--dump-menubar", "o.png"},
            {Kind::dumpMenuBar, "o.png", 4.0}},
        Row{"for the menu bar alone",
            {"b", "--dump-meter", "o.png", "--scale", "2"},
            {Kind::dumpMeter, "o.png", 4.0}}));

} // namespace
