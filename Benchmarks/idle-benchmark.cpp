// What the program takes while there is nothing new: wake-ups between refreshes, processor, memory.
//
// idle-benchmark   BENCHMARK_SECONDS sets for how long it is watched, 120 otherwise.

#include <chrono>
#include <cstdlib>
#include <optional>
#include <stdexcept>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include "HarrowlaneApp/Store/UsageStore.h"
#include "Support/Figures.h"
#include "Support/PrivateDesktop.h"
#include "Support/Processes.h"
#include "Support/UsersHome.h"

namespace {

using HarrowlaneApp::ChildProcess;
using HarrowlaneApp::UsageStore;
using Clock = std::chrono::steady_clock;

constexpr double wakeUpsASecond = 0.1;
constexpr double percentOfACore = 0.3;
constexpr double timesBareApplication = 1.8;
/// The first run, and what starts with it.
constexpr double settlingSeconds = 20.0;
constexpr double sampleSeconds = 0.5;
/// A refresh is through by then; and the next has not begun.
constexpr double restBegins = 3.0;
constexpr double restEnds = UsageStore::periodSeconds - 2.0;
/// So many wake-ups within one sample are a refresh.
constexpr std::int64_t refreshWakeUps = 8;

void rest(double seconds) {
    QEventLoop loop;
    QTimer::singleShot(std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::duration<double>(seconds)),
                       &loop, &QEventLoop::quit);
    loop.exec();
}

double wishedSeconds() {
    const char* text = std::getenv("BENCHMARK_SECONDS");
    return text != nullptr ? std::strtod(text, nullptr) : 120.0;
}

/// The wake-ups of a process, and those of them that are not in a refresh.
class WakeUps {
public:
    explicit WakeUps(pid_t process) : process_(process), last_(Bench::useOf(process)) {}

    void sample() {
        const auto start = Clock::now();
        rest(sampleSeconds);
        const Bench::ProcessUse now = Bench::useOf(process_);
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        const std::int64_t woken = Bench::wakeUpsBetween(last_, now);
        last_ = now;
        all_ += woken;
        sinceRefresh_ = woken >= refreshWakeUps ? 0.0 : sinceRefresh_ + seconds;
        if (sinceRefresh_ < restBegins || sinceRefresh_ > restEnds) return;
        resting_ += woken;
        restSeconds_ += seconds;
    }

    [[nodiscard]] std::int64_t all() const { return all_; }
    [[nodiscard]] double aSecondOfRest() const {
        if (restSeconds_ == 0.0) throw std::runtime_error("there was no rest between refreshes");
        return static_cast<double>(resting_) / restSeconds_;
    }

private:
    pid_t process_;
    Bench::ProcessUse last_;
    double sinceRefresh_ = 0.0;
    std::int64_t all_ = 0;
    std::int64_t resting_ = 0;
    double restSeconds_ = 0.0;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const Bench::UsersHome home(argv[0]);
    Bench::PrivateDesktop desktop;
    const HarrowlaneApp::StubWatcher panel(desktop.bus().connect());
    const auto program = [&](const char* name) { return Bench::programBeside(argv[0], name); };
    const auto folder = home.paths().home();
    const ChildProcess bare(desktop.startOf(program("empty-tray"), folder, {"--bare"}));
    const ChildProcess ours(desktop.startOf(program("Brindlewick"), folder));
    rest(settlingSeconds);
    if (!ours.isRunning()) throw std::runtime_error("the program has ended");

    const auto process = static_cast<pid_t>(ours.processId());
    const Bench::ProcessUse before = Bench::useOf(process);
    const auto start = Clock::now();
    const auto secondsPassed = [&] { return std::chrono::duration<double>(Clock::now() - start).count(); };
    WakeUps wakeUps(process);
    while (secondsPassed() < wishedSeconds()) wakeUps.sample();
    const double cpuSeconds = Bench::useOf(process).cpuSeconds - before.cpuSeconds;

    const double resident = Bench::residentBytes(process) - Bench::UsersHome::bytesOfTurns;
    const double measure = Bench::residentBytes(static_cast<pid_t>(bare.processId()));
    std::printf("%12.4f wake-ups a second, refreshes included\n%12.4f MB  program\n%12.4f MB  bare_application\n",
                static_cast<double>(wakeUps.all()) / secondsPassed(), Bench::residentBytes(process) / 1e6,
                measure / 1e6);
    const std::array<bool, 3> met{
        Bench::isMet({"wake-ups between refreshes", wakeUps.aSecondOfRest(), "a second", wakeUpsASecond}),
        Bench::isMet(
            {"processor while nothing is new", cpuSeconds / secondsPassed() * 100.0, "% of a core", percentOfACore}),
        Bench::isMet({"resident memory without 80 bytes a turn", resident / measure, "times a bare application",
                      timesBareApplication}),
    };
    return std::ranges::all_of(met, std::identity()) ? 0 : 1;
}
