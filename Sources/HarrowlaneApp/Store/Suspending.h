#pragma once

#include <coroutine>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include <QCoroTask>
#include <QFutureWatcher>
#include <QObject>
#include <QThreadPool>
#include <QtConcurrentRun>

#include "HarrowlaneApp/Store/Clock.h"

/// What the main loop's coroutines wait with.
namespace HarrowlaneApp {

/// The object that a coroutine worked for has gone while it waited. Nothing catches it: the coroutine unwinds, and
/// touches nothing any more. No `std::exception`, so that no handler of failures takes it for one.
struct OwnerGone {};

/// Suspends a coroutine until it is woken, or until its owner goes, which throws `OwnerGone` in it then and there: a
/// coroutine that waited for an event loop that has ended would never be freed. For one `co_await`.
class Suspension {
public:
    /// Arranges for `wake` to be called once, later, on this thread; not where what it returns is gone by then.
    using Arrange = std::function<std::unique_ptr<QObject>(std::function<void()> wake)>;

    Suspension(QObject* owner, Arrange arrange) : owner_(owner), arrange_(std::move(arrange)) {}
    Suspension(const Suspension&) = delete;
    Suspension& operator=(const Suspension&) = delete;
    ~Suspension() = default;

    // GCC 12 waits on a copy of what `await_transform` gives back, so that must be a mere reference.
    struct Awaiter {
        Suspension& suspension;

        [[nodiscard]] static bool await_ready() { return false; }
        void await_suspend(std::coroutine_handle<> rest) const { suspension.begin(rest); }
        void await_resume() const { suspension.end(); }
    };
    [[nodiscard]] Awaiter operator co_await() { return {*this}; }

private:
    void begin(std::coroutine_handle<> rest) {
        ownerGoes_ = QObject::connect(owner_, &QObject::destroyed, [this, rest] {
            owner_ = nullptr;
            rest.resume();
        });
        waking_ = arrange_([rest] { rest.resume(); });
    }
    void end() const {
        QObject::disconnect(ownerGoes_);
        if (owner_ == nullptr) throw OwnerGone();
    }

    QObject* owner_;
    Arrange arrange_;
    std::unique_ptr<QObject> waking_;
    QMetaObject::Connection ownerGoes_;
};

namespace Detail {

/// What a function gave or threw, carried from one thread to another as it is.
template <typename Result>
struct Outcome {
    std::optional<Result> result;
    std::exception_ptr failure;
};

template <typename Work>
auto outcomeOf(Work& work) noexcept {
    using Result = std::invoke_result_t<Work&>;
    Outcome<Result> outcome;
    try {
        outcome.result = work();
    } catch (...) {
        outcome.failure = std::current_exception();
    }
    return outcome;
}

} // namespace Detail

// GCC 12 destroys twice what is made within a `co_await` expression: whatever owns something gets a name before.

/// Runs `work` on the pool and resumes with its result on the calling thread; what it throws is thrown there. `work`
/// must return something. Throws `OwnerGone` as soon as `owner` goes.
template <typename Work>
QCoro::Task<std::invoke_result_t<Work&>> onPool(QObject* owner, QThreadPool& pool, Work work) {
    using Carried = std::shared_ptr<Detail::Outcome<std::invoke_result_t<Work&>>>;
    auto carried = [work = std::move(work)]() mutable -> Carried {
        return std::make_shared<typename Carried::element_type>(Detail::outcomeOf(work));
    };
    const QFuture<Carried> future = QtConcurrent::run(&pool, std::move(carried));
    Suspension untilDone(owner, [&future](std::function<void()> wake) {
        auto watcher = std::make_unique<QFutureWatcher<Carried>>();
        QObject::connect(watcher.get(), &QFutureWatcherBase::finished, std::move(wake));
        watcher->setFuture(future);
        return watcher;
    });
    co_await untilDone;
    const Carried outcome = future.result();
    if (outcome->failure) std::rethrow_exception(outcome->failure);
    co_return std::move(*outcome->result);
}

/// Waits for a span of the clock's. Throws `OwnerGone` as soon as `owner` goes. The caller keeps the clock.
inline QCoro::Task<> asleep(QObject* owner, Clock& clock, double seconds) {
    Suspension untilAlarm(
        owner, [&clock, seconds](std::function<void()> wake) { return clock.alarm(seconds, std::move(wake)); });
    co_await untilAlarm;
}

} // namespace HarrowlaneApp
