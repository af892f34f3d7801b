#include "HarrowlaneApp/Platform/Portable/PaletteAppearance.h"

#include <QApplication>
#include <QPalette>

#include <gtest/gtest.h>

namespace HarrowlaneApp {

namespace {

QPalette paletteOf(Qt::GlobalColor text, Qt::GlobalColor window) {
    QPalette palette;
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Window, window);
    return palette;
}

class PaletteAppearanceTest : public testing::Test {
protected:
    /// As though the desktop had it: the program has not asked for it.
    static void desktopShows(const QPalette& palette) {
        QApplication::setPalette(palette);
        QCoreApplication::setAttribute(Qt::AA_SetPalette, false);
        QEvent notice(QEvent::ApplicationPaletteChange);
        QCoreApplication::sendEvent(qApp, &notice);
    }

    ~PaletteAppearanceTest() override { QApplication::setPalette(QPalette()); }

    QPalette light = paletteOf(Qt::black, Qt::white);
    QPalette dark = paletteOf(Qt::white, Qt::black);
};

TEST_F(PaletteAppearanceTest, IsDarkWhereTextIsLighterThanItsGround) {
    desktopShows(dark);
    EXPECT_EQ(PaletteAppearance().appearance(), Appearance::dark);
    desktopShows(light);
    EXPECT_EQ(PaletteAppearance().appearance(), Appearance::light);
    desktopShows(paletteOf(Qt::gray, Qt::gray));
    EXPECT_EQ(PaletteAppearance().appearance(), Appearance::light);
}

TEST_F(PaletteAppearanceTest, FollowsTheDesktopAndTellsOfEachTurnOnce) {
    desktopShows(light);
    PaletteAppearance appearance;
    int changes = 0;
    QObject::connect(&appearance, &DesktopAppearance::changed, [&changes] { ++changes; });
    desktopShows(dark);
    EXPECT_EQ(appearance.appearance(), Appearance::dark);
    desktopShows(paletteOf(Qt::yellow, Qt::black));
    EXPECT_EQ(changes, 1);
    desktopShows(light);
    EXPECT_EQ(changes, 2);
}

TEST_F(PaletteAppearanceTest, IsNotFooledByThePaletteThatTheProgramSets) {
    desktopShows(light);
    const PaletteAppearance appearance;
    QApplication::setPalette(dark);
    QCoreApplication::processEvents();
    EXPECT_EQ(appearance.appearance(), Appearance::light);
}

TEST_F(PaletteAppearanceTest, KnowsNoOtherWishes) {
    EXPECT_FALSE(PaletteAppearance().increasesContrast());
    EXPECT_FALSE(PaletteAppearance().reducesTransparency());
}

} // namespace

} // namespace HarrowlaneApp
