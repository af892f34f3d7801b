#include <QApplication>
#include <QMenu>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/Display/Panel.h"
#include "HarrowlaneApp/Platform/Linux/LinuxStatusItem.h"
#include "HarrowlaneApp/Platform/Linux/PanelSide.h"

namespace HarrowlaneApp {

namespace {

using Presence = StatusItem::Presence;

StatusItemFace face() {
    QImage square(22, 22, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::green);
    return {.images = {square}, .title = "Meter", .menu = {{.id = "open", .label = "Open"}}};
}

class LinuxTrayTest : public testing::Test {
protected:
    [[nodiscard]] bool comesTo(Presence presence) {
        return becomes([this, presence] {
            item.setFace(face());
            return item.presence() == presence;
        });
    }

    PrivateBus bus;
    LinuxStatusItem item{bus.connect()};
    QDBusConnection desktop = bus.connect();
};

TEST_F(LinuxTrayTest, IsEmbeddedWhereNoPanelTakesItOverTheBus) {
    const Panel panel;
    ASSERT_TRUE(becomes(&Panel::isThere));
    item.setFace(face());
    EXPECT_TRUE(becomes([this] { return item.presence() == Presence::shown; }));
}

TEST_F(LinuxTrayTest, FindsAPanelThatComesAfterIt) {
    ASSERT_TRUE(comesTo(Presence::absent));
    const Panel panel;
    EXPECT_TRUE(comesTo(Presence::shown));
}

TEST_F(LinuxTrayTest, MovesToABetterPanelAndBack) {
    Panel panel;
    ASSERT_TRUE(comesTo(Presence::shown));
    QList<Presence> told;
    QObject::connect(&item, &StatusItem::presenceChanged, [&told](Presence presence) { told.append(presence); });
    {
        const StubWatcher watcher(desktop);
        ASSERT_TRUE(becomes([&] { return watcher.callsOf("Get").size() == 1; }));
        const PanelSide side(desktop, watcher.items().last());
        EXPECT_EQ(side.item("Activate", {1, 2}).type(), QDBusMessage::ReplyMessage);
    }
    desktop.unregisterService("org.kde.StatusNotifierWatcher");
    panel.kill();
    ASSERT_TRUE(comesTo(Presence::absent));
    EXPECT_EQ(told, QList<Presence>{Presence::absent}) << "the item was in one panel or the other until then";
}

TEST_F(LinuxTrayTest, OpensItsOwnMenuWhereThePanelHasNone) {
    const StubWatcher watcher(desktop);
    ASSERT_TRUE(comesTo(Presence::shown));
    const PanelSide side(desktop, watcher.items().last());
    EXPECT_EQ(side.item("ContextMenu", {300, 200}).type(), QDBusMessage::ReplyMessage);
    ASSERT_TRUE(becomes([] { return QApplication::activePopupWidget() != nullptr; }));
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->pos(), QPoint(300, 200));
    QString chosen;
    QObject::connect(&item, &StatusItem::entryChosen, [&chosen](const QString& id) { chosen = id; });
    menu->actions().first()->trigger();
    EXPECT_EQ(chosen, "open");
    menu->close();
}

} // namespace

} // namespace HarrowlaneApp
