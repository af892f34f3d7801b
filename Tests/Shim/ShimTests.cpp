// The helper as a whole program, run as Claude Code runs it.

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/TemporaryFolder.h"
#include "UsageGauge/GaugeReader.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"

namespace {

namespace fs = std::filesystem;
using UsageModel::readWholeFile;

const std::string document =
    R"({"session_id":"s","rate_limits":{"five_hour":{"used_percentage":42.4,"resets_at":1790000000},)"
    R"("seven_day":{"used_percentage":18}}})";
const std::string noLimits = R"({"session_id":"s","model":{"id":"m"}})";

struct Finished {
    int status = -1;
    std::string out;
    std::string err;
};

class ShimTest : public testing::Test {
protected:
    /// Runs the helper with a document on its standard input; `environment` is a shell's, before a command.
    [[nodiscard]] Finished run(const std::string& input, const std::string& environment = "") const {
        TestSupport::writeFile(folder_ / "in", input);
        const std::string command = "cd " + folder_.path().string() +
                                    " && env -i PATH=\"$PATH\" HOME=" + home().string() + " " + environment +
                                    " " SHIM_PROGRAM " <in >out 2>err";
        const int status = std::system(command.c_str());
        return {WEXITSTATUS(status), readWholeFile(folder_ / "out"), readWholeFile(folder_ / "err")};
    }
    /// Runs it with a command to wrap; the command must hold no single quote.
    [[nodiscard]] Finished wrap(const std::string& command, const std::string& input = document) const {
        return run(input, "HWL_WRAPPED_STATUSLINE='" + command + "'");
    }
    [[nodiscard]] fs::path home() const { return folder_ / "home"; }
    [[nodiscard]] fs::path gauge() const { return UsageModel::AppPaths(home()).gaugeFile(); }
    [[nodiscard]] std::optional<UsageModel::GaugeReading> reading() const {
        return UsageGauge::GaugeReader{gauge()}.read();
    }

    TestSupport::TemporaryFolder folder_;
};

/// Waits until a search for a process finds none.
void expectSoonGone(const std::string& search) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    const auto livesOn = [&] { return std::system(search.c_str()) == 0; };
    while (livesOn() && std::chrono::steady_clock::now() < end) std::this_thread::yield();
    EXPECT_FALSE(livesOn());
}

double secondsNow() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

TEST_F(ShimTest, StoresTheReadingAndTellsIt) {
    const double before = secondsNow();
    const Finished done = run(document);
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.out, "5h 42% · 7d 18%\n");
    EXPECT_EQ(done.err, "");
    const auto stored = reading();
    ASSERT_TRUE(stored);
    EXPECT_GE(stored->capturedAt, before);
    EXPECT_LE(stored->capturedAt, secondsNow());
    EXPECT_EQ(stored->source, "statusLine");
    EXPECT_EQ(stored->windows.at("five_hour"),
              (UsageModel::GaugeWindow{.usedPercentage = 42.4, .resetsAt = 1790000000.0}));
    EXPECT_EQ(fs::status(gauge()).permissions(), fs::perms{0600});
    EXPECT_EQ(fs::status(gauge().parent_path()).permissions(), fs::perms{0700});
    EXPECT_EQ(std::distance(fs::directory_iterator(gauge().parent_path()), {}), 1) << "nothing is left beside";
}

TEST_F(ShimTest, WithoutLimitsSaysNothingAndKeepsTheLastReading) {
    ASSERT_EQ(run(document).status, 0);
    const std::string kept = readWholeFile(gauge());
    for (const std::string& input :
         {noLimits, std::string(), std::string("no JSON"), std::string("[]"), std::string(R"({"rate_limits":{}})"),
          std::string(R"({"rate_limits":5})"), std::string(R"({"rate_limits":{"five_hour":{"resets_at":5}}})"),
          std::string(1 << 20, '['), std::string("\0\xFF", 2)}) {
        const Finished done = run(input);
        EXPECT_EQ(done.status, 0);
        EXPECT_EQ(done.out, "");
        EXPECT_EQ(done.err, "");
        EXPECT_EQ(readWholeFile(gauge()), kept);
    }
}

TEST_F(ShimTest, AGaugeThatCannotBeWrittenSpoilsNothing) {
    TestSupport::writeFile(home() / "Library", "in the way");
    EXPECT_EQ(run(document).out, "5h 42% · 7d 18%\n");
    EXPECT_EQ(wrap("cat").out, document);
}

TEST_F(ShimTest, WithoutAHomeTheStatusLineAppears) {
    const Finished done = run(document, "HOME=");
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.out, "5h 42% · 7d 18%\n");
    EXPECT_FALSE(reading());
}

TEST_F(ShimTest, TheWrappedCommandGetsTheSameBytesAndKeepsItsOutputs) {
    const Finished done = wrap("cat; echo trouble >&2; exit 3");
    EXPECT_EQ(done.status, 3);
    EXPECT_EQ(done.out, document);
    EXPECT_EQ(done.err, "trouble\n");
    EXPECT_TRUE(reading()) << "stored before";
}

