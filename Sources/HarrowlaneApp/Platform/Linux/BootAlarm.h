#pragma once

#include <functional>
#include <optional>

#include <QSocketNotifier>

namespace HarrowlaneApp {

/// Rings once, when a span is over that also counts the time for which the machine sleeps: one that ended in the sleep
/// rings as the machine wakes. It wakes no machine itself.
class BootAlarm : public QObject {
public:
    /// `ring` may end the alarm.
    BootAlarm(double seconds, std::function<void()> ring);
    BootAlarm(const BootAlarm&) = delete;
    BootAlarm& operator=(const BootAlarm&) = delete;
    ~BootAlarm() override;

private:
    int descriptor_;
    /// Absent where there was no descriptor left for it.
    std::optional<QSocketNotifier> notifier_;
};

} // namespace HarrowlaneApp
