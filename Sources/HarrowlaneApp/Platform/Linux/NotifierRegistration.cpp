#include "HarrowlaneApp/Platform/Linux/NotifierRegistration.h"

#include <QDBusVariant>
#include <QTimer>

#include "HarrowlaneApp/Platform/Linux/Bus.h"

namespace HarrowlaneApp {

namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString watcherInterface = QStringLiteral("org.kde.StatusNotifierWatcher");

QDBusMessage watcherCall(const QString& interface, const QString& method) {
    QDBusMessage message = QDBusMessage::createMethodCall(watcherService, watcherPath, interface, method);
    // A watcher is part of a panel: starting one from here would bring no panel.
    message.setAutoStartService(false);
    return message;
}

} // namespace

NotifierRegistration::NotifierRegistration(QDBusConnection bus, QObject* parent)
    : QObject(parent),
      bus_(std::move(bus)) {}

void NotifierRegistration::start(const QString& itemService) {
    itemService_ = itemService;
    listen();
    registerItem();
    QTimer::singleShot(patienceMilliseconds, this, [this] {
        if (standing_ == Standing::unknown) settle(Standing::notHosted);
    });
}

void NotifierRegistration::listen() {
    watcher_.setConnection(bus_);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher_.addWatchedService(watcherService);
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                ++round_;
                if (owner.isEmpty())
                    settle(Standing::notHosted);
                else
                    registerItem();
            });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus_.connect(watcherService, watcherPath, watcherInterface, QLatin1String(signal), this, SLOT(askForHost()));
    }
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
                 QStringLiteral("Disconnected"), this, SLOT(disconnected()));
}

void NotifierRegistration::registerItem() {
    QDBusMessage message = watcherCall(watcherInterface, QStringLiteral("RegisterStatusNotifierItem"));
    message << itemService_;
    Bus::call(bus_, {.message = message, .timeoutMilliseconds = Bus::noTimeout}, *this,
              [this, round = round_](const QDBusMessage& reply) {
                  if (round != round_) return;
                  if (Bus::isError(reply))
                      settle(Standing::notHosted);
                  else
                      askForHost();
              });
}

void NotifierRegistration::askForHost() {
    QDBusMessage message = watcherCall(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message << watcherInterface << QStringLiteral("IsStatusNotifierHostRegistered");
    Bus::call(bus_, {.message = message, .timeoutMilliseconds = Bus::noTimeout}, *this,
              [this, round = round_](const QDBusMessage& reply) {
                  if (round == round_) take(reply);
              });
}

void NotifierRegistration::take(const QDBusMessage& hostRegistered) {
    // A watcher that does not know this question is one that shows its items itself.
    const bool hosted = Bus::isError(hostRegistered) || Bus::firstOf<QDBusVariant>(hostRegistered).variant().toBool();
    settle(hosted ? Standing::hosted : Standing::notHosted);
}

void NotifierRegistration::disconnected() {
    ++round_;
    settle(Standing::notHosted);
}

void NotifierRegistration::settle(Standing standing) {
    if (standing == standing_) return;
    standing_ = standing;
    Q_EMIT decided(standing == Standing::hosted);
}

} // namespace HarrowlaneApp
