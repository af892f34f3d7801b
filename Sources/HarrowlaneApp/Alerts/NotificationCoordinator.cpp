#include "HarrowlaneApp/Alerts/NotificationCoordinator.h"

#include <utility>

namespace HarrowlaneApp {

NotificationCoordinator::NotificationCoordinator(const Surroundings& surroundings)
    : service_(surroundings.service),
      file_(surroundings.stateURL),
      bundle_(surroundings.bundle),
      state_(file_.load()) {
    if (bundle_ == Bundle::absent) return;
    service_.requestAuthorization([weak = std::weak_ptr(self_)](const PermissionAnswer&) {
        if (const auto self = weak.lock()) (*self)->refreshAuthorization();
    });
}

void NotificationCoordinator::handle(const UsageModel::UsageSnapshot& snapshot, const AlertSettings& settings) {
    AlertDecision decision = decide({.state = std::move(state_),
                                     .snapshot = snapshot,
                                     .settings = settings,
                                     .bundle = bundle_,
                                     .authorization = authorization_});
    state_ = std::move(decision.state);
    file_.save(state_, snapshot.generatedAt);
    for (const Banner& banner : decision.banners) service_.post(banner, {});
    // A service may come later than the program does, at login for one.
    if (!allowsBanners(authorization_)) refreshAuthorization();
}

void NotificationCoordinator::refreshAuthorization(std::function<void()> done) {
    if (bundle_ == Bundle::absent) {
        if (done) done();
        return;
    }
    service_.authorizationStatus([weak = std::weak_ptr(self_), done = std::move(done)](AuthorizationStatus status) {
        const auto self = weak.lock();
        if (!self) return;
        (*self)->authorization_ = status;
        if (done) done();
    });
}

void NotificationCoordinator::sendTestNotification(UsageModel::Date now) {
    service_.post(Banners::test(now), {});
}

} // namespace HarrowlaneApp
