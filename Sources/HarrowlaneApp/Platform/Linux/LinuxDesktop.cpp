#include "HarrowlaneApp/Platform/Desktop.h"

#include <QDBusConnection>
#include <QFileInfo>
#include <fontconfig/fontconfig.h>

#include "HarrowlaneApp/Platform/Linux/BootAlarm.h"
#include "HarrowlaneApp/Platform/Linux/BusInstance.h"
#include "HarrowlaneApp/Platform/Linux/BusNotificationService.h"
#include "HarrowlaneApp/Platform/Linux/LinuxStatusItem.h"
#include "HarrowlaneApp/Platform/Linux/PortalAppearance.h"
#include "HarrowlaneApp/Platform/Linux/XdgAutostart.h"
#include "HarrowlaneApp/Platform/Portable/FileInstance.h"
#include "HarrowlaneApp/Platform/Portable/SettingsPreferences.h"

namespace HarrowlaneApp::Desktop {

void leaveBusToSession() {
    constexpr const char* address = "DBUS_SESSION_BUS_ADDRESS";
    if (!qEnvironmentVariableIsEmpty(address)) return;
    const QString usersBus = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    if (!QFileInfo::exists(usersBus)) qputenv(address, "disabled:");
}

void findFonts() {
    // Where this fails, Qt's own search fails too, and says so.
    (void)FcInit();
}

QString platformName() {
    return QStringLiteral("linux");
}

std::unique_ptr<StatusItem> makeStatusItem() {
    return std::make_unique<LinuxStatusItem>(QDBusConnection::sessionBus());
}

std::unique_ptr<NotificationService> makeNotificationService(StatusItem&) {
    return std::make_unique<BusNotificationService>(QDBusConnection::sessionBus());
}

std::unique_ptr<DesktopAppearance> makeAppearance() {
    return std::make_unique<PortalAppearance>(QDBusConnection::sessionBus());
}

std::unique_ptr<Preferences> makePreferences() {
    return std::make_unique<SettingsPreferences>(SettingsPreferences::usualFile());
}

std::unique_ptr<SingleInstance> makeSingleInstance(const std::filesystem::path& support) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) return std::make_unique<BusInstance>(bus);
    return std::make_unique<FileInstance>(support / "instance");
}

std::unique_ptr<Autostart> makeAutostart() {
    return std::make_unique<XdgAutostart>(XdgAutostart::usualPlace());
}

std::unique_ptr<QObject> makeAlarm(double seconds, std::function<void()> ring) {
    return std::make_unique<BootAlarm>(seconds, std::move(ring));
}

} // namespace HarrowlaneApp::Desktop
