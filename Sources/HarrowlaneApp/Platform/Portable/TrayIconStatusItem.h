#pragma once

#include <memory>

#include <QSystemTrayIcon>

#include "HarrowlaneApp/Platform/Portable/WidgetMenu.h"
#include "HarrowlaneApp/Platform/StatusItem.h"

namespace HarrowlaneApp {

/// The item by Qt's own tray icon: on X11 panels that embed windows, on macOS and on Windows. Only square images are
/// shown where there are any, for Qt squeezes others into a square. Qt does not tell that a panel has come or gone:
/// `presence` is right from one `setFace` to the next. An icon whose panel comes back is shown there again at once.
class TrayIconStatusItem : public StatusItem {
    Q_OBJECT

public:
    explicit TrayIconStatusItem(QObject* parent = nullptr);
    ~TrayIconStatusItem() override;

    void setFace(const StatusItemFace& face) override;
    [[nodiscard]] Presence presence() const override { return presence_; }

    /// Null while there is no panel for it.
    [[nodiscard]] QSystemTrayIcon* icon() const { return icon_.get(); }

private:
    void putUp();
    void show(const StatusItemFace& face);
    void setPresence(Presence presence);

    WidgetMenu menu_;
    std::unique_ptr<QSystemTrayIcon> icon_;
    StatusItemFace face_;
    Presence presence_ = Presence::pending;
};

} // namespace HarrowlaneApp
