#include "HarrowlaneApp/Platform/Portable/TrayNotificationService.h"

#include "HarrowlaneApp/Platform/BannerDelay.h"

namespace HarrowlaneApp {

namespace {

void show(QSystemTrayIcon& icon, const Banner& banner) {
    const bool critical = banner.urgency == Banner::Urgency::timeSensitive;
    icon.showMessage(QString::fromStdString(banner.title), QString::fromStdString(banner.body),
                     critical ? QSystemTrayIcon::Critical : QSystemTrayIcon::Information);
}

} // namespace

bool TrayNotificationService::canShow() const {
    return item_.presence() == StatusItem::Presence::shown && QSystemTrayIcon::supportsMessages();
}

void TrayNotificationService::requestAuthorization(std::function<void(const PermissionAnswer&)> answer) {
    if (answer) answer({.granted = canShow(), .error = std::nullopt});
}

void TrayNotificationService::authorizationStatus(std::function<void(AuthorizationStatus)> answer) {
    if (answer) answer(canShow() ? AuthorizationStatus::authorized : AuthorizationStatus::notDetermined);
}

void TrayNotificationService::post(const Banner& banner,
                                   std::function<void(const std::optional<std::string>&)> answer) {
    if (!canShow()) {
        if (answer) answer("there is no tray that shows messages");
        return;
    }
    afterDelay(*this, banner, [this, banner] {
        if (canShow()) show(*item_.icon(), banner);
    });
    if (answer) answer(std::nullopt);
}

void TrayNotificationService::delivered(std::function<void(const std::vector<std::string>&)> answer) {
    if (answer) answer({});
}

} // namespace HarrowlaneApp
