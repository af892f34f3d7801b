#include "HarrowlaneApp/Platform/Linux/PortalAppearance.h"

#include <QDBusMetaType>

#include "HarrowlaneApp/Platform/Linux/Bus.h"

namespace HarrowlaneApp {

namespace {

using Groups = QMap<QString, QVariantMap>;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString objectPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
const QString contrastKey = QStringLiteral("contrast");

/// 0 for what is no number; some portals wrap theirs twice.
uint numberIn(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

} // namespace

PortalAppearance::PortalAppearance(QDBusConnection bus, QObject* parent)
    : DesktopAppearance(parent),
      bus_(std::move(bus)) {
    qRegisterMetaType<QDBusVariant>();
    qDBusRegisterMetaType<Groups>();
    listen();
    readAll();
}

Appearance PortalAppearance::appearance() const {
    if (told_.colorScheme == prefersDark) return Appearance::dark;
    if (told_.colorScheme == prefersLight) return Appearance::light;
    return palette_.appearance();
}

void PortalAppearance::listen() {
    watcher_.setConnection(bus_);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForRegistration);
    watcher_.addWatchedService(service);
    connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, &PortalAppearance::readAll);
    bus_.connect(service, objectPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                 SLOT(takeChange(QString, QString, QDBusVariant)));
    connect(&palette_, &DesktopAppearance::changed, this, [this] {
        if (told_.colorScheme != prefersDark && told_.colorScheme != prefersLight) Q_EMIT changed();
    });
}

void PortalAppearance::readAll() {
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, objectPath, settingsInterface, QStringLiteral("ReadAll"));
    message << QStringList(appearanceGroup);
    Bus::call(bus_, {.message = message, .timeoutMilliseconds = Bus::noTimeout}, *this,
              [this](const QDBusMessage& reply) {
                  if (Bus::isError(reply)) return;
                  const QVariantMap settings = Bus::firstOf<Groups>(reply).value(appearanceGroup);
                  take({.colorScheme = numberIn(settings.value(colorSchemeKey)),
                        .contrast = numberIn(settings.value(contrastKey))});
              });
}

void PortalAppearance::takeChange(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group != appearanceGroup) return;
    Told told = told_;
    if (key == colorSchemeKey) told.colorScheme = numberIn(value.variant());
    if (key == contrastKey) told.contrast = numberIn(value.variant());
    take(told);
}

void PortalAppearance::take(const Told& told) {
    const Appearance before = appearance();
    const bool contrastBefore = increasesContrast();
    told_ = told;
    if (appearance() != before || increasesContrast() != contrastBefore) Q_EMIT changed();
}

} // namespace HarrowlaneApp
