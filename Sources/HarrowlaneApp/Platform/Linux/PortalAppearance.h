#pragma once

#include <optional>

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include "HarrowlaneApp/Platform/Portable/PaletteAppearance.h"

namespace HarrowlaneApp {

/// What the desktop's portal tells. Until it has answered, and where it has no preference, the palette's lightness
/// decides. What a portal said holds when it goes away, and until the next one answers.
class PortalAppearance : public DesktopAppearance {
    Q_OBJECT

public:
    explicit PortalAppearance(QDBusConnection bus, QObject* parent = nullptr);

    [[nodiscard]] Appearance appearance() const override;
    [[nodiscard]] bool increasesContrast() const override { return told_.contrast == highContrast; }
    /// The portal has no such setting.
    [[nodiscard]] bool reducesTransparency() const override { return false; }

private Q_SLOTS:
    void takeChange(const QString& group, const QString& key, const QDBusVariant& value);

private:
    static constexpr uint highContrast = 1;
    static constexpr uint prefersDark = 1;
    static constexpr uint prefersLight = 2;

    /// In the portal's numbers; 0 is no preference.
    struct Told {
        uint colorScheme = 0;
        uint contrast = 0;

        friend bool operator==(const Told&, const Told&) = default;
    };

    void listen();
    void readAll();
    void take(const Told& told);

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    PaletteAppearance palette_;
    Told told_;
};

} // namespace HarrowlaneApp
