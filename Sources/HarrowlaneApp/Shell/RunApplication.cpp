#include "HarrowlaneApp/Shell/RunApplication.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <thread>

#include <QApplication>
#include <QFontDatabase>

#include "HarrowlaneApp/Platform/ApplicationBundle.h"
#include "HarrowlaneApp/Platform/Desktop.h"
#include "HarrowlaneApp/Shell/HarrowlaneApp.h"
#include "HarrowlaneApp/Store/Memory.h"

namespace HarrowlaneApp {

namespace {

bool wantsDemoGauge() {
    const char* value = std::getenv("HWL_DEMO_GAUGE");
    return value != nullptr && std::string_view(value) == "1";
}

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
    Memory::holdLittle();
    QApplication application(argc, argv);
    // The first image has a figure, and finding fonts takes longer than all else before it. Who wants one waits for
    // Qt's lock.
    const std::jthread fonts([] { (void)QFontDatabase::families(); });
    QApplication::setDesktopFileName(QString::fromUtf8(Desktop::identifier));
    QApplication::setQuitOnLastWindowClosed(false);

    const UsageModel::AppPaths paths;
    const auto instance = Desktop::makeSingleInstance(paths.support());
    if (instance->claim() != SingleInstance::Claim::first) return 0;

    const auto item = Desktop::makeStatusItem();
    const auto notifications = Desktop::makeNotificationService(*item);
    const auto preferences = Desktop::makePreferences();
    const auto appearance = Desktop::makeAppearance();
    const auto autostart = Desktop::makeAutostart();
    HarrowlaneApp program({
        .world =
            {.paths = paths, .bundle = bundleFolder(), .notifications = *notifications, .demoGauge = wantsDemoGauge()},
        .item = *item,
        .preferences = *preferences,
        .appearance = *appearance,
        .autostart = *autostart,
    });
    QObject::connect(instance.get(), &SingleInstance::showRequested, &program, &HarrowlaneApp::open);
    QObject::connect(&program, &HarrowlaneApp::quitRequested, &application, &QApplication::quit);
    return QApplication::exec();
}

} // namespace HarrowlaneApp
