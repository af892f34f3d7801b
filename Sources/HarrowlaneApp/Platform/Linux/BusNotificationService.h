#pragma once

#include <deque>
#include <optional>
#include <utility>
#include <vector>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

#include "HarrowlaneApp/Alerts/NotificationService.h"

namespace HarrowlaneApp {

/// Banners by the desktop's notification service. There is nobody to ask for permission: banners are allowed where a
/// service runs or can be started, and not determined otherwise. All answers come later, in the order of the questions
/// of one kind; a service that hangs makes an error of its banner after `Bus::answerMilliseconds`, and holds up nothing
/// but the banners behind it.
class BusNotificationService : public QObject, public NotificationService {
    Q_OBJECT

public:
    explicit BusNotificationService(QDBusConnection bus, QObject* parent = nullptr);

    void requestAuthorization(std::function<void(const PermissionAnswer&)> answer) override;
    void authorizationStatus(std::function<void(AuthorizationStatus)> answer) override;
    void post(const Banner& banner, std::function<void(const std::optional<std::string>&)> answer) override;
    void delivered(std::function<void(const std::vector<std::string>&)> answer) override;

private Q_SLOTS:
    void forgetClosed(uint id, uint reason);

private:
    struct Posting {
        Banner banner;
        std::function<void(const std::optional<std::string>&)> answer;
    };

    void listen();
    void forgetService();
    void enqueue(Posting posting);
    void begin();
    void askCapabilities();
    void notify();
    void finish(const std::optional<std::string>& error);
    [[nodiscard]] QDBusMessage notifyCall(const Banner& banner) const;
    void keep(const std::string& identifier, uint id);

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    /// The first of them is being posted: the number that the service gives a banner is known before the next banner
    /// goes out, which may be one that takes its place.
    std::deque<Posting> queue_;
    /// By the service's numbers, in the order in which they came to be shown.
    std::vector<std::pair<std::string, uint>> shown_;
    /// Whether the service takes a body for markup; absent until it has said so.
    std::optional<bool> readsMarkup_;
};

} // namespace HarrowlaneApp
