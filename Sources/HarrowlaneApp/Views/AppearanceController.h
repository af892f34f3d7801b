#pragma once

#include <optional>

#include <QObject>

#include "HarrowlaneApp/Copy/SettingsTexts.h"
#include "HarrowlaneApp/Platform/Preferences.h"
#include "HarrowlaneApp/Views/ApplicationLook.h"

namespace HarrowlaneApp {

/// The appearance that the user chose; `system` where the preference means nothing.
[[nodiscard]] AppearancePreference currentAppearance(const Preferences& preferences);

/// Applies the user's choice to all windows. Lives as long as the program; what it is given outlives it.
class AppearanceController : public QObject {
    Q_OBJECT

public:
    AppearanceController(const Preferences& preferences, ApplicationLook& look, QObject* parent = nullptr);

    /// Applies the preference, and again whenever a preference changes.
    void applicationDidFinishLaunching();
    /// Forces what was chosen, or nothing. Does nothing where that is in force already: the change of another
    /// preference redraws nothing.
    void applyCurrent();

private:
    const Preferences& preferences_;
    ApplicationLook& look_;
    QMetaObject::Connection observer_;
};

} // namespace HarrowlaneApp
