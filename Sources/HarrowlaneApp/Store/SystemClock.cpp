#include <chrono>

#include <QCoroTimer>
#include <QTimer>

#include "HarrowlaneApp/Store/Clock.h"

namespace HarrowlaneApp {

UsageModel::Date SystemClock::now() const {
    return UsageModel::Date{std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count()};
}

QCoro::Task<> SystemClock::sleep(double seconds) {
    if (!(seconds > 0.0)) co_return;
    QTimer timer;
    timer.setSingleShot(true);
    timer.start(std::chrono::milliseconds(static_cast<std::int64_t>(seconds * 1000.0)));
    co_await timer;
}

} // namespace HarrowlaneApp
