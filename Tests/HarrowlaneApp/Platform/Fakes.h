#pragma once

#include <functional>
#include <utility>

#include "HarrowlaneApp/Platform/Autostart.h"
#include "HarrowlaneApp/Platform/DesktopAppearance.h"
#include "HarrowlaneApp/Platform/Preferences.h"
#include "HarrowlaneApp/Platform/SingleInstance.h"
#include "HarrowlaneApp/Platform/StatusItem.h"

// Desktops as a test wants them.
namespace HarrowlaneApp {

/// Keeps the faces it was given, and is clicked by its signals.
class FakeStatusItem : public StatusItem {
public:
    void setFace(const StatusItemFace& face) override { faces.append(face); }
    [[nodiscard]] Presence presence() const override { return presence_; }
    void setPresence(Presence presence) {
        if (std::exchange(presence_, presence) != presence) Q_EMIT presenceChanged(presence);
    }

    QList<StatusItemFace> faces;

private:
    Presence presence_ = Presence::pending;
};

class FakeDesktopAppearance : public DesktopAppearance {
public:
    [[nodiscard]] Appearance appearance() const override { return shown.appearance; }
    [[nodiscard]] bool increasesContrast() const override { return shown.increasesContrast; }
    [[nodiscard]] bool reducesTransparency() const override { return shown.reducesTransparency; }

    struct Shown {
        Appearance appearance = Appearance::light;
        bool increasesContrast = false;
        bool reducesTransparency = false;
    };
    void show(const Shown& now) {
        shown = now;
        Q_EMIT changed();
    }

    Shown shown;
};

class FakePreferences : public Preferences {
public:
    [[nodiscard]] bool thresholdAlertsEnabled() const override { return alerts_; }
    void setThresholdAlertsEnabled(bool enabled) override {
        if (std::exchange(alerts_, enabled) != enabled) Q_EMIT changed();
    }
    [[nodiscard]] QString appearancePreference() const override { return appearance_; }
    void setAppearancePreference(const QString& preference) override {
        if (std::exchange(appearance_, preference) != preference) Q_EMIT changed();
    }

private:
    bool alerts_ = true;
    QString appearance_ = QStringLiteral("system");
};

class FakeSingleInstance : public SingleInstance {
public:
    [[nodiscard]] Claim claim() override { return answer; }

    Claim answer = Claim::first;
};

class FakeAutostart : public Autostart {
public:
    [[nodiscard]] bool isAvailable() const override { return true; }
    [[nodiscard]] bool isEnabled() const override { return enabled; }
    void setEnabled(bool enable) override {
        if (failure) failure();
        enabled = enable;
    }

    bool enabled = false;
    /// Throws what is to be thrown.
    std::function<void()> failure;
};

} // namespace HarrowlaneApp
