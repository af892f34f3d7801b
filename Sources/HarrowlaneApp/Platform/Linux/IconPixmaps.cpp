#include "HarrowlaneApp/Platform/Linux/IconPixmaps.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace HarrowlaneApp {

namespace {

IconPixmap pixmapOf(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{.width = plain.width(), .height = plain.height(), .bytes = {}};
    const qsizetype rowBytes = qsizetype{plain.width()} * 4;
    pixmap.bytes.resize(rowBytes * plain.height());
    for (int row = 0; row < plain.height(); ++row) {
        qToBigEndian<quint32>(plain.constScanLine(row), plain.width(), pixmap.bytes.data() + row * rowBytes);
    }
    return pixmap;
}

} // namespace

QList<IconPixmap> pixmapsOf(const QList<QImage>& images) {
    QList<IconPixmap> pixmaps;
    for (const QImage& image : images) {
        if (!image.isNull()) pixmaps.append(pixmapOf(image));
    }
    return pixmaps;
}

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.icons << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.icons >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

void registerNotifierForms() {
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<QList<IconPixmap>>();
    qDBusRegisterMetaType<NotifierToolTip>();
}

} // namespace HarrowlaneApp
