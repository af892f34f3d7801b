#pragma once

#include <memory>

#include "HarrowlaneApp/Platform/Linux/MenuExport.h"
#include "HarrowlaneApp/Platform/Linux/NotifierItem.h"
#include "HarrowlaneApp/Platform/Linux/NotifierRegistration.h"
#include "HarrowlaneApp/Platform/Portable/TrayIconStatusItem.h"

namespace HarrowlaneApp {

/// The item on a Linux desktop: over the bus where a panel takes it there, as an embedded window where one does not,
/// and nowhere where there is neither. It moves when panels come and go.
class LinuxStatusItem : public StatusItem {
    Q_OBJECT

public:
    explicit LinuxStatusItem(QDBusConnection bus, QObject* parent = nullptr);
    ~LinuxStatusItem() override;

    void setFace(const StatusItemFace& face) override;
    [[nodiscard]] Presence presence() const override { return presence_; }

private:
    void putUp();
    /// Returns the name under which panels find the item.
    [[nodiscard]] QString publish();
    void move(bool hosted);
    void embed();
    void setPresence(Presence presence);

    QDBusConnection bus_;
    NotifierItem item_;
    MenuExport menu_;
    NotifierRegistration registration_;
    /// For panels that leave the menu to us.
    WidgetMenu ownMenu_;
    /// Null while the item is on the bus.
    std::unique_ptr<TrayIconStatusItem> embedded_;
    StatusItemFace face_;
    Presence presence_ = Presence::pending;
    /// The item's name on the bus; empty until it is up.
    QString service_;
};

} // namespace HarrowlaneApp
