#pragma once

#include <optional>

#include <QImage>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QString>

namespace HarrowlaneApp {

/// A line of the item's menu.
struct MenuEntry {
    /// Told when the entry is chosen. It stays the same while label and mark change, and no two entries share one.
    /// Empty for a line that parts the entries above it from those below.
    QString id;
    QString label;
    bool enabled = true;
    /// Whether the entry bears a mark; absent where it cannot have one.
    std::optional<bool> checked;

    friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

/// All that the item shows.
struct StatusItemFace {
    /// One picture in several shapes and sizes, the best first. Which of them is seen is the desktop's choice: panels
    /// that want squares take the one next to their height.
    QList<QImage> images;
    /// What the item is called where it is spoken or listed.
    QString title;
    QString toolTipTitle;
    QString toolTipText;
    QList<MenuEntry> menu;

    friend bool operator==(const StatusItemFace&, const StatusItemFace&) = default;
};

/// The program's place in the desktop's panel. For the main thread.
class StatusItem : public QObject {
    Q_OBJECT

public:
    enum class Presence {
        /// The desktop has not been asked, or has not answered yet.
        pending,
        /// The item is in a panel.
        shown,
        /// There is no panel for it: the program must be reachable in another way. That may change at any time.
        absent,
    };
    Q_ENUM(Presence)

    using QObject::QObject;

    /// Shows this from now on; the first call puts the item up. What is the same as before is not sent again.
    virtual void setFace(const StatusItemFace& face) = 0;
    [[nodiscard]] virtual Presence presence() const = 0;

Q_SIGNALS:
    /// The item was clicked, at this place of the screen.
    void activated(const QPoint& place);
    void entryChosen(const QString& id);
    void presenceChanged(HarrowlaneApp::StatusItem::Presence presence);
};

} // namespace HarrowlaneApp
