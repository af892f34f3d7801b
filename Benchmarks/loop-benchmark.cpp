// How long a run holds up the main thread.
//
// What counts is the longest single thing that the event loop does in any of thirty runs: a click waits no longer than
// that. Of three times thirty the best counts, for what the program does comes again in each, and what the machine does
// beside it does not. Time in which other programs held the processor is left out.

#include <algorithm>
#include <chrono>
#include <fstream>
#include <limits>
#include <stdexcept>

#include <QApplication>

#include "HarrowlaneApp/Platform/Desktop.h"
#include "HarrowlaneApp/Platform/Display/Panel.h"
#include "HarrowlaneApp/Shell/HarrowlaneApp.h"
#include "HarrowlaneApp/Store/Memory.h"
#include "Support/Figures.h"
#include "Support/PrivateDesktop.h"
#include "Support/Processes.h"
#include "Support/UsersHome.h"

namespace {

namespace Desktop = HarrowlaneApp::Desktop;
using Program = HarrowlaneApp::HarrowlaneApp;

constexpr int rounds = 3;
constexpr int runsOfRound = 30;
constexpr double secondsAtMost = 0.008;
constexpr QPoint place(600, 10);

/// How long this thread has waited for a processor that others held, seconds: no work of the program.
double secondsInQueue() {
    double onProcessor = 0.0;
    double waiting = 0.0;
    std::ifstream("/proc/thread-self/schedstat") >> onProcessor >> waiting;
    return waiting * 1e-9;
}

double secondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count() -
           secondsInQueue();
}

/// Knows how long its longest event took, with all that followed from it.
class TimedApplication : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        if (depth_ > 0) return QApplication::notify(receiver, event);
        ++depth_;
        const double start = secondsNow();
        const bool accepted = QApplication::notify(receiver, event);
        longest_ = std::max(longest_, secondsNow() - start);
        --depth_;
        return accepted;
    }

    /// Since the last call, seconds.
    double takeLongest() { return std::exchange(longest_, 0.0); }

private:
    int depth_ = 0;
    double longest_ = 0.0;
};

/// All that `runApplication` gives the program.
struct Surroundings {
    std::unique_ptr<HarrowlaneApp::StatusItem> item = Desktop::makeStatusItem();
    std::unique_ptr<HarrowlaneApp::NotificationService> notifications = Desktop::makeNotificationService(*item);
    std::unique_ptr<HarrowlaneApp::Preferences> preferences = Desktop::makePreferences();
    std::unique_ptr<HarrowlaneApp::DesktopAppearance> appearance = Desktop::makeAppearance();
    std::unique_ptr<HarrowlaneApp::Autostart> autostart = Desktop::makeAutostart();

    [[nodiscard]] Program::Surroundings on(const UsageModel::AppPaths& paths) const {
        return {.world = {.paths = paths, .notifications = *notifications},
                .item = *item,
                .preferences = *preferences,
                .appearance = *appearance,
                .autostart = *autostart};
    }
};

class Scene {
public:
    Scene(TimedApplication& application, const UsageModel::AppPaths& paths)
        : application_(application),
          program_(surroundings_.on(paths)) {
        QObject::connect(&program_.store(), &HarrowlaneApp::UsageStore::snapshotPublished, [this] { ++published_; });
        wait([this] { return published_ > 0; });
        settle();
    }

    Program& program() { return program_; }

    /// The longest hold-up in a round of runs, in the best round, seconds.
    double holdUp() {
        double best = std::numeric_limits<double>::infinity();
        for (int round = 0; round < rounds; ++round) best = std::min(best, longestOfRound());
        return best;
    }

    /// Until what the run has brought is drawn.
    static void settle() {
        for (int round = 0; round < 10; ++round) QApplication::processEvents(QEventLoop::AllEvents, 20);
    }

private:
    double longestOfRound() {
        application_.takeLongest();
        for (int run = 0; run < runsOfRound; ++run) {
            const int before = published_;
            program_.store().refresh();
            wait([&] { return published_ > before; });
            settle();
        }
        return application_.takeLongest();
    }

    static void wait(const std::function<bool()>& condition) {
        if (!HarrowlaneApp::becomes(condition)) throw std::runtime_error("no run comes to its end");
    }

    TimedApplication& application_;
    Surroundings surroundings_;
    Program program_;
    int published_ = 0;
};

bool isMet(const char* what, double seconds) {
    return Bench::isMet({what, seconds * 1e3, "ms", secondsAtMost * 1e3});
}

} // namespace

int main(int argc, char** argv) {
    const Bench::UsersHome home(argv[0]);
    HarrowlaneApp::Memory::holdLittle();
    const Bench::PrivateDesktop desktop;
    desktop.enter(home.paths().home());
    const HarrowlaneApp::Panel panel;
    TimedApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (!HarrowlaneApp::becomes(&HarrowlaneApp::Panel::isThere)) throw std::runtime_error("no panel comes");

    Scene scene(application, home.paths());
    std::vector<bool> met;
    met.push_back(isMet("hold-up by a run, nothing open", scene.holdUp()));
    scene.program().popover().open(place);
    Scene::settle();
    met.push_back(isMet("hold-up by a run, popover open", scene.holdUp()));
    scene.program().openDashboard();
    scene.program().openSettings();
    Scene::settle();
    met.push_back(isMet("hold-up by a run, all windows open", scene.holdUp()));
    return std::ranges::all_of(met, std::identity()) ? 0 : 1;
}
