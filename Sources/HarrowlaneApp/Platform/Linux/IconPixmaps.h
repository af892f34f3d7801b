#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>

namespace HarrowlaneApp {

/// An image as it goes over the bus: rows from the top, four bytes a pixel, alpha, red, green, blue, not premultiplied.
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;

    friend bool operator==(const IconPixmap&, const IconPixmap&) = default;
};

/// What a panel shows beside the pointer.
struct NotifierToolTip {
    QString iconName;
    QList<IconPixmap> icons;
    QString title;
    QString text;
};

/// One of each image that is not null, in their order.
[[nodiscard]] QList<IconPixmap> pixmapsOf(const QList<QImage>& images);

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip);

/// Makes the types above known to the bus. Once is enough, more does no harm.
void registerNotifierForms();

} // namespace HarrowlaneApp

Q_DECLARE_METATYPE(HarrowlaneApp::IconPixmap)
Q_DECLARE_METATYPE(HarrowlaneApp::NotifierToolTip)
