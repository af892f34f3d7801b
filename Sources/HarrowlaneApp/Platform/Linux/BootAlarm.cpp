#include "HarrowlaneApp/Platform/Linux/BootAlarm.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <sys/timerfd.h>
#include <unistd.h>

#include "HarrowlaneApp/Platform/Later.h"

namespace HarrowlaneApp {

namespace {

int startedTimer(double seconds) {
    const int descriptor = timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK);
    // A span of zero would mean that it is not to ring at all.
    const double span = std::max(seconds, 1e-3);
    const double whole = std::floor(span);
    itimerspec spec{};
    spec.it_value.tv_sec = static_cast<time_t>(whole);
    spec.it_value.tv_nsec = static_cast<long>((span - whole) * 1e9);
    if (descriptor >= 0) timerfd_settime(descriptor, 0, &spec, nullptr);
    return descriptor;
}

} // namespace

BootAlarm::BootAlarm(double seconds, std::function<void()> ring) : descriptor_(startedTimer(seconds)) {
    if (descriptor_ < 0) {
        // A late alarm is better than none.
        later(*this, seconds, std::move(ring));
        return;
    }
    notifier_.emplace(descriptor_, QSocketNotifier::Read);
    connect(&*notifier_, &QSocketNotifier::activated, this, [this, ring = std::move(ring)] {
        notifier_->setEnabled(false);
        ring();
    });
}

BootAlarm::~BootAlarm() {
    notifier_.reset();
    if (descriptor_ >= 0) close(descriptor_);
}

} // namespace HarrowlaneApp
