#include "HarrowlaneApp/Views/CalendarView.h"

#include <QTest>
#include <QToolTip>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Views/Watching.h"

namespace {

using namespace HarrowlaneApp;
using namespace ViewTests;
using DrawingTests::Canvas;
using DrawingTests::near;
using testing::SizeIs;
using UsageModel::Calendar;
using UsageModel::DayCell;

const Palette& dark = Palette::resolved(Appearance::dark);

class History : public testing::Test {
protected:
    Calendar calendar = Calendar::utc();
    ApplicationLook look{Look{.appearance = Appearance::dark}};
    CalendarView view{look};

    /// So many days up to Thursday, 2025-11-20, each with a level from 0 to 4.
    std::vector<DayCell> daysUpToThursday(int count) {
        const auto thursday = calendar.instant(absl::CivilSecond(2025, 11, 20));
        std::vector<DayCell> days;
        for (int back = count - 1; back >= 0; --back) {
            days.push_back({.day = calendar.addDays(thursday, -back), .weighted = 1.0 * (back % 5), .level = back % 5});
        }
        return days;
    }

    CalendarCanvas& canvas() { return find<CalendarCanvas>(view, "calendarDays"); }
    HUDScrollArea& scroll() { return find<HUDScrollArea>(view, "calendarScroll"); }
};

TEST_F(History, EighteenWeeksStandSideBySide) {
    view.setDays(daysUpToThursday(122), calendar);
    show(view, {680, 400});
    EXPECT_EQ(textOf(view, "calendarHeading"), "Your rhythm over time");
    EXPECT_EQ(canvas().columnCount(), 18U);
    EXPECT_EQ(scroll().horizontalScrollBar()->maximum(), 0);
}

TEST_F(History, AYearScrollsAndBeginsAtTheNewestWeek) {
    view.setDays(daysUpToThursday(365), calendar);
    show(view, {520, 400});
    EXPECT_EQ(canvas().columnCount(), 53U);
    const QScrollBar& bar = *scroll().horizontalScrollBar();
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    EXPECT_TRUE(canvas().visibleRegion().contains(canvas().items().back().box.center().toPoint()));
}

TEST_F(History, AYearFitsIntoAWideWindow) {
    view.setDays(daysUpToThursday(365), calendar);
    show(view, {1880, 900});
    EXPECT_EQ(scroll().horizontalScrollBar()->maximum(), 0);
}

TEST_F(History, CellsNeverTouch) {
    view.setDays(daysUpToThursday(365), calendar);
    for (const int width : {520, 680, 1880}) {
        show(view, {width, 400});
        const auto& items = canvas().items();
        for (std::size_t index = 7; index < items.size(); ++index) {
            EXPECT_GE(items[index].box.left() - items[index - 7].box.right(), 6.0 - 1e-9);
        }
    }
}

TEST_F(History, EachCellTellsDateAndShare) {
    view.setDays(daysUpToThursday(122), calendar);
    show(view, {680, 400});
    const auto texts = heard(canvas());
    ASSERT_THAT(texts, SizeIs(18 * 7 - 2));
    EXPECT_EQ(texts.back(), "Thursday, November 20, 2025 — no use");
    EXPECT_EQ(texts[texts.size() - 2], "Wednesday, November 19, 2025 — 25% of your busiest day");
    EXPECT_EQ(roleOf(canvas()), QAccessible::List);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&canvas())->child(0)->role(), QAccessible::ListItem);
}

TEST_F(History, ThePointerBringsUpACellsText) {
    view.setDays(daysUpToThursday(122), calendar);
    show(view, {680, 400});
    const QPoint place = canvas().items()[8].box.center().toPoint();
    QHelpEvent help(QEvent::ToolTip, place, canvas().mapToGlobal(place));
    QApplication::sendEvent(&canvas(), &help);
    EXPECT_EQ(QToolTip::text().toStdString(), heard(canvas())[8]);
    QToolTip::hideText();
}

