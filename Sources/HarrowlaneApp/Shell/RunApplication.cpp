#include "HarrowlaneApp/Shell/RunApplication.h"

#include <cstdio>
#include <cstdlib>
#include <thread>

#include <QApplication>
#include <QSessionManager>

#include "HarrowlaneApp/Platform/ApplicationBundle.h"
#include "HarrowlaneApp/Platform/Desktop.h"
#include "HarrowlaneApp/Shell/HarrowlaneApp.h"
#include "HarrowlaneApp/Store/DemoGauge.h"
#include "HarrowlaneApp/Store/Memory.h"

namespace HarrowlaneApp {

namespace {

std::optional<std::filesystem::path> bundleFolder() {
    const auto bundle = ApplicationBundle::ofThisProcess();
    return bundle ? std::optional(bundle->contents.parent_path()) : std::nullopt;
}

} // namespace

int runApplication(int argc, char** argv) {
    if (!Desktop::hasDisplay()) {
        std::puts("no display to live on; brindlewick-report shows the numbers in a terminal");
        return 0;
    }
    Desktop::leaveBusToSession();
    Memory::holdLittle();
    // The first image has a figure.
    std::jthread fonts(Desktop::findFonts);
    QApplication application(argc, argv);
    QApplication::setDesktopFileName(QString::fromUtf8(Desktop::identifier));
    QApplication::setQuitOnLastWindowClosed(false);
    // Whether it starts at login is its own switch's to say, not a restored session's.
    QObject::connect(&application, &QGuiApplication::saveStateRequest,
                     [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); });

    const UsageModel::AppPaths paths;
    const auto instance = Desktop::makeSingleInstance(paths.support());
    const auto claim = instance->claim();
    if (claim == SingleInstance::Claim::unanswered) std::puts("another one runs, but does not answer");
    if (claim != SingleInstance::Claim::first) return 0;

    // Who asks while they are being looked for would look for them too.
    fonts.join();
    const auto item = Desktop::makeStatusItem();
    const auto notifications = Desktop::makeNotificationService(*item);
    const auto preferences = Desktop::makePreferences();
    const auto appearance = Desktop::makeAppearance();
    const auto autostart = Desktop::makeAutostart();
    HarrowlaneApp program({
        .world = {.paths = paths,
                  .clock = std::make_shared<SystemClock>(Desktop::makeAlarm),
                  .bundle = bundleFolder(),
                  .notifications = *notifications,
                  .demoGauge = wantsDemoGauge(std::getenv("HWL_DEMO_GAUGE"))},
        .item = *item,
        .preferences = *preferences,
        .appearance = *appearance,
        .autostart = *autostart,
    });
    QObject::connect(instance.get(), &SingleInstance::showRequested, &program, &HarrowlaneApp::open);
    QObject::connect(&program, &HarrowlaneApp::quitRequested, &application, &QApplication::quit);
    const int status = QApplication::exec();
    // An import may be under way, and ending in order would wait for it: what is stored is stored, and what is not will
    // be read again.
    std::fflush(nullptr);
    std::_Exit(status);
}

} // namespace HarrowlaneApp
