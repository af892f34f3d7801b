#pragma once

#include <functional>
#include <string>

#include <QCoroTask>

#include "HarrowlaneApp/Alerts/NotificationService.h"
#include "HarrowlaneApp/Store/Clock.h"

namespace HarrowlaneApp {

/// Asks for permission, posts three banners one after the other, waits until they have come, and tells through `print`,
/// line by line, what became of each. All three outlive it.
QCoro::Task<> probeNotifications(NotificationService& service, Clock& clock,
                                 const std::function<void(const std::string&)>& print);

/// The same on this desktop, printed to the standard output; only tells so where the process is not bundled.
void runNotifyTest(int argc, char** argv);

} // namespace HarrowlaneApp
