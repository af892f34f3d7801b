#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

namespace HarrowlaneApp {

/// What was signalled in an interface, by whomever.
class SignalRecorder : public QObject {
    Q_OBJECT

public:
    SignalRecorder(QDBusConnection bus, const QString& interface) {
        bus.connect(QString(), QString(), interface, QString(), this, SLOT(take(QDBusMessage)));
    }

    [[nodiscard]] QStringList members() const {
        QStringList names;
        for (const QDBusMessage& message : messages) names.append(message.member());
        return names;
    }

    QList<QDBusMessage> messages;

private Q_SLOTS:
    void take(const QDBusMessage& message) { messages.append(message); }
};

} // namespace HarrowlaneApp
