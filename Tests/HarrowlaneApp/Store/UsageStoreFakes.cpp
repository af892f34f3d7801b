#include "HarrowlaneApp/Store/UsageStoreFakes.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace HarrowlaneApp {

std::unique_ptr<QObject> HandTurnedClock::alarm(double seconds, std::function<void()> ring) {
    auto sleeper = std::make_unique<Sleeper>();
    sleeper->left = seconds;
    sleeper->ring = std::move(ring);
    sleepers_.emplace_back(sleeper.get());
    return sleeper;
}

void HandTurnedClock::turn(double seconds) {
    now_ = now_ + seconds;
    std::erase(sleepers_, nullptr);
    for (const auto& sleeper : sleepers_) sleeper->left -= seconds;
    std::vector<QPointer<Sleeper>> due;
    std::ranges::partition_copy(std::exchange(sleepers_, {}), std::back_inserter(due), std::back_inserter(sleepers_),
                                [](const auto& sleeper) { return sleeper->left <= 0.0; });
    std::ranges::stable_sort(due, {}, [](const auto& sleeper) { return sleeper->left; });
    for (const auto& sleeper : due) {
        if (sleeper) std::exchange(sleeper->ring, {})();
    }
}

std::size_t HandTurnedClock::sleepers() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(sleepers_, [](const auto& sleeper) { return !sleeper.isNull(); }));
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

UsageIngest::LogFiles FakeRecords::discover() {
    call("discover");
    const std::lock_guard lock(shelf_->mutex);
    return shelf_->files;
}

UsageIngest::SyncStats FakeRecords::sync(const UsageIngest::LogFiles& /*files*/) {
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
