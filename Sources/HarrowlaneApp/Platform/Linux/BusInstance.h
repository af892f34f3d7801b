#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>

#include "HarrowlaneApp/Platform/SingleInstance.h"

namespace HarrowlaneApp {

/// One instance by way of a name on the session bus, which goes with the process that bears it. It is the name under
/// which desktops know the program, and the request is theirs to make too.
class BusInstance : public SingleInstance {
    Q_OBJECT

public:
    /// Wants a bus that is connected.
    explicit BusInstance(QDBusConnection bus, QObject* parent = nullptr);
    ~BusInstance() override;

    [[nodiscard]] Claim claim() override;

private:
    [[nodiscard]] Claim ask() const;

    QDBusConnection bus_;
};

/// What desktops ask of a program.
class ApplicationAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationAdaptor(BusInstance& instance) : QDBusAbstractAdaptor(&instance), instance_(instance) {}

public Q_SLOTS:
    // The names are the interface's.
    void Activate(const QVariantMap& platformData);

private:
    BusInstance& instance_;
};

} // namespace HarrowlaneApp
