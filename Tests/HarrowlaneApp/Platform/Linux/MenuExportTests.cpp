#include "HarrowlaneApp/Platform/Linux/MenuExport.h"

#include <gtest/gtest.h>

namespace HarrowlaneApp {

namespace {

class MenuExportTest : public testing::Test {
protected:
    MenuExportTest() {
        QObject::connect(&menu, &MenuExport::layoutChanged, [this] { ++layouts; });
        QObject::connect(&menu, &MenuExport::propertiesChanged,
                         [this](const QList<MenuItemProperties>& now, const QList<MenuItemKeys>& gone) {
                             updated = now;
                             removed = gone;
                             ++changes;
                         });
        QObject::connect(&menu, &MenuExport::entryChosen, [this](const QString& id) { chosen.append(id); });
    }

    [[nodiscard]] QVariantMap properties(int id) const { return menu.propertiesOf(id, {}).value(); }

    MenuExport menu;
    int layouts = 0;
    int changes = 0;
    QList<MenuItemProperties> updated;
    QList<MenuItemKeys> removed;
    QStringList chosen;
};

TEST_F(MenuExportTest, AnEmptyMenuHasARootAlone) {
    EXPECT_EQ(menu.ids(), QList<int>{MenuExport::rootId});
    EXPECT_TRUE(menu.layout(MenuExport::rootId, -1, {})->children.isEmpty());
    menu.setEntries({});
    EXPECT_EQ(layouts + changes, 0);
}

TEST_F(MenuExportTest, AnUnderscoreInALabelIsShownAsOne) {
    menu.setEntries({{.id = "a", .label = "snake_case & more"}});
    EXPECT_EQ(properties(1)["label"], "snake__case & more");
}

TEST_F(MenuExportTest, AMarkIsACheckmark) {
    menu.setEntries({{.id = "a", .label = "A", .checked = true}, {.id = "b", .label = "B", .checked = false}});
    EXPECT_EQ(properties(1)["toggle-type"], "checkmark");
    EXPECT_EQ(properties(1)["toggle-state"], 1);
    EXPECT_EQ(properties(2)["toggle-state"], 0);
}

TEST_F(MenuExportTest, TellsOnlyThePropertiesThatChanged) {
    menu.setEntries({{.id = "a", .label = "A", .checked = true}, {.id = "b", .label = "B"}});
    EXPECT_EQ(layouts, 1);
    menu.setEntries({{.id = "a", .label = "A", .checked = false}, {.id = "b", .label = "B"}});
    EXPECT_EQ(updated, (QList<MenuItemProperties>{{1, {{"toggle-state", 0}}}}));
    EXPECT_TRUE(removed.isEmpty());
    menu.setEntries({{.id = "a", .label = "A"}, {.id = "b", .label = "C"}});
    EXPECT_EQ(updated, (QList<MenuItemProperties>{{2, {{"label", "C"}}}}));
    EXPECT_EQ(removed, (QList<MenuItemKeys>{{1, {"toggle-state", "toggle-type"}}}));
    menu.setEntries({{.id = "a", .label = "A"}, {.id = "b", .label = "C"}});
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(layouts, 1);
}

TEST_F(MenuExportTest, AnEntryKeepsItsNumberWhereverItStands) {
    menu.setEntries({{.id = "a", .label = "A"}, {}, {.id = "b", .label = "B"}, {}});
    EXPECT_EQ(menu.ids(), (QList<int>{0, 1, 2, 3, 4}));
    const uint before = menu.revision();
    menu.setEntries({{.id = "b", .label = "B"}, {}, {.id = "new", .label = "New"}, {.id = "a", .label = "A"}});
    EXPECT_EQ(menu.ids(), (QList<int>{0, 3, 2, 5, 1}));
    EXPECT_EQ(menu.revision(), before + 1);
}

TEST_F(MenuExportTest, WhatCannotBeChosenIsNot) {
    menu.setEntries({{.id = "a", .label = "A", .enabled = false}, {}, {.id = "c", .label = "C"}});
    EXPECT_TRUE(menu.take(1, "clicked"));
    EXPECT_TRUE(menu.take(2, "clicked"));
    EXPECT_TRUE(menu.take(0, "opened"));
    EXPECT_TRUE(menu.take(3, "closed"));
    EXPECT_FALSE(menu.take(4, "clicked"));
    EXPECT_FALSE(menu.take(-1, "clicked"));
    EXPECT_EQ(chosen, QStringList());
    EXPECT_TRUE(menu.take(3, "clicked"));
    EXPECT_EQ(chosen, QStringList{"c"});
}

TEST_F(MenuExportTest, AnEntryThatWasTakenAwayIsUnknown) {
    menu.setEntries({{.id = "a", .label = "A"}});
    menu.setEntries({});
    EXPECT_FALSE(menu.take(1, "clicked"));
    EXPECT_FALSE(menu.layout(1, 0, {}));
}

TEST_F(MenuExportTest, MayBeChangedByTheChoiceItself) {
    menu.setEntries({{.id = "a", .label = "A", .checked = false}});
    QObject::connect(&menu, &MenuExport::entryChosen, [this] { menu.setEntries({}); });
    EXPECT_TRUE(menu.take(1, "clicked"));
    EXPECT_EQ(chosen, QStringList{"a"});
}

TEST_F(MenuExportTest, GivesAsMuchAsWasAskedFor) {
    menu.setEntries({{.id = "a", .label = "A"}});
    EXPECT_TRUE(menu.layout(0, 0, {})->children.isEmpty());
    EXPECT_EQ(menu.layout(0, 1, {"label"})->children[0].properties, (QVariantMap{{"label", "A"}}));
    EXPECT_EQ(menu.layout(1, -1, {"enabled", "nothing"})->properties, (QVariantMap{{"enabled", true}}));
}

} // namespace

} // namespace HarrowlaneApp
