#include "HarrowlaneApp/Platform/Linux/LinuxStatusItem.h"

#include <QCoreApplication>

namespace HarrowlaneApp {

LinuxStatusItem::LinuxStatusItem(QDBusConnection bus, QObject* parent)
    : StatusItem(parent),
      bus_(std::move(bus)),
      registration_(bus_) {
    connect(&item_, &NotifierItem::activated, this, &StatusItem::activated);
    connect(&item_, &NotifierItem::menuWanted, &ownMenu_, &WidgetMenu::popUp);
    connect(&menu_, &MenuExport::entryChosen, this, &StatusItem::entryChosen);
    connect(&ownMenu_, &WidgetMenu::entryChosen, this, &StatusItem::entryChosen);
    connect(&registration_, &NotifierRegistration::decided, this, &LinuxStatusItem::move);
}

LinuxStatusItem::~LinuxStatusItem() {
    if (service_.isEmpty()) return;
    bus_.unregisterService(service_);
    bus_.unregisterObject(NotifierItem::menuPath);
    bus_.unregisterObject(NotifierItem::path);
}

void LinuxStatusItem::setFace(const StatusItemFace& face) {
    face_ = face;
    item_.setFace(face);
    menu_.setEntries(face.menu);
    ownMenu_.setEntries(face.menu);
    if (service_.isEmpty()) putUp();
    // The embedded item is given even the same face again: that is when it looks whether a panel has come.
    if (embedded_) embed();
}

void LinuxStatusItem::putUp() {
    service_ = publish();
    if (service_.isEmpty()) {
        // There is no bus.
        move(false);
    } else {
        registration_.start(service_);
    }
}

QString LinuxStatusItem::publish() {
    bus_.registerObject(NotifierItem::path, &item_, QDBusConnection::ExportAdaptors);
    bus_.registerObject(NotifierItem::menuPath, &menu_, QDBusConnection::ExportAdaptors);
    const QString name = QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
    // Where such names may not be taken, the connection's own serves.
    return bus_.registerService(name) ? name : bus_.baseService();
}

void LinuxStatusItem::move(bool hosted) {
    if (hosted) {
        embedded_.reset();
        setPresence(Presence::shown);
    } else {
        embed();
    }
}

void LinuxStatusItem::embed() {
    if (!embedded_) {
        embedded_ = std::make_unique<TrayIconStatusItem>();
        connect(embedded_.get(), &StatusItem::activated, this, &StatusItem::activated);
        connect(embedded_.get(), &StatusItem::entryChosen, this, &StatusItem::entryChosen);
    }
    embedded_->setFace(face_);
    setPresence(embedded_->presence());
}

void LinuxStatusItem::setPresence(Presence presence) {
    if (presence == presence_) return;
    presence_ = presence;
    Q_EMIT presenceChanged(presence);
}

} // namespace HarrowlaneApp
