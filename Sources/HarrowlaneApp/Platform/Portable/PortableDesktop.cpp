#include "HarrowlaneApp/Platform/Desktop.h"

#include <utility>

#include "HarrowlaneApp/Platform/Later.h"
#include "HarrowlaneApp/Platform/Portable/FileInstance.h"
#include "HarrowlaneApp/Platform/Portable/NoAutostart.h"
#include "HarrowlaneApp/Platform/Portable/PaletteAppearance.h"
#include "HarrowlaneApp/Platform/Portable/SettingsPreferences.h"
#include "HarrowlaneApp/Platform/Portable/TrayNotificationService.h"

namespace HarrowlaneApp::Desktop {

void leaveBusToSession() {}

// Qt finds them when it first needs one.
void findFonts() {}

bool hasDisplay() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
#else
    return true;
#endif
}

bool blendsWindows() {
    return true;
}

QString platformName() {
    return QStringLiteral("portable");
}

std::unique_ptr<StatusItem> makeStatusItem() {
    return std::make_unique<TrayIconStatusItem>();
}

std::unique_ptr<NotificationService> makeNotificationService(StatusItem& item) {
    return std::make_unique<TrayNotificationService>(dynamic_cast<TrayIconStatusItem&>(item));
}

std::unique_ptr<DesktopAppearance> makeAppearance() {
    return std::make_unique<PaletteAppearance>();
}

std::unique_ptr<Preferences> makePreferences() {
    return std::make_unique<SettingsPreferences>(SettingsPreferences::usualFile());
}

std::unique_ptr<SingleInstance> makeSingleInstance(const std::filesystem::path& support) {
    return std::make_unique<FileInstance>(support / "instance");
}

std::unique_ptr<Autostart> makeAutostart() {
    return std::make_unique<NoAutostart>();
}

std::unique_ptr<QObject> makeAlarm(double seconds, std::function<void()> ring) {
    auto alarm = std::make_unique<QObject>();
    later(*alarm, seconds, std::move(ring));
    return alarm;
}

} // namespace HarrowlaneApp::Desktop