TEST_F(ShimTest, TheWrappedCommandRunsWhateverTheInput) {
    EXPECT_EQ(wrap("cat", "no JSON").out, "no JSON");
    EXPECT_EQ(wrap("wc -c", "").out, "0\n");
}

TEST_F(ShimTest, InputThatIsLeftUnreadHoldsNobodyUp) {
    const std::string large(3'000'000, 'x');
    EXPECT_EQ(wrap("echo none", large).out, "none\n");
    EXPECT_EQ(wrap("head -c 4", large).out, "xxxx");
    EXPECT_EQ(wrap("wc -c", large).out, "3000000\n");
}

TEST_F(ShimTest, TheWrappedCommandDoesNotSeeThatItIsWrapped) {
    EXPECT_EQ(wrap("echo \"[${HWL_WRAPPED_STATUSLINE-unset}]\"").out, "[unset]\n");
}

TEST_F(ShimTest, TheWrappedCommandHasAProcessGroupOfItsOwn) {
    EXPECT_EQ(wrap("test \"$(ps -o pgid= -p $$ | tr -d \" \")\" = $$ && echo own").out, "own\n");
}

TEST_F(ShimTest, AnEmptyCommandIsNone) {
    EXPECT_EQ(wrap("").out, "5h 42% · 7d 18%\n");
}

TEST_F(ShimTest, ACommandThatIsNotThereFailsAsInAShell) {
    const Finished done = wrap("no-such-command-here");
    EXPECT_EQ(done.status, 127);
    EXPECT_EQ(done.out, "");
}

TEST_F(ShimTest, ASignalThatEndsTheCommandIsToldAsAShellDoes) {
    EXPECT_EQ(wrap("kill -TERM $$").status, 128 + SIGTERM);
}

TEST_F(ShimTest, ACommandThatNeverEndsIsEnded) {
    const auto start = std::chrono::steady_clock::now();
    const Finished done = wrap("echo begun; echo $$ >group; sleep 1000 & sleep 1000");
    EXPECT_EQ(done.status, 128 + SIGKILL);
    EXPECT_EQ(done.out, "begun\n");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
    const pid_t group = std::stoi(readWholeFile(folder_ / "group"));
    // What was started in the background is gone too, or is about to be buried by the system.
    expectSoonGone("ps -eo pgid=,stat= | grep -q '^ *" + std::to_string(group) + " [^Z]'");
}

TEST_F(ShimTest, ASignalToTheHelperEndsTheCommandToo) {
    const pid_t shim = fork();
    if (shim == 0) {
        setenv("HOME", home().c_str(), 1);
        const std::string started = folder_ / "started";
        setenv("HWL_WRAPPED_STATUSLINE",
               ("echo $$ >" + started + ".tmp; mv " + started + ".tmp " + started + "; sleep 1000").c_str(), 1);
        if (freopen("/dev/null", "r", stdin) == nullptr) _exit(126);
        execl(SHIM_PROGRAM, SHIM_PROGRAM, static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    while (!fs::exists(folder_ / "started")) ASSERT_EQ(waitpid(shim, &status, WNOHANG), 0) << "it has ended";
    const pid_t command = std::stoi(readWholeFile(folder_ / "started"));
    kill(shim, SIGTERM);
    waitpid(shim, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 128 + SIGTERM);
    expectSoonGone("ps -o stat= -p " + std::to_string(command) + " | grep -q '^[^Z]'");
}

TEST_F(ShimTest, AReaderThatIsGoneIsNoFailure) {
    TestSupport::writeFile(folder_ / "in", document);
    const std::string command = "cd " + folder_.path().string() + "; { env HOME=" + home().string() +
                                " " SHIM_PROGRAM " <in; echo $? >status; } | true";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(readWholeFile(folder_ / "status"), "0\n");
}

TEST_F(ShimTest, ManyAtOnceLeaveAWholeFileAndNoLitter) {
    ASSERT_EQ(run(document).status, 0);
    constexpr int writers = 8;
    constexpr auto span = std::chrono::seconds(10);
    const auto end = std::chrono::steady_clock::now() + span;
    std::vector<pid_t> children;
    for (int i = 0; i < writers; ++i) {
        children.push_back(fork());
        if (children.back() != 0) continue;
        const std::string command =
            "HOME=" + home().string() + " " SHIM_PROGRAM " <" + (folder_ / "in").string() + " >/dev/null";
        while (std::chrono::steady_clock::now() < end) {
            if (std::system(command.c_str()) != 0) _exit(1);
        }
        _exit(0);
    }
    long readings = 0;
    while (std::chrono::steady_clock::now() < end) {
        ASSERT_TRUE(reading()) << "after " << readings;
        ++readings;
    }
    for (const pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_GT(readings, 1000);
    EXPECT_EQ(std::distance(fs::directory_iterator(gauge().parent_path()), {}), 1);
}

} // namespace
