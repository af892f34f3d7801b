#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "HarrowlaneApp/Copy/SettingsTexts.h"
#include "HarrowlaneApp/Platform/Preferences.h"
#include "HarrowlaneApp/Store/UsageStore.h"
#include "HarrowlaneApp/Views/GroundView.h"
#include "HarrowlaneApp/Views/HUDButton.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/HelperWatch.h"
#include "HarrowlaneApp/Views/SettingsControls.h"

class QVBoxLayout;

namespace HarrowlaneApp {

/// Opens the system's settings for notifications, where it knows how.
void openSystemSettings();

/// The settings window's content. What is clicked takes effect at once.
class SettingsView : public GroundView {
    Q_OBJECT

public:
    static constexpr QSize fixedSize{460, 560};

    /// What the settings act on; all of it outlives the view.
    struct Surroundings {
        UsageStore& store;
        Preferences& preferences;
        /// Claude Code's settings file: watched while the view is open. Absent in pictures.
        std::optional<std::filesystem::path> settingsFile;
        std::function<void()> openSystemSettings = HarrowlaneApp::openSystemSettings;
    };

    SettingsView(const ApplicationLook& look, Surroundings surroundings, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    /// Adds a titled panel to the form; its content goes into what is returned.
    QVBoxLayout* addSection(QVBoxLayout& form, std::string_view title);
    void addGaugeSection(QVBoxLayout& form);
    void addAppearanceSection(QVBoxLayout& form);
    void addNotificationsSection(QVBoxLayout& form);
    void addPollingSection(QVBoxLayout& form);

    void showHelper();
    void showError();
    void showPermission();
    void showPreferences();
    void changeHelper();

    Surroundings given_;
    std::unique_ptr<HelperWatch> watch_;

    SettingsBadge* helperBadge_ = nullptr;
    PushButton* helperButton_ = nullptr;
    HUDLabel* helperText_ = nullptr;
    /// Takes no room while there is no error.
    QWidget* errorRow_ = nullptr;
    HUDLabel* error_ = nullptr;
    SegmentedPicker* appearance_ = nullptr;
    SwitchButton* alerts_ = nullptr;
    SettingsBadge* permissionBadge_ = nullptr;
    PushButton* testButton_ = nullptr;
    PushButton* systemButton_ = nullptr;
};

} // namespace HarrowlaneApp
