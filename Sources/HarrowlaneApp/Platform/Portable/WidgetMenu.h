#pragma once

#include <memory>

#include <QMenu>

#include "HarrowlaneApp/Platform/StatusItem.h"

namespace HarrowlaneApp {

/// The item's menu as a menu of our own, for panels that show none.
class WidgetMenu : public QObject {
    Q_OBJECT

public:
    explicit WidgetMenu(QObject* parent = nullptr);
    ~WidgetMenu() override;

    /// An open menu stays open.
    void setEntries(const QList<MenuEntry>& entries);
    void popUp(const QPoint& place);
    /// Never null.
    [[nodiscard]] QMenu* menu() const { return menu_.get(); }

Q_SIGNALS:
    void entryChosen(const QString& id);

private:
    void build(const QList<MenuEntry>& entries);

    // A widget, and so not this object's child.
    std::unique_ptr<QMenu> menu_;
    QList<MenuEntry> entries_;
};

} // namespace HarrowlaneApp
