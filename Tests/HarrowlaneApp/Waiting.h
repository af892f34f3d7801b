#pragma once

#include <chrono>
#include <functional>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace HarrowlaneApp {

/// Runs the event loop until the condition holds; false where it does not in a time that is long on any machine.
[[nodiscard]] inline bool becomes(const std::function<bool()>& condition, int patienceSeconds = 30) {
    const QDeadlineTimer deadline(std::chrono::seconds{patienceSeconds});
    // Not every condition comes with an event. (Given a span of time, Qt itself would not wait, but keep the processor
    // busy.)
    QTimer now;
    now.start(std::chrono::milliseconds(2));
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

} // namespace HarrowlaneApp
