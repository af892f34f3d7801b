#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "HarrowlaneApp/Alerts/AlertDecision.h"
#include "HarrowlaneApp/Alerts/AlertStateFile.h"
#include "HarrowlaneApp/Alerts/NotificationService.h"

namespace HarrowlaneApp {

/// Turns each new snapshot into at most a few banners, and owns what the alerts remember. For the main thread. Nothing
/// that goes wrong here is told.
class NotificationCoordinator {
public:
    struct Surroundings {
        /// Outlives the coordinator.
        NotificationService& service;
        std::filesystem::path stateURL;
        Bundle bundle = Bundle::absent;
    };

    /// Loads the state. A bundled program asks for permission, and looks what came of it once the user has answered;
    /// another one never talks to the service on its own.
    explicit NotificationCoordinator(const Surroundings& surroundings);
    NotificationCoordinator(const NotificationCoordinator&) = delete;
    NotificationCoordinator& operator=(const NotificationCoordinator&) = delete;
    ~NotificationCoordinator() = default;

    /// Moves the state on, saves it, and then posts what there is to post. The clock is the snapshot's.
    void handle(const UsageModel::UsageSnapshot& snapshot, const AlertSettings& settings);

    /// Looks anew whether banners are allowed, and calls `done` then; not at all where the coordinator goes away first.
    void refreshAuthorization(std::function<void()> done = {});

    /// Posts a sample banner, whatever is allowed. Leaves the state alone.
    void sendTestNotification(UsageModel::Date now);

    [[nodiscard]] AuthorizationStatus authorization() const { return authorization_; }
    [[nodiscard]] const PersistedState& state() const { return state_; }

private:
    NotificationService& service_;
    AlertStateFile file_;
    Bundle bundle_;
    PersistedState state_;
    AuthorizationStatus authorization_ = AuthorizationStatus::notDetermined;
    /// Lets an answer that comes too late see that nobody waits for it.
    std::shared_ptr<NotificationCoordinator*> self_ = std::make_shared<NotificationCoordinator*>(this);
};

} // namespace HarrowlaneApp
