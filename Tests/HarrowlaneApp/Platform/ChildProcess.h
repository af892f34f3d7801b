#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#ifdef Q_OS_LINUX
#include <csignal>

#include <sys/prctl.h>
#endif

#include "HarrowlaneApp/Waiting.h"

namespace HarrowlaneApp {

/// A program that runs until the end of the scope at the latest, or of this process, however that comes to its end.
class ChildProcess {
public:
    struct Start {
        QString program;
        QStringList arguments;
        /// What its environment has beside, or in the place of, this process's.
        QHash<QString, QString> variables;
    };

    explicit ChildProcess(const Start& start) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (auto it = start.variables.cbegin(); it != start.variables.cend(); ++it)
            environment.insert(it.key(), it.value());
        process_.setProcessEnvironment(environment);
        process_.setProcessChannelMode(QProcess::SeparateChannels);
#ifdef Q_OS_LINUX
        process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
#endif
        process_.start(start.program, start.arguments);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    /// Asks it first, so that it takes its sockets and locks with it.
    ~ChildProcess() {
        process_.terminate();
        if (!process_.waitForFinished(10000)) kill();
    }

    /// The first line that it writes to its standard output; empty where it ends without one.
    [[nodiscard]] QString firstLine() {
        while (!process_.canReadLine() && process_.waitForReadyRead(30000)) {
        }
        return QString::fromUtf8(process_.readLine()).trimmed();
    }

    /// Ends it at once, and is back when it has ended.
    void kill() {
        process_.kill();
        process_.waitForFinished(30000);
    }

    [[nodiscard]] bool isRunning() const {
        return process_.state() == QProcess::Running;
    }
    [[nodiscard]] qint64 processId() const {
        return process_.processId();
    }

private:
    QProcess process_;
};

} // namespace HarrowlaneApp
