#include "HarrowlaneApp/Alerts/NotificationService.h"

namespace HarrowlaneApp {

std::string describe(AuthorizationStatus status) {
    switch (status) {
    case AuthorizationStatus::notDetermined: return "notDetermined";
    case AuthorizationStatus::denied: return "denied";
    case AuthorizationStatus::authorized: return "authorized";
    case AuthorizationStatus::provisional: return "provisional";
    case AuthorizationStatus::ephemeral: return "ephemeral";
    }
    return "unknown(" + std::to_string(static_cast<int>(status)) + ")";
}

bool allowsBanners(AuthorizationStatus status) {
    return status == AuthorizationStatus::authorized || status == AuthorizationStatus::provisional;
}

} // namespace HarrowlaneApp
