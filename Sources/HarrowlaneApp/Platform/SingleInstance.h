#pragma once

#include <QObject>

namespace HarrowlaneApp {

/// Sees to it that the program runs once. For the main thread.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    enum class Claim {
        /// No other one runs. This is the one from now on, for as long as this object lives.
        first,
        /// Another one runs, and was told to show itself.
        shownElsewhere,
        /// Another one runs, but gave no answer in `answerSeconds`.
        unanswered,
    };
    static constexpr double answerSeconds = 3.0;

    using QObject::QObject;

    /// Where it cannot be found out whether another one runs, this one is the first. Runs the event loop while it waits
    /// for an answer.
    [[nodiscard]] virtual Claim claim() = 0;

Q_SIGNALS:
    /// Another start asks this first one to show itself.
    void showRequested();
};

} // namespace HarrowlaneApp
