#include "HarrowlaneApp/Store/UsageStoreFakes.h"

#include <algorithm>
#include <limits>
#include <thread>

#include <QCoreApplication>
#include <QElapsedTimer>

namespace HarrowlaneApp {

bool waitFor(const std::function<bool()>& condition) {
    constexpr qint64 patience = 10000;
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > patience) return false;
        QCoreApplication::processEvents();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

HandTurnedClock::~HandTurnedClock() {
    turn(std::numeric_limits<double>::infinity());
}

QCoro::Task<> HandTurnedClock::sleep(double seconds) {
    struct Nap {
        HandTurnedClock& clock;
        double seconds;

        [[nodiscard]] static bool await_ready() { return false; }
        void await_suspend(std::coroutine_handle<> rest) { clock.sleepers_.push_back({.left = seconds, .rest = rest}); }
        void await_resume() const {}
    };
    co_await Nap{.clock = *this, .seconds = seconds};
}

void HandTurnedClock::turn(double seconds) {
    now_ = now_ + seconds;
    for (Sleeper& sleeper : sleepers_) sleeper.left -= seconds;
    std::vector<Sleeper> due;
    std::ranges::partition_copy(std::exchange(sleepers_, {}), std::back_inserter(due), std::back_inserter(sleepers_),
                                [](const Sleeper& sleeper) { return sleeper.left <= 0.0; });
    std::ranges::stable_sort(due, {}, &Sleeper::left);
    for (const Sleeper& sleeper : due) sleeper.rest.resume();
}

std::size_t FakeRecords::Shelf::count(const std::string& call) {
    const std::lock_guard lock(mutex);
    return static_cast<std::size_t>(std::ranges::count(calls, call));
}

void FakeRecords::call(const std::string& name, const std::string& failure) {
    const std::lock_guard lock(shelf_->mutex);
    shelf_->calls.push_back(name);
    if (!failure.empty()) throw std::runtime_error(failure);
}

Records::Files FakeRecords::discover() {
    call("discover");
    const std::lock_guard lock(shelf_->mutex);
    return shelf_->files;
}

UsageIngest::SyncStats FakeRecords::sync(const Files& /*files*/) {
    call("sync", shelf_->syncFailure);
    while (shelf_->isBlocked) std::this_thread::yield();
    return {};
}

UsageIngest::EventList FakeRecords::allEvents() {
    call("allEvents", shelf_->eventsFailure);
    const std::lock_guard lock(shelf_->mutex);
    return std::make_shared<const std::vector<UsageModel::UsageEvent>>(shelf_->events);
}

std::vector<UsageModel::Anchor> FakeRecords::anchors() {
    call("anchors", shelf_->anchorsFailure);
    const std::lock_guard lock(shelf_->mutex);
    return shelf_->anchors;
}

} // namespace HarrowlaneApp
