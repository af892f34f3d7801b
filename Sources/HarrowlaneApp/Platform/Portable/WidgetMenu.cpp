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

WidgetMenu::WidgetMenu(QObject* parent) : QObject(parent) {}

WidgetMenu::~WidgetMenu() = default;

void WidgetMenu::setEntries(const QList<MenuEntry>& entries) {
    const bool isOther = !sameIds(entries, entries_);
    entries_ = entries;
    if (!menu_) return;
    if (isOther) build();
    applyEntries();
}

QMenu* WidgetMenu::menu() {
    if (!menu_) {
        menu_ = std::make_unique<QMenu>();
        build();
        applyEntries();
    }
    return menu_.get();
}

void WidgetMenu::popUp(const QPoint& place) {
    menu()->popup(place);
}

void WidgetMenu::applyEntries() {
    const QList<QAction*> actions = menu_->actions();
    for (qsizetype index = 0; index < entries_.size(); ++index) {
        if (!entries_[index].id.isEmpty()) apply(entries_[index], *actions[index]);
    }
}

void WidgetMenu::build() {
    menu_->clear();
    for (const MenuEntry& entry : entries_) {
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
