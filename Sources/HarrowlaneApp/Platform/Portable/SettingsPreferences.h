#pragma once

#include <QFileSystemWatcher>
#include <QSettings>

#include "HarrowlaneApp/Platform/Preferences.h"

namespace HarrowlaneApp {

/// The preferences in a file that can be read and edited, with what else stands in it left alone. Its folder is made
/// where it is missing. Where the file cannot be written, what was set holds until the program ends.
class SettingsPreferences : public Preferences {
    Q_OBJECT

public:
    explicit SettingsPreferences(const QString& file, QObject* parent = nullptr);

    /// Where preferences are kept on this system.
    [[nodiscard]] static QString usualFile();

    [[nodiscard]] bool thresholdAlertsEnabled() const override { return held_.thresholdAlertsEnabled; }
    void setThresholdAlertsEnabled(bool enabled) override;
    [[nodiscard]] QString appearancePreference() const override { return held_.appearancePreference; }
    void setAppearancePreference(const QString& preference) override;

private:
    struct Held {
        bool thresholdAlertsEnabled = true;
        QString appearancePreference;

        friend bool operator==(const Held&, const Held&) = default;
    };

    [[nodiscard]] Held read() const;
    void look();
    void watch();
    void store(const QString& key, const QVariant& value);

    QSettings settings_;
    QFileSystemWatcher watcher_;
    Held held_;
};

} // namespace HarrowlaneApp
