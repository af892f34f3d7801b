#pragma once

#include <QDBusVariant>

#include "HarrowlaneApp/Platform/Linux/PrivateBus.h"
#include "HarrowlaneApp/Platform/Linux/StubService.h"

namespace HarrowlaneApp {

/// A watcher of items; its panel is there or not.
class StubWatcher : public StubService {
public:
    enum class Host { present, absent };

    explicit StubWatcher(QDBusConnection bus, Host host = Host::present)
        : StubService(std::move(bus),
                      {.name = "org.kde.StatusNotifierWatcher",
                       .path = "/StatusNotifierWatcher",
                       .interface = "org.kde.StatusNotifierWatcher"},
                      [this](const QDBusMessage& message) { return replyTo(message); }),
          host_(host) {}

    [[nodiscard]] std::optional<Reply> replyTo(const QDBusMessage& message) const {
        if (message.member() == "RegisterStatusNotifierItem") return Reply{};
        return Reply{.values = {QVariant::fromValue(QDBusVariant(host_ == Host::present))}};
    }

    /// The panel comes or goes.
    void setHost(Host host) {
        host_ = host;
        tell(host == Host::present ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered", {});
    }

    /// The names under which items registered.
    [[nodiscard]] QStringList items() const {
        QStringList names;
        for (const QDBusMessage& call : callsOf("RegisterStatusNotifierItem"))
            names.append(call.arguments()[0].toString());
        return names;
    }

private:
    Host host_;
};

/// What a panel asks an item.
class PanelSide {
public:
    PanelSide(QDBusConnection bus, QString service) : bus_(std::move(bus)), service_(std::move(service)) {}

    struct Question {
        QString path;
        QString interface;
        QString method;
        QVariantList arguments;
    };

    [[nodiscard]] QDBusMessage ask(const Question& question) const {
        QDBusMessage message =
            QDBusMessage::createMethodCall(service_, question.path, question.interface, question.method);
        message.setArguments(question.arguments);
        return bus_.call(message, QDBus::BlockWithGui, 20000);
    }

    [[nodiscard]] QDBusMessage item(const QString& method, const QVariantList& arguments = {}) const {
        return ask({"/StatusNotifierItem", "org.kde.StatusNotifierItem", method, arguments});
    }
    [[nodiscard]] QDBusMessage menu(const QString& method, const QVariantList& arguments = {}) const {
        return ask({"/StatusNotifierItem/Menu", "com.canonical.dbusmenu", method, arguments});
    }
    [[nodiscard]] QVariant property(const QString& name) const {
        const QDBusMessage reply = ask(
            {"/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get", {"org.kde.StatusNotifierItem", name}});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

private:
    QDBusConnection bus_;
    QString service_;
};

} // namespace HarrowlaneApp
