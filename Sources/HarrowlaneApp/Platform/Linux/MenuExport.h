#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusContext>
#include <QHash>

#include "HarrowlaneApp/Platform/Linux/MenuForms.h"
#include "HarrowlaneApp/Platform/StatusItem.h"

namespace HarrowlaneApp {

/// The item's menu for panels that draw it themselves. It is an object on the bus once it has been registered there.
/// What changes is told to all panels, and nothing else is.
class MenuExport : public QObject, public QDBusContext {
    Q_OBJECT

public:
    static constexpr int rootId = 0;

    explicit MenuExport(QObject* parent = nullptr);

    void setEntries(const QList<MenuEntry>& entries);

    [[nodiscard]] uint revision() const { return revision_; }
    /// The root with its entries where `depth` is not 0, or one entry. Of their properties only those named, or all
    /// where none is named. Absent for an id that the menu does not have.
    [[nodiscard]] std::optional<MenuLayout> layout(int id, int depth, const QStringList& names) const;
    [[nodiscard]] std::optional<QVariantMap> propertiesOf(int id, const QStringList& names) const;
    /// All ids, the root's first.
    [[nodiscard]] QList<int> ids() const;
    /// False for an id that the menu does not have.
    bool take(int id, const QString& event);

Q_SIGNALS:
    void entryChosen(const QString& id);
    void layoutChanged(uint revision);
    void propertiesChanged(const QList<HarrowlaneApp::MenuItemProperties>& updated,
                           const QList<HarrowlaneApp::MenuItemKeys>& removed);

private:
    struct Item {
        int id = 0;
        MenuEntry entry;
    };

    [[nodiscard]] int idFor(const QString& key);
    [[nodiscard]] QList<Item> itemsOf(const QList<MenuEntry>& entries);
    void tellChanges(const QList<Item>& before);
    [[nodiscard]] const Item* find(int id) const;

    QList<Item> items_;
    /// An entry keeps its number for as long as the program runs.
    QHash<QString, int> numbers_;
    uint revision_ = 1;
};

/// The interface of it that panels know.
class MenuAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    explicit MenuAdaptor(MenuExport& menu);

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString textDirection() const { return QStringLiteral("ltr"); }
    [[nodiscard]] QString status() const { return QStringLiteral("normal"); }
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    // The names are the interface's.
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   HarrowlaneApp::MenuLayout& layout);
    QList<HarrowlaneApp::MenuItemProperties> GetGroupProperties(const QList<int>& ids,
                                                                const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<HarrowlaneApp::MenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<HarrowlaneApp::MenuItemProperties>& updatedProps,
                                const QList<HarrowlaneApp::MenuItemKeys>& removedProps);
    void LayoutUpdated(uint revision, int parent);
    void ItemActivationRequested(int id, uint timestamp);

private:
    /// Answers a question for what the menu does not have.
    void refuse(int id);

    MenuExport& menu_;
};

} // namespace HarrowlaneApp
