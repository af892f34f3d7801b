#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/Display/Panel.h"
#include "HarrowlaneApp/Platform/Portable/TrayIconStatusItem.h"
#include "HarrowlaneApp/Platform/Portable/TrayNotificationService.h"

namespace HarrowlaneApp {

namespace {

using Presence = StatusItem::Presence;

StatusItemFace face(const QColor& color = Qt::green) {
    QImage square(22, 22, QImage::Format_ARGB32_Premultiplied);
    square.fill(color);
    QImage wide(64, 18, QImage::Format_ARGB32_Premultiplied);
    wide.fill(Qt::red);
    return {.images = {wide, square},
            .title = "Meter",
            .toolTipTitle = "1.2×",
            .toolTipText = "51%",
            .menu = {{.id = "open", .label = "Open & more"}, {}, {.id = "mark", .label = "Mark", .checked = false}}};
}

class TrayTest : public testing::Test {
protected:
    /// Shows the face again and again, as the program does, until the item is where it should be.
    [[nodiscard]] bool comesTo(Presence presence) {
        return becomes([this, presence] {
            item.setFace(face());
            return item.presence() == presence;
        });
    }
    [[nodiscard]] bool isEmbedded() {
        return becomes([this] { return item.icon() != nullptr && item.icon()->geometry().isValid() && clicked(); });
    }
    /// A click on the icon arrives, at the place of the click.
    [[nodiscard]] bool clicked() {
        const QPoint place = item.icon()->geometry().center();
        QList<QPoint> places;
        const QMetaObject::Connection connection =
            QObject::connect(&item, &StatusItem::activated, [&places](const QPoint& where) { places.append(where); });
        Panel::click(place);
        const bool arrived = becomes([&places] { return !places.isEmpty(); }, 1);
        QObject::disconnect(connection);
        return arrived && places.first() == place;
    }

    TrayIconStatusItem item;
};

TEST_F(TrayTest, IsAbsentWithoutAPanelAndShownByOneThatComes) {
    item.setFace(face());
    EXPECT_EQ(item.presence(), Presence::absent);
    EXPECT_EQ(item.icon(), nullptr);
    const Panel panel;
    ASSERT_TRUE(comesTo(Presence::shown));
    EXPECT_TRUE(isEmbedded());
}

TEST_F(TrayTest, ComesBackWhenThePanelRestarts) {
    Panel panel;
    ASSERT_TRUE(comesTo(Presence::shown));
    ASSERT_TRUE(isEmbedded());
    panel.kill();
    ASSERT_TRUE(comesTo(Presence::absent));
    panel.start();
    ASSERT_TRUE(comesTo(Presence::shown));
    EXPECT_TRUE(isEmbedded());
}

TEST_F(TrayTest, ShowsTheSquareImageAndTheWholeText) {
    const Panel panel;
    ASSERT_TRUE(comesTo(Presence::shown));
    EXPECT_EQ(item.icon()->toolTip(), "1.2×\n51%");
    EXPECT_EQ(item.icon()->icon().availableSizes(), QList<QSize>{QSize(22, 22)});
}

TEST_F(TrayTest, AWideImageIsBetterThanNone) {
    const Panel panel;
    ASSERT_TRUE(comesTo(Presence::shown));
    StatusItemFace wide = face();
    wide.images.removeLast();
    item.setFace(wide);
    EXPECT_EQ(item.icon()->icon().availableSizes(), QList<QSize>{QSize(64, 18)});
}

TEST_F(TrayTest, HasItsMenu) {
    const Panel panel;
    ASSERT_TRUE(comesTo(Presence::shown));
    QStringList chosen;
    QObject::connect(&item, &StatusItem::entryChosen, [&chosen](const QString& id) { chosen.append(id); });
    const QList<QAction*> actions = item.icon()->contextMenu()->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->text(), "Open && more");
    EXPECT_TRUE(actions[1]->isSeparator());
    actions[2]->trigger();
    EXPECT_EQ(chosen, QStringList{"mark"});
    EXPECT_FALSE(actions[2]->isChecked()) << "the mark is the program's to set";
    StatusItemFace marked = face();
    marked.menu[2].checked = true;
    item.setFace(marked);
    EXPECT_TRUE(actions[2]->isChecked());
}

TEST_F(TrayTest, BannersNeedAPanel) {
    TrayNotificationService service(item);
    std::optional<AuthorizationStatus> status;
    const auto ask = [&] { service.authorizationStatus([&status](AuthorizationStatus now) { status = now; }); };
    std::optional<std::string> error;
    const auto post = [&] {
        service.post({.identifier = "a", .title = "A"}, [&error](const auto& words) { error = words; });
    };
    ask();
    EXPECT_EQ(status, AuthorizationStatus::notDetermined);
    post();
    EXPECT_TRUE(error);
    const Panel panel;
    ASSERT_TRUE(comesTo(Presence::shown));
    ask();
    EXPECT_EQ(status, AuthorizationStatus::authorized);
    post();
    EXPECT_FALSE(error);
    service.delivered([](const std::vector<std::string>& identifiers) { EXPECT_TRUE(identifiers.empty()); });
}

} // namespace

} // namespace HarrowlaneApp
