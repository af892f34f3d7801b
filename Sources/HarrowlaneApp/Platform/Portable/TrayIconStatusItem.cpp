#include "HarrowlaneApp/Platform/Portable/TrayIconStatusItem.h"

#include <QCursor>
#include <QIcon>
#include <QPixmap>

namespace HarrowlaneApp {

namespace {

QIcon iconOf(const QList<QImage>& images) {
    const auto isSquare = [](const QImage& image) { return image.width() == image.height(); };
    const bool anySquare = std::ranges::any_of(images, isSquare);
    QIcon icon;
    for (const QImage& image : images) {
        if (!anySquare || isSquare(image)) icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

QString toolTipOf(const StatusItemFace& face) {
    return face.toolTipText.isEmpty() ? face.toolTipTitle : face.toolTipTitle + '\n' + face.toolTipText;
}

/// Where the click was: Qt does not tell, but the pointer is still there. Or else the icon's middle.
QPoint clickedPlace(const QSystemTrayIcon& icon) {
    const QRect area = icon.geometry();
    const QPoint pointer = QCursor::pos();
    return !area.isValid() || area.contains(pointer) ? pointer : area.center();
}

} // namespace

TrayIconStatusItem::TrayIconStatusItem(QObject* parent) : StatusItem(parent) {
    connect(&menu_, &WidgetMenu::entryChosen, this, &StatusItem::entryChosen);
}

TrayIconStatusItem::~TrayIconStatusItem() = default;

void TrayIconStatusItem::setFace(const StatusItemFace& face) {
    const bool available = QSystemTrayIcon::isSystemTrayAvailable();
    if (available && !icon_) {
        putUp();
        show(face);
    } else if (face != face_) {
        show(face);
    }
    setPresence(available ? Presence::shown : Presence::absent);
}

void TrayIconStatusItem::putUp() {
    icon_ = std::make_unique<QSystemTrayIcon>();
    icon_->setContextMenu(menu_.menu());
    connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        // The second half of a double click follows a first one that counted.
        const bool counts = reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::MiddleClick;
        if (counts) Q_EMIT activated(clickedPlace(*icon_));
    });
}

void TrayIconStatusItem::show(const StatusItemFace& face) {
    menu_.setEntries(face.menu);
    if (icon_) {
        icon_->setToolTip(toolTipOf(face));
        icon_->setIcon(iconOf(face.images));
        icon_->setVisible(true);
    }
    face_ = face;
}

void TrayIconStatusItem::setPresence(Presence presence) {
    if (presence == presence_) return;
    presence_ = presence;
    Q_EMIT presenceChanged(presence);
}

} // namespace HarrowlaneApp
