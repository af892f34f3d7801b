// What the program takes while there is nothing new: wake-ups between refreshes, processor, memory.
//
// idle-benchmark   BENCHMARK_SECONDS sets for how long it is watched, 120 otherwise.

#include <chrono>
#include <cstdlib>
#include <optional>
#include <stdexcept>

#include <QCoreApplication>

#include "HarrowlaneApp/Store/UsageStore.h"
#include "Support/Figures.h"
#include "Support/PrivateDesktop.h"
#include "Support/Processes.h"
#include "Support/UsersHome.h"

namespace {

using HarrowlaneApp::ChildProcess;
using HarrowlaneApp::UsageStore;

constexpr double wakeUpsASecond = 0.1;
constexpr double percentOfACore = 0.3;
constexpr double timesBareApplication = 1.8;
constexpr double bytesATurn = 80.0;
/// The first run, and what starts with it.
constexpr double settlingSeconds = 20.0;
constexpr double sampleSeconds = 0.5;
/// A refresh is through by then; and the next has not begun.
constexpr double restBegins = 3.0;
constexpr double restEnds = UsageStore::periodSeconds - 2.0;
/// So many wake-ups within one sample are a refresh.
constexpr std::uint64_t refreshWakeUps = 8;

void rest(double seconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (std::chrono::steady_clock::now() < end) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
    }
}

double wishedSeconds() {
    const char* text = std::getenv("BENCHMARK_SECONDS");
    return text != nullptr ? std::strtod(text, nullptr) : 120.0;
}

/// The wake-ups of the rests between refreshes.
class Rests {
public:
    explicit Rests(pid_t process) : process_(process), last_(Bench::useOf(process)) {}

    void sample() {
        rest(sampleSeconds);
        const Bench::ProcessUse now = Bench::useOf(process_);
        const std::uint64_t woken = now.wakeUps - last_.wakeUps;
        last_ = now;
        sinceRefresh_ = woken >= refreshWakeUps ? 0.0 : sinceRefresh_ + sampleSeconds;
        if (sinceRefresh_ < restBegins || sinceRefresh_ > restEnds) return;
        wakeUps_ += woken;
        seconds_ += sampleSeconds;
    }

    [[nodiscard]] double wakeUpsASecond() const {
        if (seconds_ == 0.0) throw std::runtime_error("there was no rest between refreshes");
        return static_cast<double>(wakeUps_) / seconds_;
    }

private:
    pid_t process_;
    Bench::ProcessUse last_;
    double sinceRefresh_ = 0.0;
    std::uint64_t wakeUps_ = 0;
    double seconds_ = 0.0;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const Bench::UsersHome home(argv[0]);
    Bench::PrivateDesktop desktop;
    const HarrowlaneApp::StubWatcher panel(desktop.bus().connect());
    const auto startOf = [&](const char* name, const QStringList& arguments) {
        return ChildProcess::Start{.program = QString::fromStdString(Bench::programBeside(argv[0], name)),
                                   .arguments = arguments,
                                   .variables = desktop.variables(home.paths().home())};
    };
    const ChildProcess bare(startOf("empty-tray", {"--bare"}));
    const ChildProcess program(startOf("Brindlewick", {}));
    rest(settlingSeconds);
    if (!program.isRunning()) throw std::runtime_error("the program has ended");

    const auto process = static_cast<pid_t>(program.processId());
    const double seconds = wishedSeconds();
    const Bench::ProcessUse before = Bench::useOf(process);
    Rests rests(process);
    for (double passed = 0.0; passed < seconds; passed += sampleSeconds) rests.sample();
    const Bench::ProcessUse after = Bench::useOf(process);

    const double resident = Bench::residentBytes(process) - bytesATurn * Bench::UsersHome::turns;
    const double measure = Bench::residentBytes(static_cast<pid_t>(bare.processId()));
    std::printf("%12.4f wake-ups a second, refreshes included\n%12.4f MB  program\n%12.4f MB  bare_application\n",
                static_cast<double>(after.wakeUps - before.wakeUps) / seconds,
                Bench::residentBytes(process) / 1e6, measure / 1e6);
    const std::array<bool, 3> met{
        Bench::isMet({"wake-ups between refreshes", rests.wakeUpsASecond(), "a second", wakeUpsASecond}),
        Bench::isMet({"processor while nothing is new", (after.cpuSeconds - before.cpuSeconds) / seconds * 100.0,
                      "% of a core", percentOfACore}),
        Bench::isMet({"resident memory without 80 bytes a turn", resident / measure, "times a bare application",
                      timesBareApplication}),
    };
    return std::ranges::all_of(met, std::identity()) ? 0 : 1;
}
