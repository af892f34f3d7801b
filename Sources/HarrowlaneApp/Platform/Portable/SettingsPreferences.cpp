#include "HarrowlaneApp/Platform/Portable/SettingsPreferences.h"

#include <system_error>

#include <QFileInfo>

#include "HarrowlaneApp/Platform/Desktop.h"
#include "UsageModel/Files.h"

namespace HarrowlaneApp {

namespace {

const QString thresholdAlertsKey = QStringLiteral("thresholdAlertsEnabled");
const QString appearanceKey = QStringLiteral("appearancePreference");

} // namespace

SettingsPreferences::SettingsPreferences(const QString& file, QObject* parent)
    : Preferences(parent),
      settings_(file, QSettings::IniFormat),
      held_(read()) {
    watch();
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &SettingsPreferences::look);
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &SettingsPreferences::look);
}

QString SettingsPreferences::usualFile() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, Desktop::displayName, Desktop::displayName).fileName();
}

void SettingsPreferences::setThresholdAlertsEnabled(bool enabled) {
    store(thresholdAlertsKey, enabled);
}

void SettingsPreferences::setAppearancePreference(const QString& preference) {
    store(appearanceKey, preference);
}

SettingsPreferences::Held SettingsPreferences::read() const {
    return {.thresholdAlertsEnabled = settings_.value(thresholdAlertsKey, true).toBool(),
            .appearancePreference = settings_.value(appearanceKey, QStringLiteral("system")).toString()};
}

void SettingsPreferences::look() {
    settings_.sync();
    watch();
    const Held seen = read();
    if (seen == held_) return;
    held_ = seen;
    Q_EMIT changed();
}

/// The file is replaced as a whole by Qt, which only its folder tells, and written in place by many editors, which only
/// the file itself tells. Whatever was replaced is to be watched anew.
void SettingsPreferences::watch() {
    const QFileInfo file(settings_.fileName());
    const QString folder = file.absolutePath();
    try {
        UsageModel::createPrivateFolders(folder.toStdString());
    } catch (const std::system_error&) {
        // Without the folder there is nothing to watch.
    }
    if (!watcher_.directories().contains(folder)) watcher_.addPath(folder);
    if (file.exists() && !watcher_.files().contains(file.filePath())) watcher_.addPath(file.filePath());
}

void SettingsPreferences::store(const QString& key, const QVariant& value) {
    settings_.setValue(key, value);
    look();
}

} // namespace HarrowlaneApp
