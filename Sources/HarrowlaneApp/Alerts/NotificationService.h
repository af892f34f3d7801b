#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "HarrowlaneApp/Alerts/Banner.h"

namespace HarrowlaneApp {

/// Whether the user lets the program show banners. A platform may know more of these: any number is one.
enum class AuthorizationStatus : int {
    notDetermined = 0,
    denied = 1,
    authorized = 2,
    provisional = 3,
    ephemeral = 4,
};

/// "notDetermined", "authorized", …; "unknown(7)" for a number without a name.
[[nodiscard]] std::string describe(AuthorizationStatus status);

/// Whether banners may be posted: authorized or provisional, nothing else.
[[nodiscard]] bool allowsBanners(AuthorizationStatus status);

/// What the user answered to the program's question.
struct PermissionAnswer {
    bool granted = false;
    /// Why it could not be asked.
    std::optional<std::string> error;
};

/// The desktop's notification centre. For the main thread: every operation is called there, and every answer comes
/// there, exactly once, perhaps before the operation returns. An answer that nobody waits for may be left empty.
class NotificationService {
public:
    virtual ~NotificationService() = default;

    /// Asks the user, where they were not asked before, to allow banners with sound.
    virtual void requestAuthorization(std::function<void(const PermissionAnswer&)> answer) = 0;

    virtual void authorizationStatus(std::function<void(AuthorizationStatus)> answer) = 0;

    /// Hands a banner over; answers, once that has been done, with what went wrong, if anything did. A banner with a
    /// delay is handed over at once and shown later.
    virtual void post(const Banner& banner, std::function<void(const std::optional<std::string>& error)> answer) = 0;

    /// The identifiers of the banners that were shown and not put away since.
    virtual void delivered(std::function<void(const std::vector<std::string>& identifiers)> answer) = 0;
};

} // namespace HarrowlaneApp
