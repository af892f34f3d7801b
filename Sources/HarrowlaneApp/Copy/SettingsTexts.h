#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "HarrowlaneApp/Copy/Readiness.h"
#include "UsageModel/EnumText.h"

namespace HarrowlaneApp {

/// The look that the user chose.
enum class AppearancePreference { system, light, dark };

/// Its name in the picker.
[[nodiscard]] std::string_view label(AppearancePreference preference);

} // namespace HarrowlaneApp

template <>
struct UsageModel::EnumNames<HarrowlaneApp::AppearancePreference> {
    static constexpr std::array<std::string_view, 3> names{"system", "light", "dark"};
};

/// What the settings window says.
namespace HarrowlaneApp::SettingsTexts {

/// The preference that is stored as text; `system` where none is stored or it is unknown.
[[nodiscard]] AppearancePreference appearance(std::optional<std::string_view> stored);

inline constexpr std::string_view gaugeSection = "Official usage gauge";
/// Code words stand between backticks.
inline constexpr std::string_view gaugeText =
    "The app reads Claude Code's official limit percentages through a tiny `statusLine` helper. Installing it adds one "
    "entry to `~/.claude/settings.json` (backed up first) and preserves any status line you already use. It's fully "
    "reversible.";
inline constexpr std::string_view statusRow = "Status";

inline constexpr std::string_view appearanceSection = "Appearance";
inline constexpr std::string_view appearancePicker = "Meter and dashboard";
inline constexpr std::string_view appearanceText =
    "The meter is a dark instrument by design. Choose Dark to keep it that way while the rest of the system stays "
    "light.";

inline constexpr std::string_view notificationsSection = "Notifications";
inline constexpr std::string_view alertsToggle = "Warn at 90%, 95%, and 99% of a limit";
inline constexpr std::string_view alertsText =
    "One alert per level, for each window you have — session, weekly, and Opus weekly — re-armed when the window "
    "resets. These need the gauge helper above: they quote your real percentage, so they stay quiet rather than guess.";
inline constexpr std::string_view permissionRow = "Permission";
inline constexpr std::string_view testButton = "Send a test notification";
inline constexpr std::string_view systemSettingsButton = "Open System Settings";

inline constexpr std::string_view pollingSection = "Continuous gauge (advanced)";
inline constexpr std::string_view pollingText =
    "Keeps numbers fresh even when Claude Code is idle by reading your Keychain token to poll a private endpoint. "
    "Unofficial — off by default.";
/// Off and disabled: nothing stands behind it.
inline constexpr std::string_view pollingToggle = "Poll while idle (not yet available)";

enum class BadgeIcon { dashedCircle, sealCheck, warning, bellSlash };
enum class BadgeTone { secondary, good, caution };

struct Badge {
    std::string_view text;
    BadgeIcon icon = BadgeIcon::dashedCircle;
    BadgeTone tone = BadgeTone::secondary;

    friend bool operator==(const Badge&, const Badge&) = default;
};

/// The rows about the status line helper.
struct HelperRows {
    enum class Action { install, uninstall };

    Badge badge;
    std::string_view button;
    Action action = Action::install;
    bool isProminent = false;
    std::optional<std::string_view> smallText;

    friend bool operator==(const HelperRows&, const HelperRows&) = default;
};

[[nodiscard]] HelperRows helperRows(HelperState state);

/// Whether the system lets the program post notifications.
enum class Permission { undetermined, denied, authorized, provisional };

/// The rows about that permission.
struct PermissionRows {
    Badge badge;
    bool isTestEnabled = false;
    bool offersSystemSettings = false;

    friend bool operator==(const PermissionRows&, const PermissionRows&) = default;
};

[[nodiscard]] PermissionRows permissionRows(Permission permission);

} // namespace HarrowlaneApp::SettingsTexts
