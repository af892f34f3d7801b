#include "HarrowlaneApp/Copy/SettingsTexts.h"

namespace HarrowlaneApp {

std::string_view label(AppearancePreference preference) {
    constexpr std::array<std::string_view, 3> labels{"Match system", "Light", "Dark"};
    return labels[UsageModel::caseIndex(preference)];
}

namespace SettingsTexts {

namespace {

using Action = HelperRows::Action;

Badge helperBadge(HelperState state) {
    switch (state) {
    case HelperState::installed: return {.text = "Installed", .icon = BadgeIcon::sealCheck, .tone = BadgeTone::good};
    case HelperState::conflict:
        return {.text = "Needs attention", .icon = BadgeIcon::warning, .tone = BadgeTone::caution};
    case HelperState::notInstalled: break;
    }
    return {.text = "Not installed"};
}

Badge permissionBadge(Permission permission) {
    switch (permission) {
    case Permission::authorized:
    case Permission::provisional: return {.text = "Allowed", .icon = BadgeIcon::sealCheck, .tone = BadgeTone::good};
    case Permission::denied:
        return {.text = "Blocked in System Settings", .icon = BadgeIcon::bellSlash, .tone = BadgeTone::caution};
    case Permission::undetermined: break;
    }
    return {.text = "Not yet granted"};
}

} // namespace

AppearancePreference appearance(std::optional<std::string_view> stored) {
    if (!stored) return AppearancePreference::system;
    return UsageModel::fromText<AppearancePreference>(*stored).value_or(AppearancePreference::system);
}

HelperRows helperRows(HelperState state) {
    HelperRows rows{.badge = helperBadge(state)};
    switch (state) {
    case HelperState::notInstalled:
        rows.button = "Install helper";
        rows.isProminent = true;
        break;
    case HelperState::installed:
        rows.button = "Remove helper";
        rows.action = Action::uninstall;
        rows.smallText = "Run a Claude Code session to refresh the gauge.";
        break;
    case HelperState::conflict:
        rows.button = "Reinstall helper";
        rows.smallText = "Your statusLine changed outside the app.";
        break;
    }
    return rows;
}

PermissionRows permissionRows(Permission permission) {
    return {
        .badge = permissionBadge(permission),
        .isTestEnabled = permission == Permission::authorized,
        .offersSystemSettings = permission == Permission::denied,
    };
}

} // namespace SettingsTexts

} // namespace HarrowlaneApp
