#pragma once

#include <QObject>
#include <QPointer>

#include "HarrowlaneApp/Alerts/NotificationService.h"
#include "HarrowlaneApp/Platform/Portable/TrayIconStatusItem.h"

namespace HarrowlaneApp {

/// Banners as messages of the tray icon. Such a message has no identifier: a later one does not take an earlier one's
/// place, and none counts as delivered, since nobody tells when it was put away. Allowed while the icon is in a panel
/// that shows messages, not determined otherwise.
class TrayNotificationService : public QObject, public NotificationService {
    Q_OBJECT

public:
    /// `item` outlives the service.
    explicit TrayNotificationService(TrayIconStatusItem& item) : item_(item) {}

    void requestAuthorization(std::function<void(const PermissionAnswer&)> answer) override;
    void authorizationStatus(std::function<void(AuthorizationStatus)> answer) override;
    void post(const Banner& banner, std::function<void(const std::optional<std::string>&)> answer) override;
    void delivered(std::function<void(const std::vector<std::string>&)> answer) override;

private:
    [[nodiscard]] bool canShow() const;

    TrayIconStatusItem& item_;
};

} // namespace HarrowlaneApp
