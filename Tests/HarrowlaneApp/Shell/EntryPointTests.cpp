#include <array>
#include <cstdio>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"

namespace {

struct Outcome {
    std::string output;
    int status = -1;
};

Outcome runProgram(const std::string& arguments) {
    const TestSupport::TemporaryFolder home;
    const std::string command = "HOME='" + home.path().string() + "' '" BRINDLEWICK_PROGRAM "' " + arguments;
    FILE* pipe = popen(command.c_str(), "r");
    Outcome outcome;
    std::array<char, 256> chunk{};
    while (std::fgets(chunk.data(), chunk.size(), pipe) != nullptr) outcome.output += chunk.data();
    outcome.status = pclose(pipe);
    return outcome;
}

TEST(EntryPoint, AJobThatIsNotBuiltSaysSoInOneLine) {
    const Outcome outcome = runProgram("--dump-meter a.png");
    EXPECT_EQ(outcome.output, "--dump-meter is not built into this version yet.\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST(EntryPoint, TheApplicationSaysSoInOneLine) {
    const Outcome outcome = runProgram("--dump-chart");
    EXPECT_EQ(outcome.output,
              "The menu bar program is not built into this version yet; brindlewick-report shows the numbers.\n");
    EXPECT_EQ(outcome.status, 0);
}

} // namespace
