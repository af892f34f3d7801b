#pragma once

#include <QObject>
#include <QString>

namespace HarrowlaneApp {

/// What the user decided, kept across starts. For the main thread.
class Preferences : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// True where it was never decided.
    [[nodiscard]] virtual bool thresholdAlertsEnabled() const = 0;
    virtual void setThresholdAlertsEnabled(bool enabled) = 0;
    /// As it is kept, which may be a text that means nothing; "system" where it was never decided.
    [[nodiscard]] virtual QString appearancePreference() const = 0;
    virtual void setAppearancePreference(const QString& preference) = 0;

Q_SIGNALS:
    /// One of them is not what it was: set here, or by whoever else writes them.
    void changed();
};

} // namespace HarrowlaneApp
