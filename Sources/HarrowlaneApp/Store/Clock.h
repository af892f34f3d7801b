#pragma once

#include <functional>
#include <memory>

#include <QObject>

#include "UsageModel/Date.h"

namespace HarrowlaneApp {

/// Time as the program lives it. Tests turn theirs by hand.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// On any thread.
    [[nodiscard]] virtual UsageModel::Date now() const = 0;
    /// Calls `ring` once on the calling thread, which must run an event loop, when the span is over: later than this
    /// returns, and not at all where the alarm is gone by then. `ring` may end the alarm.
    [[nodiscard]] virtual std::unique_ptr<QObject> alarm(double seconds, std::function<void()> ring) = 0;
};

/// The system's.
class SystemClock : public Clock {
public:
    using Alarm = std::function<std::unique_ptr<QObject>(double seconds, std::function<void()> ring)>;

    /// A timer of the event loop. It does not count the time for which the machine sleeps.
    [[nodiscard]] static std::unique_ptr<QObject> timer(double seconds, std::function<void()> ring);

    explicit SystemClock(Alarm alarm = timer) : alarm_(std::move(alarm)) {}

    [[nodiscard]] UsageModel::Date now() const override;
    [[nodiscard]] std::unique_ptr<QObject> alarm(double seconds, std::function<void()> ring) override {
        return alarm_(seconds, std::move(ring));
    }

private:
    Alarm alarm_;
};

} // namespace HarrowlaneApp
