#include "HarrowlaneApp/Shell/MenuBarProgram.h"

#include "HarrowlaneApp/Shell/StatusFace.h"

namespace HarrowlaneApp {

MenuBarProgram::MenuBarProgram(UsageStore& store, StatusItem& item) : store_(store), item_(item) {
    show();
    connect(&store_, &UsageStore::snapshotChanged, this, &MenuBarProgram::show);
    connect(&item_, &StatusItem::activated, this, [this](const QPoint& place) { emit openRequested(place); });
    connect(&item_, &StatusItem::entryChosen, this, &MenuBarProgram::choose);
}

void MenuBarProgram::show() {
    item_.setFace(statusFace(store_.snapshot()));
}

void MenuBarProgram::choose(const QString& entry) {
    if (entry == MenuEntries::open) emit openRequested({});
    if (entry == MenuEntries::refresh) store_.refreshNow();
    if (entry == MenuEntries::settings) emit settingsRequested();
    if (entry == MenuEntries::quit) emit quitRequested();
}

} // namespace HarrowlaneApp
