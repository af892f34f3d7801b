#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "HarrowlaneApp/Alerts/NotificationService.h"

/// The diagnosis of notifications in a terminal: what it posts, and what it prints. Who runs it asks the service and
/// waits; it touches no state of the alerts.
namespace HarrowlaneApp::NotificationProbe {

/// Printed, and nothing else done, where the process is not bundled.
inline constexpr std::string_view notBundled = "not bundled — run the binary inside Brindlewick.app";
/// Printed as the last line where banners are not allowed.
inline constexpr std::string_view notAuthorized = "not authorized — no banners will be posted";
/// How long it takes, after the last banner was handed over, until all of them have come.
inline constexpr double settleSeconds = 9.0;

struct Sample {
    UsageModel::WindowKind window = UsageModel::WindowKind::session5h;
    std::int64_t threshold = 0;
    double used = 0.0;
    double resetsInSeconds = 0.0;
    double delaySeconds = 0.0;
};

/// Posted one after the other, each once the one before was handed over.
inline constexpr std::array<Sample, 3> samples{{
    {.window = UsageModel::WindowKind::session5h, .threshold = 90, .used = 0.91, .resetsInSeconds = 4800},
    {.window = UsageModel::WindowKind::weeklyAll,
     .threshold = 95,
     .used = 0.96,
     .resetsInSeconds = 172800,
     .delaySeconds = 3},
    {.window = UsageModel::WindowKind::weeklyOpus,
     .threshold = 99,
     .used = 0.995,
     .resetsInSeconds = 172800,
     .delaySeconds = 6},
}};

/// What the alerts would post for a sample now, with its delay and an identifier of its own.
[[nodiscard]] Banner banner(const Sample& sample, UsageModel::Date now);

// What is printed: lines without the last line feed.
[[nodiscard]] std::string permissionLine(const PermissionAnswer& answer);
[[nodiscard]] std::string statusLine(AuthorizationStatus status);
/// Two lines for a banner that was handed over, one for one that was not.
[[nodiscard]] std::string postLines(const Sample& sample, const Banner& posted,
                                    const std::optional<std::string>& error);
/// One line, and one for each banner.
[[nodiscard]] std::string deliveredLines(const std::vector<std::string>& identifiers);

} // namespace HarrowlaneApp::NotificationProbe
