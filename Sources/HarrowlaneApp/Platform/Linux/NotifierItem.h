#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>

#include "HarrowlaneApp/Platform/Linux/IconPixmaps.h"
#include "HarrowlaneApp/Platform/StatusItem.h"

namespace HarrowlaneApp {

/// The item as panels see it. It is an object on the bus once it has been registered there. A change of what it shows
/// is told to all panels, and nothing else is.
class NotifierItem : public QObject {
    Q_OBJECT

public:
    static constexpr const char* path = "/StatusNotifierItem";
    static constexpr const char* menuPath = "/StatusNotifierItem/Menu";

    explicit NotifierItem(QObject* parent = nullptr);

    void setFace(const StatusItemFace& face);
    [[nodiscard]] const QList<IconPixmap>& icons() const { return icons_; }
    [[nodiscard]] const QString& title() const { return face_.title; }
    [[nodiscard]] NotifierToolTip toolTip() const;

Q_SIGNALS:
    void activated(const QPoint& place);
    /// The panel shows no menu itself.
    void menuWanted(const QPoint& place);
    void iconsChanged();
    void titleChanged();
    void toolTipChanged();

private:
    StatusItemFace face_;
    QList<IconPixmap> icons_;
};

/// The interface of it that panels know.
class NotifierItemAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconThemePath READ noText CONSTANT)
    Q_PROPERTY(QString IconName READ noText CONSTANT)
    Q_PROPERTY(QList<HarrowlaneApp::IconPixmap> IconPixmap READ icons)
    Q_PROPERTY(QString OverlayIconName READ noText CONSTANT)
    Q_PROPERTY(QList<HarrowlaneApp::IconPixmap> OverlayIconPixmap READ noIcons CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ noText CONSTANT)
    Q_PROPERTY(QList<HarrowlaneApp::IconPixmap> AttentionIconPixmap READ noIcons CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ noText CONSTANT)
    Q_PROPERTY(HarrowlaneApp::NotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)

public:
    explicit NotifierItemAdaptor(NotifierItem& item);

    [[nodiscard]] QString category() const { return QStringLiteral("ApplicationStatus"); }
    [[nodiscard]] QString id() const;
    [[nodiscard]] QString title() const { return item_.title(); }
    [[nodiscard]] QString status() const { return QStringLiteral("Active"); }
    [[nodiscard]] int windowId() const { return 0; }
    [[nodiscard]] QString noText() const { return {}; }
    [[nodiscard]] QList<HarrowlaneApp::IconPixmap> icons() const { return item_.icons(); }
    [[nodiscard]] QList<HarrowlaneApp::IconPixmap> noIcons() const { return {}; }
    [[nodiscard]] HarrowlaneApp::NotifierToolTip toolTip() const { return item_.toolTip(); }
    [[nodiscard]] bool itemIsMenu() const { return false; }
    [[nodiscard]] QDBusObjectPath menu() const { return QDBusObjectPath(NotifierItem::menuPath); }

public Q_SLOTS:
    // The names are the interface's.
    void Activate(int x, int y) { Q_EMIT item_.activated({x, y}); }
    void SecondaryActivate(int x, int y) { Q_EMIT item_.activated({x, y}); }
    void ContextMenu(int x, int y) { Q_EMIT item_.menuWanted({x, y}); }
    void Scroll(int, const QString&) {}
    /// Comes before `Activate`: what lets a window come to the front that is opened on a click.
    void ProvideXdgActivationToken(const QString& token);

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewAttentionIcon();
    void NewOverlayIcon();
    void NewToolTip();
    void NewStatus(const QString& status);

private:
    NotifierItem& item_;
};

} // namespace HarrowlaneApp
