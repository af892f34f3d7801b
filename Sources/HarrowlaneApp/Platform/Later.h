#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

#include <QTimer>

namespace HarrowlaneApp {

/// Does something once that span is over; not at all where `context` is gone by then.
inline void later(QObject& context, std::chrono::milliseconds span, std::function<void()> what) {
    auto* timer = new QTimer(&context);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, &context, [timer, what = std::move(what)] {
        timer->deleteLater();
        what();
    });
    timer->start(span);
}

/// The same for a span in seconds, no sooner than that; one below zero counts as none.
inline void later(QObject& context, double seconds, std::function<void()> what) {
    const std::chrono::duration<double> span(std::max(seconds, 0.0));
    later(context, std::chrono::ceil<std::chrono::milliseconds>(span), std::move(what));
}

} // namespace HarrowlaneApp
