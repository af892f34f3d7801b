#pragma once

#include <QObject>

#include "HarrowlaneApp/Platform/StatusItem.h"
#include "HarrowlaneApp/Store/UsageStore.h"

namespace HarrowlaneApp {

/// Keeps the status item to what the store knows, and does what its menu asks for. Both outlive it.
class MenuBarProgram : public QObject {
    Q_OBJECT

public:
    /// Puts the item up at once, with what the store shows before its first run.
    MenuBarProgram(UsageStore& store, StatusItem& item);

signals:
    /// The item was clicked, at this place of the screen, or its menu asked for the popover, which has no place.
    void openRequested(std::optional<QPoint> place);
    void settingsRequested();
    void quitRequested();

private:
    void show();
    void choose(const QString& entry);

    UsageStore& store_;
    StatusItem& item_;
};

} // namespace HarrowlaneApp
