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
    /// Never null. Made when it is first wanted: a panel's own menu is the rule, and a widget looks for fonts.
    [[nodiscard]] QMenu* menu();

Q_SIGNALS:
    void entryChosen(const QString& id);

private:
    void build();
    void applyEntries();

    // A widget, and so not this object's child. Null until it is wanted.
    std::unique_ptr<QMenu> menu_;
    QList<MenuEntry> entries_;
};

} // namespace HarrowlaneApp
