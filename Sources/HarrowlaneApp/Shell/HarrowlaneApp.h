#pragma once

#include <memory>
#include <optional>

#include <QObject>
#include <QPoint>
#include <QTimer>

#include "HarrowlaneApp/Drawing/DisplayOptions.h"
#include "HarrowlaneApp/Platform/Autostart.h"
#include "HarrowlaneApp/Platform/DesktopAppearance.h"
#include "HarrowlaneApp/Platform/Preferences.h"
#include "HarrowlaneApp/Platform/StatusItem.h"
#include "HarrowlaneApp/Shell/MenuBarExtra.h"
#include "HarrowlaneApp/Store/UsageStore.h"
#include "HarrowlaneApp/Views/AppearanceController.h"
#include "HarrowlaneApp/Views/ApplicationLook.h"
#include "HarrowlaneApp/Views/DashboardView.h"
#include "HarrowlaneApp/Views/PopoverWindow.h"
#include "HarrowlaneApp/Views/SettingsView.h"

namespace HarrowlaneApp {

/// The program as its user meets it: the status item with its popover, the dashboard and the settings, all on one
/// store. For the main thread; wants an application object with widgets.
class HarrowlaneApp : public QObject {
    Q_OBJECT

public:
    /// How long there must be no panel before the popover stands as an ordinary window: one that crashed is back
    /// sooner.
    static constexpr double panelGraceSeconds = 4.0;

    /// All but the world outlives the program.
    struct Surroundings {
        /// What the store lives on. Its alert settings are taken from the preferences.
        UsageStore::World world;
        StatusItem& item;
        Preferences& preferences;
        const DesktopAppearance& appearance;
        Autostart& autostart;
    };

    /// Puts the status item up, and starts the store.
    explicit HarrowlaneApp(Surroundings surroundings);
    ~HarrowlaneApp() override;

    [[nodiscard]] UsageStore& store() { return store_; }

    /// Made a moment after the start, so that the first click need not wait for it; here at the latest.
    [[nodiscard]] PopoverWindow& popover();
    /// The other two are made when they are first wanted, and kept.
    [[nodiscard]] DashboardView& dashboard();
    [[nodiscard]] SettingsView& settings();

    /// Opens the popover at the place of the last click, for whoever has no place to tell.
    void open();
    void openDashboard();
    void openSettings();

Q_SIGNALS:
    void quitRequested();

private:
    void connectItem();
    void openAt(const QPoint& place);
    void followPresence();
    void showWithoutPanel();

    Surroundings given_;
    DisplayOptions options_;
    ApplicationLook look_;
    AppearanceController appearanceController_;
    UsageStore store_;
    MenuBarExtra menuBarExtra_;

    std::optional<QPoint> lastPlace_;
    QTimer panelGrace_;
    std::unique_ptr<PopoverWindow> popover_;
    std::unique_ptr<DashboardView> dashboard_;
    std::unique_ptr<SettingsView> settings_;
};

} // namespace HarrowlaneApp
