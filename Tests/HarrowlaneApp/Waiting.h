#pragma once

#include <chrono>
#include <functional>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

namespace HarrowlaneApp {

/// Runs the event loop until the condition holds; false where it does not in a time that is long on any machine.
[[nodiscard]] inline bool becomes(const std::function<bool()>& condition, int patienceSeconds = 30) {
    const QDeadlineTimer deadline(std::chrono::seconds{patienceSeconds});
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

} // namespace HarrowlaneApp
