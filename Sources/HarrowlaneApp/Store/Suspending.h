#pragma once

#include <exception>
#include <optional>
#include <type_traits>
#include <utility>

#include <QCoroFuture>
#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <QtConcurrentRun>

/// What the main loop's coroutines wait with.
namespace HarrowlaneApp {

/// The object that a coroutine worked for has gone while it waited. Nothing catches it: the coroutine unwinds, and
/// touches nothing any more. No `std::exception`, so that no handler of failures takes it for one.
struct OwnerGone {};

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
/// must return something. Throws `OwnerGone` where `owner` does not live any more by then.
template <typename Work>
QCoro::Task<std::invoke_result_t<Work&>> onPool(QObject* owner, QThreadPool& pool, Work work) {
    const QPointer<QObject> alive(owner);
    auto carried = [work = std::move(work)]() mutable {
        return std::make_shared<Detail::Outcome<std::invoke_result_t<Work&>>>(Detail::outcomeOf(work));
    };
    QFuture future = QtConcurrent::run(&pool, std::move(carried));
    const auto outcome = co_await future;
    if (!alive) throw OwnerGone();
    if (outcome->failure) std::rethrow_exception(outcome->failure);
    co_return std::move(*outcome->result);
}

/// Waits for `task`. Throws `OwnerGone` where `owner` does not live any more by then.
inline QCoro::Task<> whileAlive(QObject* owner, QCoro::Task<> task) {
    const QPointer<QObject> alive(owner);
    co_await task;
    if (!alive) throw OwnerGone();
}

} // namespace HarrowlaneApp