TEST_F(History, TheKeyboardWalksOverTheDaysAndBringsThemIntoView) {
    view.setDays(daysUpToThursday(365), calendar);
    show(view, {520, 400});
    canvas().setFocus(Qt::TabFocusReason);
    EXPECT_EQ(canvas().currentItem(), canvas().items().size() - 1) << "it begins at the newest day";
    QTest::keyClick(&canvas(), Qt::Key_Up);
    EXPECT_EQ(canvas().currentItem(), canvas().items().size() - 2);
    QTest::keyClick(&canvas(), Qt::Key_Left);
    EXPECT_EQ(canvas().currentItem(), canvas().items().size() - 9);
    QTest::keyClick(&canvas(), Qt::Key_Home);
    EXPECT_EQ(canvas().currentItem(), 0U);
    EXPECT_TRUE(canvas().visibleRegion().contains(canvas().items().front().box.center().toPoint()));
    QTest::keyClick(&canvas(), Qt::Key_Left);
    EXPECT_EQ(canvas().currentItem(), 0U) << "the border stops it";
}

TEST_F(History, TheFocusHasARing) {
    view.setDays(daysUpToThursday(122), calendar);
    show(view, {680, 400});
    EXPECT_EQ(view.findChild<FocusRing*>(), nullptr);
    canvas().clearFocus();
    canvas().setFocus(Qt::TabFocusReason);
    ASSERT_NE(view.findChild<FocusRing*>(), nullptr);
    EXPECT_TRUE(view.findChild<FocusRing*>()->isVisible());
    canvas().clearFocus();
    EXPECT_EQ(view.findChild<FocusRing*>(), nullptr);
}

TEST_F(History, ADayToComeDrawsNothing) {
    view.setDays(daysUpToThursday(122), calendar);
    show(view, {680, 400});
    const QImage image = picture(canvas());
    const QRectF last = canvas().items().back().box;
    EXPECT_GT(Canvas::pixel(image, last.center().x(), last.center().y()).alpha(), 0);
    EXPECT_EQ(Canvas::pixel(image, last.center().x(), last.center().y() + CalendarCanvas::pitch).alpha(), 0);
}

TEST_F(History, TheLastDayIsOutlined) {
    view.setDays(daysUpToThursday(122), calendar);
    show(view, {680, 400});
    const QImage image = picture(canvas(), 2.0);
    const QRectF last = canvas().items().back().box;
    EXPECT_GT(Canvas::pixel(image, last.center().x(), last.top() - 2.7).alpha(), 90);
    EXPECT_EQ(Canvas::pixel(image, last.center().x(), last.top() - 1.0).alpha(), 0);
}

TEST_F(History, LevelsGrowFromTheTrackToTheAccent) {
    view.setDays(daysUpToThursday(122), calendar);
    show(view, {680, 400});
    const QImage image = picture(canvas());
    const auto& items = canvas().items();
    const auto colorAt = [&](std::size_t fromLast) {
        const QPointF center = items[items.size() - 1 - fromLast].box.center();
        return Canvas::pixel(image, center.x(), center.y());
    };
    EXPECT_TRUE(near(colorAt(4), dark.cyan)) << "level 4";
    EXPECT_NEAR(colorAt(3).alphaF(), 0.70, 0.01);
    EXPECT_NEAR(colorAt(2).alphaF(), 0.45, 0.01);
    EXPECT_NEAR(colorAt(1).alphaF(), 0.24, 0.01);
    EXPECT_NEAR(colorAt(0).alphaF(), dark.trackFill.alphaF(), 0.01);
}

TEST_F(History, SurvivesNoDaysAndOneDay) {
    view.setDays({}, calendar);
    show(view, {680, 400});
    EXPECT_TRUE(canvas().items().empty());
    canvas().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&canvas(), Qt::Key_Right);
    EXPECT_EQ(canvas().currentItem(), std::nullopt);
    view.setDays(daysUpToThursday(1), calendar);
    EXPECT_EQ(canvas().columnCount(), 1U);
    view.setDays({}, calendar);
    EXPECT_TRUE(heard(canvas()).empty());
}

TEST_F(History, LeavesOutWhatABrokenClockDatesToTheDistantPast) {
    auto days = daysUpToThursday(30);
    days.insert(days.begin(), {.day = UsageModel::Date{-6e10}, .weighted = 1.0, .level = 1});
    view.setDays(days, calendar);
    EXPECT_LE(canvas().columnCount(), 6U);
}

} // namespace
