#pragma once

#include <memory>

#include <QDBusConnection>

#include "HarrowlaneApp/Platform/ChildProcess.h"
#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {

/// A session bus that nobody else uses, and on which nothing is started that is not there.
class PrivateBus {
public:
    PrivateBus() : address_(start()) {}
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        for (const QString& name : connections_) QDBusConnection::disconnectFromBus(name);
    }

    [[nodiscard]] const QString& address() const { return address_; }

    /// A connection of its own, like another program's.
    [[nodiscard]] QDBusConnection connect() {
        static int count = 0;
        connections_.append(QStringLiteral("private-%1").arg(++count));
        return QDBusConnection::connectToBus(address_, connections_.last());
    }

    /// The bus is gone, with all connections to it.
    void kill() { daemon_->kill(); }

private:
    QString start() {
        const std::string folder = folder_.path().string();
        TestSupport::writeFile(folder_ / "bus.conf", R"(<busconfig>
  <type>session</type>
  <listen>unix:path=)" + folder + R"(/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)");
        daemon_ = std::make_unique<ChildProcess>(ChildProcess::Start{
            .program = QStringLiteral("dbus-daemon"),
            .arguments = {QStringLiteral("--config-file=%1/bus.conf").arg(QString::fromStdString(folder)),
                          QStringLiteral("--print-address"), QStringLiteral("--nofork")},
            .variables = {}});
        return daemon_->firstLine();
    }

    TestSupport::TemporaryFolder folder_;
    std::unique_ptr<ChildProcess> daemon_;
    QString address_;
    QStringList connections_;
};

} // namespace HarrowlaneApp
