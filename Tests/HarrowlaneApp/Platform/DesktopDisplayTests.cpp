#include "HarrowlaneApp/Platform/DesktopDisplay.h"

#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/Fakes.h"

namespace HarrowlaneApp {

namespace {

TEST(DesktopDisplay, HandsTheDesktopsWishesToWhatDraws) {
    FakeDesktopAppearance desktop;
    const DisplayOptions options(std::make_unique<DesktopDisplay>(desktop));
    EXPECT_FALSE(options.increaseContrast());
    desktop.show({.increasesContrast = true});
    EXPECT_TRUE(options.increaseContrast());
    EXPECT_FALSE(options.reduceTransparency());
    desktop.show({.reducesTransparency = true});
    EXPECT_FALSE(options.increaseContrast());
    EXPECT_TRUE(options.reduceTransparency());
}

TEST(DesktopDisplay, SpeaksToNobodyAfterItsEnd) {
    FakeDesktopAppearance desktop;
    int notices = 0;
    {
        DesktopDisplay display(desktop);
        display.observe([&notices] { ++notices; });
        desktop.show({.increasesContrast = true});
    }
    desktop.show({.increasesContrast = false});
    EXPECT_EQ(notices, 1);
}

TEST(DesktopDisplay, WantsNothingOnceTheDesktopIsGone) {
    auto desktop = std::make_unique<FakeDesktopAppearance>();
    desktop->show({.increasesContrast = true, .reducesTransparency = true});
    const DesktopDisplay display(*desktop);
    EXPECT_TRUE(display.shouldIncreaseContrast() && display.shouldReduceTransparency());
    desktop.reset();
    EXPECT_FALSE(display.shouldIncreaseContrast() || display.shouldReduceTransparency());
}

} // namespace

} // namespace HarrowlaneApp
