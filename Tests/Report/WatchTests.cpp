#include "Report/Watch.h"

#include <csignal>
#include <stdexcept>
#include <system_error>

#include <gmock/gmock.h>
#include <pty.h>
#include <unistd.h>

#include "Support/TemporaryFolder.h"
#include "UsageModel/Files.h"

namespace Report {
namespace {

using testing::EndsWith;
using testing::StartsWith;

/// A pipe that is closed when it goes away.
class Pipe {
public:
    Pipe() { EXPECT_EQ(pipe(ends_), 0); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        closeInput();
        close(ends_[0]);
    }
    [[nodiscard]] int input() const { return ends_[1]; }
    void closeInput() {
        if (ends_[1] != -1) close(ends_[1]);
        ends_[1] = -1;
    }
    [[nodiscard]] std::string rest() {
        closeInput();
        return UsageModel::readToEnd(ends_[0]);
    }

private:
    int ends_[2] = {-1, -1};
};

class WatchTest : public testing::Test {
protected:
    /// Ends the watch from its own thread, as a signal from outside would.
    static void interrupt() { pthread_kill(pthread_self(), SIGTERM); }

    [[nodiscard]] Watch watch(int output) {
        return {
            .gaugeFile = folder / "gauge.json",
            .output = output,
            .refresh = [this] { ++refreshes; },
            .page = [this](const Terminal&) { return "page " + std::to_string(refreshes) + "\n"; },
        };
    }

    TestSupport::TemporaryFolder folder;
    int refreshes = 0;
};

TEST_F(WatchTest, RefreshesWhenTheTimeIsOver) {
    Pipe pipe;
    Watch watch = this->watch(pipe.input());
    watch.secondsBetweenRefreshes = 0.01;
    watch.refresh = [this] {
        if (++refreshes == 4) interrupt();
    };
    EXPECT_EQ(watch.run(), SIGTERM);
    EXPECT_EQ(pipe.rest(), "page 2\n\npage 3\n\npage 4\n");
}

TEST_F(WatchTest, RefreshesWhenTheGaugeChanges) {
    Pipe pipe;
    Watch watch = this->watch(pipe.input());
    watch.secondsBetweenRefreshes = 3600;
    watch.refresh = [this] {
        // The first is before the folder is watched.
        if (++refreshes == 2) TestSupport::writeFile(folder / "gauge.json", "{}");
        if (refreshes == 3) interrupt();
    };
    EXPECT_EQ(watch.run(), SIGTERM);
    EXPECT_EQ(refreshes, 3);
}

TEST_F(WatchTest, WaitsWithoutWork) {
    Pipe pipe;
    Watch watch = this->watch(pipe.input());
    watch.secondsBetweenRefreshes = 0.3;
    timespec before{};
    watch.refresh = [&] {
        if (++refreshes == 2) clock_gettime(CLOCK_THREAD_CPUTIME_ID, &before);
        if (refreshes == 3) interrupt();
    };
    EXPECT_EQ(watch.run(), SIGTERM);
    timespec after{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &after);
    const double seconds =
        static_cast<double>(after.tv_sec - before.tv_sec) + static_cast<double>(after.tv_nsec - before.tv_nsec) * 1e-9;
    EXPECT_LT(seconds, 0.1);
}

TEST_F(WatchTest, EverySignalThatAsksForTheEndIsTold) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        Pipe pipe;
        Watch watch = this->watch(pipe.input());
        watch.page = [signal](const Terminal&) {
            pthread_kill(pthread_self(), signal);
            return "page\n";
        };
        EXPECT_EQ(watch.run(), signal);
    }
}

TEST_F(WatchTest, AReaderThatWentAwayIsAnError) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    std::signal(SIGPIPE, SIG_IGN);
    EXPECT_THROW((void)watch(ends[1]).run(), std::system_error);
    std::signal(SIGPIPE, SIG_DFL);
    close(ends[1]);
}

TEST_F(WatchTest, AnErrorLeavesTheTerminalAsItWas) {
    int terminal = -1;
    int output = -1;
    ASSERT_EQ(openpty(&terminal, &output, nullptr, nullptr, nullptr), 0);
    setenv("TERM", "xterm", 1);
    Watch watch = this->watch(output);
    watch.refresh = [this] {
        if (++refreshes == 2) throw std::runtime_error("broken");
    };
    EXPECT_THROW((void)watch.run(), std::runtime_error);
    close(output);
    const std::string shown = UsageModel::readToEnd(terminal);
    EXPECT_THAT(shown, StartsWith("\x1b[?1049h\x1b[?25l"));
    EXPECT_THAT(shown, EndsWith("\x1b[?25h\x1b[?1049l"));
    close(terminal);
}

TEST_F(WatchTest, SignalsActAgainAfterwards) {
    Pipe pipe;
    Watch watch = this->watch(pipe.input());
    sigset_t before;
    sigset_t after;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);
    // The first refresh is the caller's own affair: nothing is held back yet.
    watch.refresh = [this] {
        if (++refreshes == 2) interrupt();
    };
    EXPECT_EQ(watch.run(), SIGTERM);
    pthread_sigmask(SIG_SETMASK, nullptr, &after);
    EXPECT_EQ(sigismember(&before, SIGTERM), sigismember(&after, SIGTERM));
    EXPECT_EQ(sigismember(&after, SIGINT), 0);
}

} // namespace
} // namespace Report
