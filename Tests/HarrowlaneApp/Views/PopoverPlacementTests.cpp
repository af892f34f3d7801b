#include "HarrowlaneApp/Views/PopoverPlacement.h"

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace HarrowlaneApp::PopoverPlacement {
void PrintTo(const Place& place, std::ostream* out) {
    *out << place.box.x() << ", " << place.box.y() << ", " << place.box.width() << " × " << place.box.height()
         << " at edge " << static_cast<int>(place.edge);
}
} // namespace HarrowlaneApp::PopoverPlacement

namespace {

using namespace HarrowlaneApp;
using PopoverPlacement::Edge;
using PopoverPlacement::Place;
using PopoverPlacement::Screen;

constexpr QSize usual(340, 548);
const QRect monitor(0, 0, 1920, 1080);
const Screen topPanel{.geometry = monitor, .free = {0, 32, 1920, 1048}};
const Screen bottomPanel{.geometry = monitor, .free = {0, 0, 1920, 1040}};
const Screen leftPanel{.geometry = monitor, .free = {64, 0, 1856, 1080}};
const Screen rightPanel{.geometry = monitor, .free = {0, 0, 1856, 1080}};

Place placeOn(const std::vector<Screen>& screens, const QPoint& click, const QSize& size = usual) {
    return PopoverPlacement::place({.click = click, .size = size, .screens = screens});
}

struct Row {
    std::string story;
    std::vector<Screen> screens;
    QPoint click;
    QSize size;
    Place expected;
};

class Places : public testing::TestWithParam<Row> {};

TEST_P(Places, IsWhereTheStoryWantsIt) {
    const Row& row = GetParam();
    EXPECT_EQ(placeOn(row.screens, row.click, row.size), row.expected) << row.story;
}

const Screen leftMonitor{.geometry = {-1280, 200, 1280, 1024}, .free = {-1280, 200, 1280, 984}};
const Screen secondMonitor{.geometry = {1920, 0, 2560, 1440}, .free = {1920, 0, 2560, 1400}};
const Screen bothPanels{.geometry = monitor, .free = {64, 32, 1856, 1048}};
const Screen lowMonitor{.geometry = {0, 0, 800, 480}, .free = {0, 24, 800, 456}};
const Screen noRoom{.geometry = {0, 0, 800, 480}, .free = {0, 470, 800, 10}};

INSTANTIATE_TEST_SUITE_P(
    Edges, Places,
    testing::Values(
        Row{"below a panel at the top", {topPanel}, {1000, 16}, usual, {{830, 40, 340, 548}, Edge::top}},
        Row{"above one at the bottom", {bottomPanel}, {1000, 1060}, usual, {{830, 484, 340, 548}, Edge::bottom}},
        Row{"beside one at the left", {leftPanel}, {30, 500}, usual, {{72, 477, 340, 548}, Edge::left}},
        Row{"beside one at the right", {rightPanel}, {1890, 500}, usual, {{1508, 477, 340, 548}, Edge::right}},
        Row{"no further than the right side", {topPanel}, {1900, 16}, usual, {{1572, 40, 340, 548}, Edge::top}},
        Row{"no further than the left side", {bottomPanel}, {3, 1060}, usual, {{8, 484, 340, 548}, Edge::bottom}},
        Row{"no lower than the bottom", {leftPanel}, {30, 1070}, usual, {{72, 524, 340, 548}, Edge::left}},
        Row{"the very corner", {topPanel}, {0, 0}, usual, {{8, 40, 340, 548}, Edge::top}},
        Row{"the last pixel", {bottomPanel}, {1919, 1079}, usual, {{1572, 484, 340, 548}, Edge::bottom}},
        Row{"the first free pixel is free", {topPanel}, {1000, 32}, usual, {{830, 40, 340, 548}, Edge::top}},
        Row{"two panels meet: the nearer side", {bothPanels}, {20, 28}, usual, {{72, 40, 340, 548}, Edge::left}},
        Row{"a panel that leaves the area free",
            {{monitor, monitor}},
            {1000, 10},
            usual,
            {{830, 18, 340, 548}, Edge::top}},
        Row{"or hides at the right", {{monitor, monitor}}, {1915, 500}, usual, {{1567, 477, 340, 548}, Edge::right}}));

INSTANTIATE_TEST_SUITE_P(
    Monitors, Places,
    testing::Values(
        Row{"left of the first", {topPanel, leftMonitor}, {-600, 1200}, usual, {{-770, 628, 340, 548}, Edge::bottom}},
        Row{"right of the first",
            {topPanel, secondMonitor},
            {4400, 1420},
            usual,
            {{4132, 844, 340, 548}, Edge::bottom}},
        Row{"the first pixel of the next",
            {topPanel, secondMonitor},
            {1920, 1439},
            usual,
            {{1928, 844, 340, 548}, Edge::bottom}},
        Row{"beside all: the nearest",
            {topPanel, secondMonitor},
            {5000, 1430},
            usual,
            {{4132, 844, 340, 548}, Edge::bottom}},
        Row{"without a screen", {}, {100, 50}, usual, {{-70, 58, 340, 548}, Edge::top}}));

INSTANTIATE_TEST_SUITE_P(
    Room, Places,
    testing::Values(Row{"a low screen shortens it", {lowMonitor}, {400, 10}, usual, {{230, 32, 340, 440}, Edge::top}},
                    Row{"a narrow one narrows it",
                        {{{0, 0, 300, 900}, {0, 0, 300, 880}}},
                        {150, 890},
                        usual,
                        {{8, 324, 284, 548}, Edge::bottom}},
                    Row{"hardly any room has no margins", {noRoom}, {400, 10}, usual, {{230, 470, 340, 10}, Edge::top}},
                    Row{"a huge popover", {topPanel}, {1000, 16}, {100000, 100000}, {{8, 40, 1904, 1032}, Edge::top}}));

TEST(PopoverPlacement, StaysInTheFreeAreaWhereverTheClickIs) {
    const std::vector<Screen> screens{topPanel, leftMonitor, secondMonitor};
    for (int x = -1500; x < 4700; x += 97) {
        for (int y = -100; y < 1600; y += 53) {
            const QRect box = placeOn(screens, {x, y}).box;
            EXPECT_TRUE(std::ranges::any_of(screens, [&](const Screen& screen) { return screen.free.contains(box); }))
                << x << ", " << y;
            EXPECT_EQ(box.size(), usual);
        }
    }
}

TEST(PopoverPlacement, KeepsTheSideAtThePanelWhenItGrows) {
    const QSize taller(340, 700);
    EXPECT_EQ(placeOn({topPanel}, {1000, 16}, taller).box.top(), placeOn({topPanel}, {1000, 16}).box.top());
    EXPECT_EQ(placeOn({bottomPanel}, {1000, 1060}, taller).box.bottom(),
              placeOn({bottomPanel}, {1000, 1060}).box.bottom());
    EXPECT_EQ(placeOn({leftPanel}, {30, 200}, taller).box.topLeft(), placeOn({leftPanel}, {30, 200}).box.topLeft());
    EXPECT_EQ(placeOn({rightPanel}, {1890, 200}, taller).box.topRight(),
              placeOn({rightPanel}, {1890, 200}).box.topRight());
}

TEST(PopoverPlacement, NeverCoversTheClick) {
    for (const Screen& screen : {topPanel, bottomPanel, leftPanel, rightPanel}) {
        for (const QPoint click : {QPoint(960, 5), QPoint(960, 1075), QPoint(5, 540), QPoint(1915, 540)}) {
            EXPECT_FALSE(placeOn({screen}, click).box.contains(click));
        }
    }
}

} // namespace
