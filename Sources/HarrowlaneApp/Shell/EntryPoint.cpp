#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include <QApplication>

#include "HarrowlaneApp/Shell/CommandLine.h"
#include "HarrowlaneApp/Shell/MeterDumps.h"
#include "HarrowlaneApp/Shell/UiDumps.h"

namespace AppMain {

namespace {

using HarrowlaneApp::Job;
using Kind = Job::Kind;

// Qt complains of what a session lacks for windows on a screen, though none are going to be there.
void dropWarnings(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

/// What Qt needs to draw into images, on a machine with or without a display.
class ImageSession {
public:
    /// Images do not depend on a screen, so none is asked for unless the user names a platform.
    explicit ImageSession(char* programName) : arguments_{programName, nullptr} {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler(dropWarnings);
        application_.emplace(argumentCount_, arguments_.data());
    }

private:
    // Qt keeps references to both.
    int argumentCount_ = 1;
    std::array<char*, 2> arguments_;
    std::optional<QApplication> application_;
};

void draw(const Job& job, char* programName) {
    const ImageSession session(programName);
    switch (job.kind) {
    case Kind::dumpMeter: return HarrowlaneApp::MeterArt::dumpSampleStrip(job.path);
    case Kind::dumpMenuBar: return HarrowlaneApp::MeterArt::dumpMenuBarStrip(job.path, job.scale);
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
    case Kind::dumpIconset:
    case Kind::dumpUI: draw(job, argv[0]); break;
    case Kind::application:
        std::puts("the menu-bar program is not built into this version yet; brindlewick-report shows the numbers");
        break;
    default: std::printf("%s is not built into this version yet\n", std::string(switchOf(job.kind)).c_str());
    }
    return 0;
}

} // namespace

} // namespace AppMain

int main(int argc, char** argv) {
    return AppMain::main(argc, argv);
}
