#include "HarrowlaneApp/Shell/UsageStoreFakes.h"

#include <algorithm>
#include <limits>
#include <thread>

#include <QCoreApplication>
#include <QCoroSignal>
#include <QElapsedTimer>
#include <QTimer>

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
    QCoreApplication::processEvents();
}

QCoro::Task<> HandTurnedClock::sleep(double seconds) {
    const auto alarm = std::make_shared<QTimer>();
    alarm->setSingleShot(true);
    alarm->setInterval(0);
    sleepers_.push_back({.left = seconds, .alarm = alarm});
    co_await qCoro(alarm.get(), &QTimer::timeout);
}

void HandTurnedClock::turn(double seconds) {
    now_ = now_ + seconds;
    std::vector<Sleeper> due;
    for (Sleeper& sleeper : sleepers_) sleeper.left -= seconds;
    std::ranges::partition_copy(std::exchange(sleepers_, {}), std::back_inserter(due), std::back_inserter(sleepers_),
                                [](const Sleeper& sleeper) { return sleeper.left <= 0.0; });
    std::ranges::stable_sort(due, {}, &Sleeper::left);
    for (const Sleeper& sleeper : due) sleeper.alarm->start();
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
