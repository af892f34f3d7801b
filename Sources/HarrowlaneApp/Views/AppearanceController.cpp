#include "HarrowlaneApp/Views/AppearanceController.h"

namespace HarrowlaneApp {

namespace {

std::optional<Appearance> forcedBy(AppearancePreference preference) {
    switch (preference) {
    case AppearancePreference::light: return Appearance::light;
    case AppearancePreference::dark: return Appearance::dark;
    case AppearancePreference::system: break;
    }
    return std::nullopt;
}

} // namespace

AppearancePreference currentAppearance(const Preferences& preferences) {
    return SettingsTexts::appearance(preferences.appearancePreference().toStdString());
}

AppearanceController::AppearanceController(const Preferences& preferences, ApplicationLook& look, QObject* parent)
    : QObject(parent),
      preferences_(preferences),
      look_(look) {}

void AppearanceController::applicationDidFinishLaunching() {
    applyCurrent();
    disconnect(observer_);
    observer_ = connect(&preferences_, &Preferences::changed, this, &AppearanceController::applyCurrent);
}

void AppearanceController::applyCurrent() {
    const auto wanted = forcedBy(currentAppearance(preferences_));
    if (look_.forced() != wanted) look_.force(wanted);
}

} // namespace HarrowlaneApp
