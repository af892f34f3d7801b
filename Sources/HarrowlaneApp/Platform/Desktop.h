#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include <QString>

#include "HarrowlaneApp/Alerts/NotificationService.h"
#include "HarrowlaneApp/Platform/Autostart.h"
#include "HarrowlaneApp/Platform/DesktopAppearance.h"
#include "HarrowlaneApp/Platform/Preferences.h"
#include "HarrowlaneApp/Platform/SingleInstance.h"
#include "HarrowlaneApp/Platform/StatusItem.h"

/// What this build has for each interface to the desktop. All of them want an application object with widgets; nothing
/// is seen on the desktop before it is asked for.
namespace HarrowlaneApp::Desktop {

/// The program's name among all programs, where it is not bundled too.
inline constexpr const char* identifier = "app.brindlewick.Brindlewick";
/// Its name as users read it.
inline constexpr const char* displayName = "Brindlewick";

/// Whether there is a screen to show windows on. Wants no application object: asked before there is one.
[[nodiscard]] bool hasDisplay();

/// Keeps this process from starting a session bus where the session has none, as the D-Bus library would by way of
/// another program. Wants no application object: called before there is one.
void leaveBusToSession();

/// Finds out which fonts there are, which takes some 10 ms of a start; Qt need not do it again. From any
/// thread, and without an application object: while one is made, there is time for it.
void findFonts();

/// Whether what a window leaves transparent shows what lies below it. It may begin and end at any time.
[[nodiscard]] bool blendsWindows();

/// "linux" or "portable".
[[nodiscard]] QString platformName();

[[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem();
/// `item` is where the portable service shows its banners, and outlives it.
[[nodiscard]] std::unique_ptr<NotificationService> makeNotificationService(StatusItem& item);
[[nodiscard]] std::unique_ptr<DesktopAppearance> makeAppearance();
[[nodiscard]] std::unique_ptr<Preferences> makePreferences();
/// `support` is the program's folder.
[[nodiscard]] std::unique_ptr<SingleInstance> makeSingleInstance(const std::filesystem::path& support);
[[nodiscard]] std::unique_ptr<Autostart> makeAutostart();

/// Calls `ring` once, later, on this thread, when the span is over; not where what it returns is gone by then. `linux`
/// counts the time for which the machine sleeps, `portable` does not.
[[nodiscard]] std::unique_ptr<QObject> makeAlarm(double seconds, std::function<void()> ring);

} // namespace HarrowlaneApp::Desktop
