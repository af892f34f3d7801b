#pragma once

#include <functional>
#include <optional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

namespace HarrowlaneApp {

/// Another program on the bus, as a test wants it. Keeps all it was asked; answers what it is told to, or never.
class StubService : public QDBusVirtualObject {
public:
    struct Place {
        QString name;
        QString path;
        QString interface;
    };
    /// The values of the reply; an error's name as its only value where `isError`; absent for silence.
    struct Reply {
        QVariantList values;
        bool isError = false;
    };
    using Answer = std::function<std::optional<Reply>(const QDBusMessage&)>;

    StubService(QDBusConnection bus, Place place, Answer answer)
        : bus_(std::move(bus)),
          place_(std::move(place)),
          answer_(std::move(answer)) {
        bus_.registerVirtualObject(place_.path, this);
        bus_.registerService(place_.name);
    }
    ~StubService() override {
        bus_.unregisterObject(place_.path);
        bus_.unregisterService(place_.name);
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        calls.append(message);
        const auto reply = answer_(message);
        message.setDelayedReply(true);
        if (!reply)
            waiting_.append(message);
        else
            send(message, *reply);
        return true;
    }

    /// Answers all that wait, with what `answer` would say now.
    void breakSilence(const Answer& answer) {
        answer_ = answer;
        for (const QDBusMessage& message : std::exchange(waiting_, {})) {
            if (const auto reply = answer_(message)) send(message, *reply);
        }
    }

    void tell(const QString& signal, const QVariantList& values) {
        QDBusMessage message = QDBusMessage::createSignal(place_.path, place_.interface, signal);
        message.setArguments(values);
        bus_.send(message);
    }

    [[nodiscard]] QList<QDBusMessage> callsOf(const QString& member) const {
        QList<QDBusMessage> found;
        std::ranges::copy_if(calls, std::back_inserter(found),
                             [&](const QDBusMessage& call) { return call.member() == member; });
        return found;
    }

    QList<QDBusMessage> calls;

private:
    void send(const QDBusMessage& message, const Reply& reply) {
        if (reply.isError)
            bus_.send(message.createErrorReply(reply.values.first().toString(), "as the test wants it"));
        else
            bus_.send(message.createReply(reply.values));
    }

    QDBusConnection bus_;
    Place place_;
    Answer answer_;
    QList<QDBusMessage> waiting_;
};

} // namespace HarrowlaneApp
