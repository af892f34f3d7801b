#pragma once

#include <QObject>

#include "HarrowlaneApp/Platform/Autostart.h"
#include "HarrowlaneApp/Platform/StatusItem.h"
#include "HarrowlaneApp/Store/UsageStore.h"

namespace HarrowlaneApp {

/// Keeps the status item to what the store knows, and tells or does what its menu asks for.
class MenuBarExtra : public QObject {
    Q_OBJECT

public:
    /// All of it outlives the extra.
    struct Surroundings {
        UsageStore& store;
        StatusItem& item;
        Autostart& autostart;
    };

    /// Puts the item up at once, with what the store shows before its first run.
    explicit MenuBarExtra(Surroundings surroundings);

    /// Shows what the store knows. It does so by itself whenever that changes.
    void show();

Q_SIGNALS:
    /// The item was clicked, at this place of the screen.
    void clicked(const QPoint& place);
    void openRequested();
    void settingsRequested();
    void quitRequested();
    /// What was chosen could not be done.
    void failed(const QString& words);

private:
    void choose(const QString& entry);
    void toggleStartAtLogin();

    Surroundings given_;
};

} // namespace HarrowlaneApp
