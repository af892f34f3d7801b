#include "HarrowlaneApp/Platform/Linux/BusInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

#include "HarrowlaneApp/Platform/Desktop.h"

namespace HarrowlaneApp {

namespace {

const QString tokenKey = QStringLiteral("activation-token");
constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";

QString name() {
    return QString::fromLatin1(Desktop::identifier);
}

QString path() {
    return '/' + name().replace('.', '/');
}

/// What lets the first start bring its window to the front in the place of the second one.
QVariantMap platformData() {
    const QString token = qEnvironmentVariable(tokenVariable);
    return token.isEmpty() ? QVariantMap{} : QVariantMap{{tokenKey, token}};
}

} // namespace

BusInstance::BusInstance(QDBusConnection bus, QObject* parent) : SingleInstance(parent), bus_(std::move(bus)) {
    new ApplicationAdaptor(*this);
}

BusInstance::~BusInstance() {
    bus_.unregisterService(name());
    bus_.unregisterObject(path());
}

SingleInstance::Claim BusInstance::claim() {
    // Before the name is taken: who finds it may ask at once.
    bus_.registerObject(path(), this, QDBusConnection::ExportAdaptors);
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply = bus_.interface()->registerService(
        name(), QDBusConnectionInterface::DontQueueService, QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid() || reply.value() != QDBusConnectionInterface::ServiceNotRegistered) return Claim::first;
    bus_.unregisterObject(path());
    return ask();
}

SingleInstance::Claim BusInstance::ask() const {
    QDBusMessage message = QDBusMessage::createMethodCall(name(), path(), QStringLiteral("org.freedesktop.Application"),
                                                          QStringLiteral("Activate"));
    message.setAutoStartService(false);
    message << platformData();
    const QDBusMessage reply = bus_.call(message, QDBus::BlockWithGui, static_cast<int>(answerSeconds * 1000));
    return reply.type() == QDBusMessage::ReplyMessage ? Claim::shownElsewhere : Claim::unanswered;
}

void ApplicationAdaptor::Activate(const QVariantMap& platformData) {
    const QByteArray token = platformData.value(tokenKey).toString().toUtf8();
    if (!token.isEmpty()) qputenv(tokenVariable, token);
    Q_EMIT instance_.showRequested();
}

} // namespace HarrowlaneApp
