#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#include "HarrowlaneApp/Waiting.h"

namespace HarrowlaneApp {

/// A program that runs until the end of the scope at the latest.
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
        process_.start(start.program, start.arguments);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() { kill(); }

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

    [[nodiscard]] bool isRunning() const { return process_.state() == QProcess::Running; }
    [[nodiscard]] qint64 processId() const { return process_.processId(); }
    [[nodiscard]] int exitStatus() const { return process_.exitCode(); }

private:
    QProcess process_;
};

} // namespace HarrowlaneApp
