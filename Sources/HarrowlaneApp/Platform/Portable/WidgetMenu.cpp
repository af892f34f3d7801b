#include "HarrowlaneApp/Platform/Portable/WidgetMenu.h"

#include <QAction>

namespace HarrowlaneApp {

namespace {

void apply(const MenuEntry& entry, QAction& action) {
    QString label = entry.label;
    action.setText(label.replace('&', "&&"));
    action.setEnabled(entry.enabled);
    action.setCheckable(entry.checked.has_value());
    action.setChecked(entry.checked.value_or(false));
}

bool sameIds(const QList<MenuEntry>& left, const QList<MenuEntry>& right) {
    return std::ranges::equal(left, right, {}, &MenuEntry::id, &MenuEntry::id);
}

} // namespace

WidgetMenu::WidgetMenu(QObject* parent) : QObject(parent), menu_(std::make_unique<QMenu>()) {}

WidgetMenu::~WidgetMenu() = default;

void WidgetMenu::setEntries(const QList<MenuEntry>& entries) {
    if (!sameIds(entries, entries_)) build(entries);
    const QList<QAction*> actions = menu_->actions();
    for (qsizetype index = 0; index < entries.size(); ++index) {
        if (!entries[index].id.isEmpty()) apply(entries[index], *actions[index]);
    }
    entries_ = entries;
}

void WidgetMenu::popUp(const QPoint& place) {
    menu_->popup(place);
}

void WidgetMenu::build(const QList<MenuEntry>& entries) {
    menu_->clear();
    for (const MenuEntry& entry : entries) {
        if (entry.id.isEmpty()) {
            menu_->addSeparator();
            continue;
        }
        QAction* action = menu_->addAction(entry.label);
        // The mark is the program's to change, once what was chosen has come about.
        connect(action, &QAction::triggered, this, [this, id = entry.id, action] {
            const auto current = std::ranges::find(entries_, id, &MenuEntry::id);
            if (current != entries_.end()) apply(*current, *action);
            Q_EMIT entryChosen(id);
        });
    }
}

} // namespace HarrowlaneApp
