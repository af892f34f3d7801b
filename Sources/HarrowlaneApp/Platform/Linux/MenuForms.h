#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace HarrowlaneApp {

// What goes over the bus when a panel asks for the menu.

struct MenuItemProperties {
    int id = 0;
    QVariantMap properties;

    friend bool operator==(const MenuItemProperties&, const MenuItemProperties&) = default;
};

/// Properties that an item does not have any more.
struct MenuItemKeys {
    int id = 0;
    QStringList keys;

    friend bool operator==(const MenuItemKeys&, const MenuItemKeys&) = default;
};

struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> children;
};

struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuItemProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItemProperties& item);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuItemKeys& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItemKeys& item);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

/// Makes the types above known to the bus. Once is enough, more does no harm.
void registerMenuForms();

} // namespace HarrowlaneApp

Q_DECLARE_METATYPE(HarrowlaneApp::MenuItemProperties)
Q_DECLARE_METATYPE(HarrowlaneApp::MenuItemKeys)
Q_DECLARE_METATYPE(HarrowlaneApp::MenuLayout)
Q_DECLARE_METATYPE(HarrowlaneApp::MenuEvent)
