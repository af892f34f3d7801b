#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include <QApplication>

#include "HarrowlaneApp/Shell/ChartDumps.h"
#include "HarrowlaneApp/Shell/CommandLine.h"
#include "HarrowlaneApp/Shell/MeterDumps.h"
#include "HarrowlaneApp/Shell/NotifyTest.h"
#include "HarrowlaneApp/Shell/RunApplication.h"
#include "HarrowlaneApp/Shell/UiDumps.h"

namespace AppMain {

namespace {

using HarrowlaneApp::Job;
using Kind = Job::Kind;

// Looking for displays, Qt complains where the session has no runtime folder, and later of what its platform without a
// display cannot do: nothing that a picture or a probe needs.
void dropWarnings(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

/// Images do not depend on a screen, so none is asked for unless the user names a platform.
void draw(const Job& job, char* programName) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    int argumentCount = 1;
    std::array<char*, 2> arguments{programName, nullptr};
    const QApplication application(argumentCount, arguments.data());
    switch (job.kind) {
    case Kind::dumpMeter: return HarrowlaneApp::MeterArt::dumpSampleStrip(job.path);
    case Kind::dumpMenuBar: return HarrowlaneApp::MeterArt::dumpMenuBarStrip(job.path, job.scale);
    case Kind::dumpChart: return HarrowlaneApp::DumpChart::render(job.path);
    case Kind::dumpChartLive: return HarrowlaneApp::DumpChart::renderLive(job.path);
    case Kind::dumpIconset: return HarrowlaneApp::IconArt::dumpIconset(job.path);
    case Kind::dumpUI: return HarrowlaneApp::DumpUI::render(job.path);
    default: return;
    }
}

/// Performs the one job that the arguments ask for. The status is 0 whatever comes of it: failures are only printed.
int main(int argc, char** argv) {
    const Job job = HarrowlaneApp::jobFor(std::vector<std::string>(argv, argv + argc));
    if (job.kind != Kind::application) qInstallMessageHandler(dropWarnings);
    switch (job.kind) {
    case Kind::dumpMeter:
    case Kind::dumpMenuBar:
    case Kind::dumpChart:
    case Kind::dumpChartLive:
    case Kind::dumpIconset:
    case Kind::dumpUI: draw(job, argv[0]); break;
    case Kind::notifyTest: HarrowlaneApp::runNotifyTest(argc, argv); break;
    case Kind::application: return HarrowlaneApp::runApplication(argc, argv);
    }
    return 0;
}

} // namespace

} // namespace AppMain

int main(int argc, char** argv) {
    return AppMain::main(argc, argv);
}
