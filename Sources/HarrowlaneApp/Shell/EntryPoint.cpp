#include <array>
#include <cstdio>
#include <optional>
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
// display cannot do: nothing that a picture needs.
void dropWarnings(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

/// What Qt needs to draw into images, on a machine with or without a display.
class ImageSession {
public:
    /// Images do not depend on a screen, so none is asked for unless the user names a platform.
    explicit ImageSession(char* programName) : arguments_{programName, nullptr} {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        usual_ = qInstallMessageHandler(dropWarnings);
        application_.emplace(argumentCount_, arguments_.data());
    }
    ImageSession(const ImageSession&) = delete;
    ImageSession& operator=(const ImageSession&) = delete;
    ~ImageSession() {
        application_.reset();
        qInstallMessageHandler(usual_);
    }

private:
    // Qt keeps references to both.
    int argumentCount_ = 1;
    std::array<char*, 2> arguments_;
    std::optional<QApplication> application_;
    QtMessageHandler usual_ = nullptr;
};

void draw(const Job& job, char* programName) {
    const ImageSession session(programName);
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
    switch (job.kind) {
    case Kind::dumpMeter:
    case Kind::dumpMenuBar:
    case Kind::dumpChart:
    case Kind::dumpChartLive:
    case Kind::dumpIconset:
    case Kind::dumpUI: draw(job, argv[0]); break;
    case Kind::notifyTest: HarrowlaneApp::runNotifyTest(argc, argv); break;
    case Kind::application: return HarrowlaneApp::runApplication(argc, argv);
    default: std::printf("%s is not built into this version yet\n", std::string(switchOf(job.kind)).c_str());
    }
    return 0;
}

} // namespace

} // namespace AppMain

int main(int argc, char** argv) {
    return AppMain::main(argc, argv);
}
