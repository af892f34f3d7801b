#include "HarrowlaneApp/Platform/Linux/NotifierItem.h"

#include "HarrowlaneApp/Platform/Desktop.h"

namespace HarrowlaneApp {

NotifierItem::NotifierItem(QObject* parent) : QObject(parent) {
    registerNotifierForms();
    new NotifierItemAdaptor(*this);
}

void NotifierItem::setFace(const StatusItemFace& face) {
    const StatusItemFace before = std::exchange(face_, face);
    if (face.images != before.images) {
        const QList<IconPixmap> seen = std::exchange(icons_, pixmapsOf(face.images));
        if (icons_ != seen) Q_EMIT iconsChanged();
    }
    if (face.title != before.title) Q_EMIT titleChanged();
    if (face.toolTipTitle != before.toolTipTitle || face.toolTipText != before.toolTipText) Q_EMIT toolTipChanged();
}

NotifierToolTip NotifierItem::toolTip() const {
    // Panels take the text for markup.
    return {.iconName = {}, .icons = {}, .title = face_.toolTipTitle, .text = face_.toolTipText.toHtmlEscaped()};
}

NotifierItemAdaptor::NotifierItemAdaptor(NotifierItem& item) : QDBusAbstractAdaptor(&item), item_(item) {
    connect(&item, &NotifierItem::iconsChanged, this, &NotifierItemAdaptor::NewIcon);
    connect(&item, &NotifierItem::titleChanged, this, &NotifierItemAdaptor::NewTitle);
    connect(&item, &NotifierItem::toolTipChanged, this, &NotifierItemAdaptor::NewToolTip);
}

QString NotifierItemAdaptor::id() const {
    return QString::fromLatin1(Desktop::identifier);
}

void NotifierItemAdaptor::ProvideXdgActivationToken(const QString& token) {
    qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

} // namespace HarrowlaneApp
