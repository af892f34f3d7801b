#include "HarrowlaneApp/Shell/MenuBarExtra.h"

#include <system_error>

#include "HarrowlaneApp/Shell/StatusFace.h"

namespace HarrowlaneApp {

MenuBarExtra::MenuBarExtra(Surroundings surroundings) : given_(surroundings) {
    show();
    connect(&given_.store, &UsageStore::snapshotChanged, this, &MenuBarExtra::show);
    connect(&given_.item, &StatusItem::activated, this, &MenuBarExtra::clicked);
    connect(&given_.item, &StatusItem::entryChosen, this, &MenuBarExtra::choose);
}

void MenuBarExtra::show() {
    const Autostart& autostart = given_.autostart;
    given_.item.setFace(statusFace({
        .snapshot = given_.store.snapshot(),
        .startsAtLogin = autostart.isAvailable() ? std::optional(autostart.isEnabled()) : std::nullopt,
    }));
}

void MenuBarExtra::choose(const QString& entry) {
    if (entry == MenuEntries::open) Q_EMIT openRequested();
    if (entry == MenuEntries::refresh) given_.store.refreshNow();
    if (entry == MenuEntries::settings) Q_EMIT settingsRequested();
    if (entry == MenuEntries::startAtLogin) toggleStartAtLogin();
    if (entry == MenuEntries::quit) Q_EMIT quitRequested();
}

void MenuBarExtra::toggleStartAtLogin() {
    try {
        given_.autostart.setEnabled(!given_.autostart.isEnabled());
    } catch (const std::system_error& error) {
        Q_EMIT failed(QStringLiteral("Start at login could not be changed: ") + QString::fromUtf8(error.what()));
    }
    show();
}

} // namespace HarrowlaneApp
