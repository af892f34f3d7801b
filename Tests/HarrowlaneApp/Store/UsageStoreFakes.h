#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

#include <QPointer>

#include "HarrowlaneApp/Store/Clock.h"
#include "HarrowlaneApp/Store/Records.h"
#include "HarrowlaneApp/Waiting.h"

namespace HarrowlaneApp {

/// Stands still until it is turned.
class HandTurnedClock : public Clock {
public:
    explicit HandTurnedClock(UsageModel::Date now) : now_(now.secondsSince1970) {}
    [[nodiscard]] UsageModel::Date now() const override { return UsageModel::Date{now_}; }
    [[nodiscard]] std::unique_ptr<QObject> alarm(double seconds, std::function<void()> ring) override;

    /// Wakes those whose span is over, by time.
    void turn(double seconds);
    /// As a user sets a clock: no sleeper wakes.
    void set(UsageModel::Date now) { now_ = now.secondsSince1970; }
    [[nodiscard]] std::size_t sleepers() const;

private:
    struct Sleeper : QObject {
        double left = 0.0;
        std::function<void()> ring;
    };

    std::atomic<double> now_;
    /// Null once nobody sleeps any more.
    std::vector<QPointer<Sleeper>> sleepers_;
};

/// What a test lets the records hold, and how it makes them fail. For any thread.
class FakeRecords : public Records {
public:
    struct Shelf {
        std::mutex mutex;
        UsageIngest::LogFiles files{"a.jsonl"};
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

    UsageIngest::LogFiles discover() override;
    UsageIngest::SyncStats sync(const UsageIngest::LogFiles& files) override;
    UsageIngest::EventList allEvents() override;
    std::vector<UsageModel::Anchor> anchors() override;

private:
    /// Notes the call; throws where `failure` has words.
    void call(const std::string& name, const std::string& failure = {});

    std::shared_ptr<Shelf> shelf_;
};

} // namespace HarrowlaneApp
