#pragma once

#include <atomic>
#include <coroutine>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

#include "HarrowlaneApp/Store/Clock.h"
#include "HarrowlaneApp/Store/Records.h"

namespace HarrowlaneApp {

/// Runs the main loop until `condition` holds. False where it does not within ten seconds.
[[nodiscard]] bool waitFor(const std::function<bool()>& condition);

/// Stands still until it is turned.
class HandTurnedClock : public Clock {
public:
    explicit HandTurnedClock(UsageModel::Date now) : now_(now.secondsSince1970) {}
    /// Whoever still sleeps wakes, so that no coroutine is left behind.
    ~HandTurnedClock() override;

    [[nodiscard]] UsageModel::Date now() const override { return UsageModel::Date{now_}; }
    [[nodiscard]] QCoro::Task<> sleep(double seconds) override;

    /// Wakes those whose span is over, by time.
    void turn(double seconds);
    /// As a user sets a clock: no sleeper wakes.
    void set(UsageModel::Date now) { now_ = now.secondsSince1970; }
    [[nodiscard]] std::size_t sleepers() const { return sleepers_.size(); }

private:
    struct Sleeper {
        double left = 0.0;
        std::coroutine_handle<> rest;
    };

    std::atomic<double> now_;
    std::vector<Sleeper> sleepers_;
};

/// What a test lets the records hold, and how it makes them fail. For any thread.
class FakeRecords : public Records {
public:
    struct Shelf {
        std::mutex mutex;
        Files files{"a.jsonl"};
        std::vector<UsageModel::UsageEvent> events{{.ts = UsageModel::Date{1}, .input = 10}};
        std::vector<UsageModel::Anchor> anchors;
        /// Words of the failure of an operation; empty for none.
        std::string syncFailure;
        std::string eventsFailure;
        std::string anchorsFailure;
        /// The names of the operations in the order of their calls.
        std::vector<std::string> calls;
        /// A sync waits while it is set.
        std::atomic<bool> isBlocked = false;

        [[nodiscard]] std::size_t count(const std::string& call);
    };

    explicit FakeRecords(std::shared_ptr<Shelf> shelf) : shelf_(std::move(shelf)) {}

    Files discover() override;
    UsageIngest::SyncStats sync(const Files& files) override;
    UsageIngest::EventList allEvents() override;
    std::vector<UsageModel::Anchor> anchors() override;

private:
    /// Notes the call; throws where `failure` has words.
    void call(const std::string& name, const std::string& failure = {});

    std::shared_ptr<Shelf> shelf_;
};

} // namespace HarrowlaneApp
