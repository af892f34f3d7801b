#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

namespace HarrowlaneApp {

/// Brings the item to the watcher of items, whenever there is one, and knows whether panels show what it watches.
class NotifierRegistration : public QObject {
    Q_OBJECT

public:
    /// How long a watcher may leave it open before the item counts as not shown. It may still answer later.
    static constexpr int patienceMilliseconds = 3000;

    explicit NotifierRegistration(QDBusConnection bus, QObject* parent = nullptr);

    /// Registers this name of the bus, now and with each watcher that comes. Called once.
    void start(const QString& itemService);
    /// Whether a panel shows the item; false until that is known.
    [[nodiscard]] bool isHosted() const { return standing_ == Standing::hosted; }

Q_SIGNALS:
    /// Whether the item is shown has been found out: for the first time, or it is not what it was.
    void decided(bool hosted);

private Q_SLOTS:
    void askForHost();
    void disconnected();

private:
    enum class Standing { unknown, hosted, notHosted };

    void listen();
    void registerItem();
    void take(const QDBusMessage& hostRegistered);
    void settle(Standing standing);

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    QString itemService_;
    Standing standing_ = Standing::unknown;
    /// Answers to what was asked before the last change of the watcher count for nothing.
    int round_ = 0;
};

} // namespace HarrowlaneApp
