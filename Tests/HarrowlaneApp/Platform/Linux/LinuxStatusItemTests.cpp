#include "HarrowlaneApp/Platform/Linux/LinuxStatusItem.h"

#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/Linux/PanelSide.h"
#include "HarrowlaneApp/Platform/Linux/SignalRecorder.h"

namespace HarrowlaneApp {

namespace {

using Presence = StatusItem::Presence;
using Host = StubWatcher::Host;

QImage picture(const QSize& size, const QColor& color) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

StatusItemFace face() {
    return {.images = {picture({64, 18}, Qt::red), picture({22, 22}, Qt::green)},
            .title = "Meter",
            .toolTipTitle = "1.2×",
            .toolTipText = "51% of the week <spent>",
            .menu = {{.id = "open", .label = "Open"},
                     {.id = "refresh", .label = "Refresh now"},
                     {},
                     {.id = "quit", .label = "Quit"}}};
}

class LinuxStatusItemTest : public testing::Test {
protected:
    [[nodiscard]] bool comesTo(Presence presence) {
        return becomes([this, presence] { return item.presence() == presence; });
    }

    PrivateBus bus;
    LinuxStatusItem item{bus.connect()};
    QDBusConnection desktop = bus.connect();
};

class ShownStatusItemTest : public LinuxStatusItemTest {
protected:
    void SetUp() override {
        item.setFace(face());
        ASSERT_TRUE(comesTo(Presence::shown));
        panel.emplace(desktop, watcher.items().last());
    }

    /// What was signalled so far has arrived once an answer to a later question has.
    [[nodiscard]] QStringList signalled() {
        (void)panel->property("Id");
        QCoreApplication::processEvents();
        return recorder.members() + menuRecorder.members();
    }

