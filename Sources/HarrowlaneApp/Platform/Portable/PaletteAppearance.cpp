#include "HarrowlaneApp/Platform/Portable/PaletteAppearance.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace HarrowlaneApp {

namespace {

Appearance shownBy(const QPalette& palette) {
    const bool dark = palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
    return dark ? Appearance::dark : Appearance::light;
}

} // namespace

PaletteAppearance::PaletteAppearance(QObject* parent)
    : DesktopAppearance(parent),
      appearance_(shownBy(QGuiApplication::palette())) {
    qApp->installEventFilter(this);
}

bool PaletteAppearance::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ApplicationPaletteChange || watched != qApp) return false;
    const Appearance seen = shownBy(QGuiApplication::palette());
    if (seen == appearance_ || QCoreApplication::testAttribute(Qt::AA_SetPalette)) return false;
    appearance_ = seen;
    Q_EMIT changed();
    return false;
}

} // namespace HarrowlaneApp
