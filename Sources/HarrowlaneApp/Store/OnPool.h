#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include <QFuture>
#include <QThreadPool>
#include <QtConcurrentRun>

#include <qcoro/qcorofuture.h>
#include <qcoro/qcorotask.h>

namespace HarrowlaneApp {

template <typename Value>
struct PoolOutcome {
    std::optional<Value> value;
    // Kept here, because Qt would wrap it in an exception of its own.
    std::exception_ptr failure;
};

template <typename Value>
QCoro::Task<Value> outcomeOf(QFuture<void> done, std::shared_ptr<PoolOutcome<Value>> outcome) {
    co_await done;
    if (outcome->failure) std::rethrow_exception(std::exchange(outcome->failure, {}));
    co_return std::move(*outcome->value);
}

/// Does the work on a thread of the pool, and goes on where it was called from with what the work returned or threw.
/// The work must not refer to anything that may be gone before it is done; who awaits it may be gone as well.
///
/// To be called from a plain function that gives the task on: GCC 12 destroys a lambda's captures twice where the
/// lambda is a temporary of the very expression that is awaited.
template <typename Work>
QCoro::Task<std::invoke_result_t<Work>> onPool(QThreadPool& pool, Work work) {
    using Value = std::invoke_result_t<Work>;
    auto outcome = std::make_shared<PoolOutcome<Value>>();
    const QFuture<void> done = QtConcurrent::run(&pool, [outcome, work = std::move(work)] {
        try {
            outcome->value = work();
        } catch (...) {
            outcome->failure = std::current_exception();
        }
    });
    return outcomeOf<Value>(done, std::move(outcome));
}

} // namespace HarrowlaneApp