    StubWatcher watcher{desktop};
    SignalRecorder recorder{desktop, "org.kde.StatusNotifierItem"};
    SignalRecorder menuRecorder{desktop, "com.canonical.dbusmenu"};
    std::optional<PanelSide> panel;
};

TEST_F(LinuxStatusItemTest, IsNowhereBeforeItHasAFace) {
    const StubWatcher watcher(desktop);
    EXPECT_EQ(item.presence(), Presence::pending);
    item.setFace(face());
    EXPECT_TRUE(comesTo(Presence::shown));
    EXPECT_EQ(watcher.items().size(), 1);
}

TEST_F(LinuxStatusItemTest, TellsThatThereIsNoPanel) {
    QList<Presence> told;
    QObject::connect(&item, &StatusItem::presenceChanged, [&told](Presence presence) { told.append(presence); });
    item.setFace(face());
    EXPECT_TRUE(comesTo(Presence::absent));
    EXPECT_EQ(told, QList<Presence>{Presence::absent});
}

TEST_F(LinuxStatusItemTest, TellsThatThereIsNoBus) {
    LinuxStatusItem lonely{QDBusConnection::connectToBus("unix:path=/nonexistent", "nowhere")};
    lonely.setFace(face());
    EXPECT_TRUE(becomes([&] { return lonely.presence() == Presence::absent; }));
    lonely.setFace(face());
    QDBusConnection::disconnectFromBus("nowhere");
}

TEST_F(LinuxStatusItemTest, IsShownByAPanelThatComesLater) {
    item.setFace(face());
    ASSERT_TRUE(comesTo(Presence::absent));
    const StubWatcher watcher(desktop);
    EXPECT_TRUE(comesTo(Presence::shown));
}

TEST_F(LinuxStatusItemTest, ComesBackEachTimeThePanelRestarts) {
    item.setFace(face());
    for (int start = 0; start < 3; ++start) {
        const StubWatcher watcher(desktop);
        ASSERT_TRUE(comesTo(Presence::shown)) << start;
        EXPECT_EQ(watcher.items().size(), 1);
        desktop.unregisterService("org.kde.StatusNotifierWatcher");
        ASSERT_TRUE(comesTo(Presence::absent)) << start;
    }
}

TEST_F(LinuxStatusItemTest, RegistersWithAWatcherThatTakesTheNameOver) {
    item.setFace(face());
    StubWatcher watcher(desktop);
    ASSERT_TRUE(comesTo(Presence::shown));
    QDBusConnection other = bus.connect();
    StubWatcher next(other);
    desktop.unregisterService("org.kde.StatusNotifierWatcher");
    other.registerService("org.kde.StatusNotifierWatcher");
    EXPECT_TRUE(becomes([&] { return next.items().size() == 1; }));
    EXPECT_TRUE(comesTo(Presence::shown));
}

TEST_F(LinuxStatusItemTest, AWatcherWithoutAPanelShowsNothing) {
    StubWatcher watcher(desktop, Host::absent);
    item.setFace(face());
    ASSERT_TRUE(comesTo(Presence::absent));
    watcher.setHost(Host::present);
    ASSERT_TRUE(comesTo(Presence::shown));
    watcher.setHost(Host::absent);
    EXPECT_TRUE(comesTo(Presence::absent));
}

TEST_F(LinuxStatusItemTest, AWatcherThatDoesNotKnowOfPanelsIsOne) {
    StubWatcher watcher(desktop);
    watcher.breakSilence([](const QDBusMessage& message) -> std::optional<StubService::Reply> {
        if (message.member() == "RegisterStatusNotifierItem") return StubService::Reply{};
        return StubService::Reply{.values = {"org.freedesktop.DBus.Error.UnknownProperty"}, .isError = true};
    });
    item.setFace(face());
    EXPECT_TRUE(comesTo(Presence::shown));
}

TEST_F(LinuxStatusItemTest, AWatcherThatRefusesShowsNothing) {
    StubWatcher watcher(desktop);
    watcher.breakSilence([](const QDBusMessage&) {
        return StubService::Reply{.values = {"org.freedesktop.DBus.Error.AccessDenied"}, .isError = true};
    });
    item.setFace(face());
    EXPECT_TRUE(comesTo(Presence::absent));
}

TEST_F(LinuxStatusItemTest, AWatcherThatHangsHoldsUpNothingAndIsStillWelcomeLater) {
    StubWatcher watcher(desktop);
    watcher.breakSilence([](const QDBusMessage&) -> std::optional<StubService::Reply> { return std::nullopt; });
    QElapsedTimer sinceBeat;
    qint64 longest = 0;
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, [&] { longest = std::max(longest, sinceBeat.restart()); });
    sinceBeat.start();
    beat.start(20);
    item.setFace(face());
    ASSERT_TRUE(comesTo(Presence::absent));
    EXPECT_LT(longest, NotifierRegistration::patienceMilliseconds / 2);
    watcher.breakSilence([&](const QDBusMessage& message) { return watcher.replyTo(message); });
    EXPECT_TRUE(comesTo(Presence::shown));
}

TEST_F(LinuxStatusItemTest, IsGoneFromTheBusWithItsEnd) {
    const StubWatcher watcher(desktop);
    {
        LinuxStatusItem brief{bus.connect()};
        brief.setFace(face());
        ASSERT_TRUE(becomes([&] { return brief.presence() == Presence::shown; }));
    }
    const PanelSide panel(desktop, watcher.items().last());
    EXPECT_EQ(panel.item("Activate", {1, 2}).type(), QDBusMessage::ErrorMessage);
}

TEST_F(ShownStatusItemTest, OutlivesTheBus) {
    bus.kill();
    EXPECT_TRUE(comesTo(Presence::absent));
    item.setFace({});
}

TEST_F(ShownStatusItemTest, BringsItsPicturesAsTheyAre) {
    const auto icons = qdbus_cast<QList<IconPixmap>>(panel->property("IconPixmap"));
    ASSERT_EQ(icons.size(), 2);
    EXPECT_EQ(icons[0].width, 64);
    EXPECT_EQ(icons[0].height, 18);
    EXPECT_EQ(icons[0].bytes, QByteArray("\xff\xff\0\0", 4).repeated(64 * 18));
    EXPECT_EQ(icons[1].bytes, QByteArray("\xff\0\xff\0", 4).repeated(22 * 22));
}

TEST_F(ShownStatusItemTest, TellsPanelsWhatItIs) {
    EXPECT_EQ(panel->property("Title").toString(), "Meter");
    EXPECT_EQ(panel->property("Status").toString(), "Active");
    EXPECT_EQ(panel->property("Category").toString(), "ApplicationStatus");
    EXPECT_EQ(panel->property("ItemIsMenu").toBool(), false);
    EXPECT_EQ(panel->property("Menu").value<QDBusObjectPath>().path(), "/StatusNotifierItem/Menu");
    const auto toolTip = qdbus_cast<NotifierToolTip>(panel->property("ToolTip"));
    EXPECT_EQ(toolTip.title, "1.2×");
    EXPECT_EQ(toolTip.text, "51% of the week &lt;spent&gt;");
    EXPECT_TRUE(toolTip.icons.isEmpty());
}

TEST_F(ShownStatusItemTest, AnswersForAllPropertiesAtOnce) {
    const QDBusMessage reply = panel->ask(
        {"/StatusNotifierItem", "org.freedesktop.DBus.Properties", "GetAll", {"org.kde.StatusNotifierItem"}});
    const auto all = qdbus_cast<QVariantMap>(reply.arguments().value(0));
    for (const char* name : {"Category", "Id", "Title", "Status", "WindowId", "IconName", "IconPixmap",
                             "OverlayIconName", "AttentionIconName", "ToolTip", "ItemIsMenu", "Menu"}) {
        EXPECT_TRUE(all.contains(name)) << name;
    }
}

TEST_F(ShownStatusItemTest, IsClickedAtAPlace) {
    QList<QPoint> places;
    QObject::connect(&item, &StatusItem::activated, [&places](const QPoint& place) { places.append(place); });
    EXPECT_EQ(panel->item("Activate", {1850, 12}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(panel->item("SecondaryActivate", {-3, 0}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(panel->item("Scroll", {120, "vertical"}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(places, (QList<QPoint>{{1850, 12}, {-3, 0}}));
}

TEST_F(ShownStatusItemTest, TakesTheTokenThatLetsAWindowComeToTheFront) {
    EXPECT_EQ(panel->item("ProvideXdgActivationToken", {"token-1"}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-1");
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(ShownStatusItemTest, SaysNothingWhereNothingChanged) {
    StatusItemFace same = face();
    same.images[0] = same.images[0].convertToFormat(QImage::Format_ARGB32);
    item.setFace(same);
    item.setFace(face());
    EXPECT_EQ(signalled(), QStringList());
}

TEST_F(ShownStatusItemTest, SaysOnlyWhatChanged) {
    StatusItemFace next = face();
    next.images[1].setPixelColor(3, 3, Qt::blue);
    item.setFace(next);
    EXPECT_EQ(signalled(), QStringList{"NewIcon"});
    next.toolTipText = "52%";
    item.setFace(next);
    EXPECT_EQ(signalled(), (QStringList{"NewIcon", "NewToolTip"}));
    next.title = "Another";
    item.setFace(next);
    EXPECT_EQ(signalled(), (QStringList{"NewIcon", "NewToolTip", "NewTitle"}));
    next.menu[1].enabled = false;
    item.setFace(next);
    EXPECT_EQ(signalled().mid(3), QStringList{"ItemsPropertiesUpdated"});
    next.menu.removeLast();
    item.setFace(next);
    EXPECT_EQ(signalled().mid(3), (QStringList{"ItemsPropertiesUpdated", "LayoutUpdated"}));
}

TEST_F(ShownStatusItemTest, ShowsItsMenuInThePanel) {
    const QDBusMessage reply = panel->menu("GetLayout", {0, -1, QStringList()});
    ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    const auto layout = qdbus_cast<MenuLayout>(reply.arguments().value(1));
    EXPECT_EQ(layout.properties["children-display"], "submenu");
    ASSERT_EQ(layout.children.size(), 4);
    EXPECT_EQ(layout.children[0].properties["label"], "Open");
    EXPECT_EQ(layout.children[2].properties["type"], "separator");

    QStringList chosen;
    QObject::connect(&item, &StatusItem::entryChosen, [&chosen](const QString& id) { chosen.append(id); });
    const QVariant nothing = QVariant::fromValue(QDBusVariant(0));
    const int quit = layout.children[3].id;
    EXPECT_EQ(panel->menu("Event", {quit, "hovered", nothing, 0U}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(panel->menu("Event", {quit, "clicked", nothing, 0U}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(chosen, QStringList{"quit"});
}

TEST_F(ShownStatusItemTest, AnswersEveryQuestionOfAMenu) {
    const auto group = qdbus_cast<QList<MenuItemProperties>>(
        panel->menu("GetGroupProperties", {QVariant::fromValue(QList<int>{1, 99, 4}), QStringList{"label"}})
            .arguments()[0]);
    EXPECT_EQ(group, (QList<MenuItemProperties>{{1, {{"label", "Open"}}}, {4, {{"label", "Quit"}}}}));
    EXPECT_EQ(panel->menu("GetProperty", {2, "label"}).arguments()[0].value<QDBusVariant>().variant(), "Refresh now");
    EXPECT_EQ(panel->menu("AboutToShow", {0}).arguments()[0], false);
    EXPECT_EQ(qdbus_cast<QList<int>>(
                  panel->menu("AboutToShowGroup", {QVariant::fromValue(QList<int>{0, 99})}).arguments().value(1)),
              QList<int>{99});
    const QList<MenuEvent> events{{1, "clicked", QDBusVariant(0), 0}, {99, "clicked", QDBusVariant(0), 0}};
    EXPECT_EQ(qdbus_cast<QList<int>>(panel->menu("EventGroup", {QVariant::fromValue(events)}).arguments().value(0)),
              QList<int>{99});
}

TEST_F(ShownStatusItemTest, RefusesWhatTheMenuDoesNotHave) {
    const QVariant nothing = QVariant::fromValue(QDBusVariant(0));
    EXPECT_EQ(panel->menu("GetLayout", {99, -1, QStringList()}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(panel->menu("GetProperty", {99, "label"}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(panel->menu("GetProperty", {1, "colour"}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(panel->menu("Event", {99, "clicked", nothing, 0U}).type(), QDBusMessage::ErrorMessage);
}

} // namespace

} // namespace HarrowlaneApp
