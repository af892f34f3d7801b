#pragma once

#include <QCoroTask>

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
    /// Resumes on the calling thread, which must run an event loop, once the span is over. At once for 0 or less.
    [[nodiscard]] virtual QCoro::Task<> sleep(double seconds) = 0;
};

/// The system's. It sleeps by a timer of the event loop.
class SystemClock : public Clock {
public:
    [[nodiscard]] UsageModel::Date now() const override;
    [[nodiscard]] QCoro::Task<> sleep(double seconds) override;
};

} // namespace HarrowlaneApp
