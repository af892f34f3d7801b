#include "HarrowlaneApp/Platform/Linux/MenuExport.h"

#include <algorithm>

#include <QDBusError>

namespace HarrowlaneApp {

namespace {

const QString labelKey = QStringLiteral("label");
const QString enabledKey = QStringLiteral("enabled");
const QString typeKey = QStringLiteral("type");
const QString toggleTypeKey = QStringLiteral("toggle-type");
const QString toggleStateKey = QStringLiteral("toggle-state");

/// An underscore alone would mark the letter behind it as the one to press.
QString escaped(QString label) {
    return label.replace('_', "__");
}

QVariantMap propertiesOf(const MenuEntry& entry) {
    if (entry.id.isEmpty()) return {{typeKey, QStringLiteral("separator")}};
    QVariantMap properties{{labelKey, escaped(entry.label)}, {enabledKey, entry.enabled}};
    if (entry.checked) {
        properties[toggleTypeKey] = QStringLiteral("checkmark");
        properties[toggleStateKey] = *entry.checked ? 1 : 0;
    }
    return properties;
}

QVariantMap only(const QStringList& names, const QVariantMap& properties) {
    if (names.isEmpty()) return properties;
    QVariantMap named;
    for (const QString& name : names) {
        if (properties.contains(name)) named[name] = properties[name];
    }
    return named;
}

} // namespace

MenuExport::MenuExport(QObject* parent) : QObject(parent) {
    registerMenuForms();
    new MenuAdaptor(*this);
}

void MenuExport::setEntries(const QList<MenuEntry>& entries) {
    const QList<Item> before = std::exchange(items_, itemsOf(entries));
    if (std::ranges::equal(before, items_, {}, &Item::id, &Item::id)) {
        tellChanges(before);
    } else {
        ++revision_;
        Q_EMIT layoutChanged(revision_);
    }
}

std::optional<MenuLayout> MenuExport::layout(int id, int depth, const QStringList& names) const {
    const auto properties = propertiesOf(id, names);
    if (!properties) return std::nullopt;
    MenuLayout layout{.id = id, .properties = *properties, .children = {}};
    if (id != rootId || depth == 0) return layout;
    for (const Item& item : items_) layout.children.append(*this->layout(item.id, 0, names));
    return layout;
}

std::optional<QVariantMap> MenuExport::propertiesOf(int id, const QStringList& names) const {
    if (id == rootId) return only(names, {{QStringLiteral("children-display"), QStringLiteral("submenu")}});
    const Item* item = find(id);
    if (item == nullptr) return std::nullopt;
    return only(names, HarrowlaneApp::propertiesOf(item->entry));
}

QList<int> MenuExport::ids() const {
    QList<int> ids{rootId};
    std::ranges::transform(items_, std::back_inserter(ids), &Item::id);
    return ids;
}

bool MenuExport::take(int id, const QString& event) {
    const Item* item = find(id);
    if (item == nullptr) return id == rootId;
    const bool chosen = event == QStringLiteral("clicked") && item->entry.enabled && !item->entry.id.isEmpty();
    if (chosen) Q_EMIT entryChosen(QString(item->entry.id));
    return true;
}

int MenuExport::idFor(const QString& key) {
    const auto known = numbers_.constFind(key);
    if (known != numbers_.constEnd()) return *known;
    const int number = static_cast<int>(numbers_.size()) + 1;
    numbers_.insert(key, number);
    return number;
}

QList<MenuExport::Item> MenuExport::itemsOf(const QList<MenuEntry>& entries) {
    QList<Item> items;
    int separators = 0;
    for (const MenuEntry& entry : entries) {
        const QString key = entry.id.isEmpty() ? '/' + QString::number(++separators) : '.' + entry.id;
        items.append({.id = idFor(key), .entry = entry});
    }
    return items;
}

void MenuExport::tellChanges(const QList<Item>& before) {
    QList<MenuItemProperties> updated;
    QList<MenuItemKeys> removed;
    for (qsizetype index = 0; index < items_.size(); ++index) {
        const auto& [id, entry] = items_[index];
        const QVariantMap now = HarrowlaneApp::propertiesOf(entry);
        const QVariantMap old = HarrowlaneApp::propertiesOf(before[index].entry);
        MenuItemProperties changed{.id = id, .properties = {}};
        MenuItemKeys gone{.id = id, .keys = {}};
        for (const auto& [key, value] : now.asKeyValueRange()) {
            if (old.value(key) != value) changed.properties[key] = value;
        }
        for (const QString& key : old.keys()) {
            if (!now.contains(key)) gone.keys.append(key);
        }
        if (!changed.properties.isEmpty()) updated.append(changed);
        if (!gone.keys.isEmpty()) removed.append(gone);
    }
    if (!updated.isEmpty() || !removed.isEmpty()) Q_EMIT propertiesChanged(updated, removed);
}

const MenuExport::Item* MenuExport::find(int id) const {
    const auto found = std::ranges::find(items_, id, &Item::id);
    return found == items_.end() ? nullptr : &*found;
}

MenuAdaptor::MenuAdaptor(MenuExport& menu) : QDBusAbstractAdaptor(&menu), menu_(menu) {
    connect(&menu, &MenuExport::layoutChanged, this,
            [this](uint revision) { Q_EMIT LayoutUpdated(revision, MenuExport::rootId); });
    connect(&menu, &MenuExport::propertiesChanged, this, &MenuAdaptor::ItemsPropertiesUpdated);
}

uint MenuAdaptor::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames, MenuLayout& layout) {
    const auto found = menu_.layout(parentId, recursionDepth, propertyNames);
    if (found)
        layout = *found;
    else
        refuse(parentId);
    return menu_.revision();
}

QList<MenuItemProperties> MenuAdaptor::GetGroupProperties(const QList<int>& ids, const QStringList& propertyNames) {
    QList<MenuItemProperties> group;
    // No id at all asks for every item.
    for (const int id : ids.isEmpty() ? menu_.ids() : ids) {
        const auto properties = menu_.propertiesOf(id, propertyNames);
        if (properties) group.append({.id = id, .properties = *properties});
    }
    return group;
}

QDBusVariant MenuAdaptor::GetProperty(int id, const QString& name) {
    const auto properties = menu_.propertiesOf(id, {name});
    if (properties && properties->contains(name)) return QDBusVariant(properties->value(name));
    refuse(id);
    return QDBusVariant(QString());
}

void MenuAdaptor::Event(int id, const QString& eventId, const QDBusVariant&, uint) {
    if (!menu_.take(id, eventId)) refuse(id);
}

QList<int> MenuAdaptor::EventGroup(const QList<MenuEvent>& events) {
    QList<int> unknown;
    for (const MenuEvent& event : events) {
        if (!menu_.take(event.id, event.name)) unknown.append(event.id);
    }
    return unknown;
}

bool MenuAdaptor::AboutToShow(int) {
    // The menu is always up to date.
    return false;
}

QList<int> MenuAdaptor::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
    for (const int id : ids) {
        if (!menu_.ids().contains(id)) idErrors.append(id);
    }
    return {};
}

void MenuAdaptor::refuse(int id) {
    if (menu_.calledFromDBus()) {
        menu_.sendErrorReply(QDBusError::InvalidArgs,
                             QStringLiteral("the menu has no such item or property: %1").arg(id));
    }
}

} // namespace HarrowlaneApp
