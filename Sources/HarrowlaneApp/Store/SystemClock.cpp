#include <algorithm>
#include <chrono>
#include <utility>

#include <QTimer>

#include "HarrowlaneApp/Store/Clock.h"

namespace HarrowlaneApp {

UsageModel::Date SystemClock::now() const {
    return UsageModel::Date{std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count()};
}

std::unique_ptr<QObject> SystemClock::timer(double seconds, std::function<void()> ring) {
    auto timer = std::make_unique<QTimer>();
    timer->setSingleShot(true);
    QObject::connect(timer.get(), &QTimer::timeout, std::move(ring));
    timer->start(std::chrono::milliseconds(static_cast<std::int64_t>(std::max(seconds, 0.0) * 1000.0)));
    return timer;
}

} // namespace HarrowlaneApp
