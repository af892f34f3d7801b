#pragma once

#include <chrono>
#include <functional>
#include <utility>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include "HarrowlaneApp/Platform/Later.h"

/// Calls to other programs. None of them blocks: who is asked may be slow, hang, or be a program under a debugger.
namespace HarrowlaneApp::Bus {

/// How long a program may take that answers to nobody but us.
inline constexpr int answerMilliseconds = 5000;
/// For an answer that is welcome whenever it comes.
inline constexpr int noTimeout = 0x7fffffff;

struct Call {
    QDBusMessage message;
    int timeoutMilliseconds = answerMilliseconds;
};

/// Calls `answer` once, later, with the reply or the error; not at all where `context` is gone by then.
inline void call(const QDBusConnection& bus, const Call& what, QObject& context,
                 std::function<void(const QDBusMessage&)> answer) {
    if (!bus.isConnected()) {
        // Qt gives such a call no end of its own.
        later(context, std::chrono::milliseconds{0}, [answer = std::move(answer)] {
            answer(QDBusMessage::createError(QDBusError::Disconnected, QStringLiteral("there is no session bus")));
        });
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(what.message, what.timeoutMilliseconds), &context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context,
                     [answer = std::move(answer)](QDBusPendingCallWatcher* finished) {
                         finished->deleteLater();
                         answer(finished->reply());
                     });
}

[[nodiscard]] inline bool isError(const QDBusMessage& reply) {
    return reply.type() != QDBusMessage::ReplyMessage;
}

/// The first of a reply's values; its default where there is none of this type.
template <typename T>
[[nodiscard]] T firstOf(const QDBusMessage& reply) {
    return isError(reply) || reply.arguments().isEmpty() ? T{} : qdbus_cast<T>(reply.arguments().first());
}

/// A question to the bus itself.
[[nodiscard]] inline QDBusMessage busCall(const QString& method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), method);
}

} // namespace HarrowlaneApp::Bus
