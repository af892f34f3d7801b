#include <array>
#include <cerrno>
#include <cstdio>
#include <ostream>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"

namespace {

struct Outcome {
    /// Both streams: a failure is a line of text too.
    std::string output;
    int status = -1;
};

Outcome runProgram(const std::string& arguments) {
    const TestSupport::TemporaryFolder home;
    const std::string command = "HOME='" + home.path().string() + "' '" BRINDLEWICK_PROGRAM "' " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) throw std::system_error(errno, std::generic_category(), "popen");
    Outcome outcome;
    std::array<char, 256> chunk{};
    while (std::fgets(chunk.data(), chunk.size(), pipe) != nullptr) outcome.output += chunk.data();
    outcome.status = pclose(pipe);
    return outcome;
}

struct Row {
    const char* arguments;
    const char* line;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.arguments;
}

class EntryPoint : public testing::TestWithParam<Row> {};

TEST_P(EntryPoint, SaysInOneLineWhatIsNotBuiltYet) {
    const Outcome outcome = runProgram(GetParam().arguments);
    EXPECT_EQ(outcome.output, std::string(GetParam().line) + "\n");
    EXPECT_EQ(outcome.status, 0);
}

constexpr const char* application =
    "the menu-bar program is not built into this version yet; brindlewick-report shows the numbers";

INSTANTIATE_TEST_SUITE_P(
    Jobs, EntryPoint,
    testing::Values(Row{"", application}, Row{"--dump-chart", application}, Row{"--unknown", application},
                    Row{"--dump-meter a.png", "--dump-meter is not built into this version yet"},
                    Row{"--dump-menubar a.png --scale 2", "--dump-menubar is not built into this version yet"},
                    Row{"--dump-chart d", "--dump-chart is not built into this version yet"},
                    Row{"--dump-iconset d", "--dump-iconset is not built into this version yet"},
                    Row{"--notify-test", "--notify-test is not built into this version yet"},
                    Row{"--dump-chart-live d", "--dump-chart-live is not built into this version yet"},
                    Row{"--dump-ui d", "--dump-ui is not built into this version yet"}));

} // namespace
