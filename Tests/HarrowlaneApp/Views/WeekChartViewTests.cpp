#include "HarrowlaneApp/Views/WeekChartView.h"

#include <QMouseEvent>
#include <QTest>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Drawing/ChartWeeks.h"
#include "HarrowlaneApp/Drawing/Images.h"
#include "HarrowlaneApp/Views/Watching.h"

namespace {

using namespace HarrowlaneApp;
using namespace ViewTests;
using DrawingTests::Straight;
using DrawingTests::straightWeek;
using testing::HasSubstr;
using testing::StartsWith;
using WeekChart::CurvePlace;

class WeekChartViewTest : public testing::Test {
protected:
    WeekChartViewTest() {
        view.setWeek(week);
        view.setGeometry(12, 12, 656, 300);
        show(panel, {680, 324});
    }

    /// Moves the pointer there and lets one frame pass.
    void point(const QPointF& place) {
        QMouseEvent move(QEvent::MouseMove, place, view.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&view, &move);
        QApplication::processEvents();
    }

    void leave() {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(&view, &event);
        QApplication::processEvents();
    }

    [[nodiscard]] QPointF onForecast() const {
        const auto geometry = view.geometryOfChart();
        return {geometry.top.panel.x + 0.7 * geometry.top.panel.width, 100.0};
    }

    [[nodiscard]] QPointF onSession(std::size_t index) const {
        const Rect bar = WeekChart::bars(week, view.geometryOfChart())[index].rect;
        return {bar.x + bar.width / 2.0, bar.bottom() - 3.0};
    }

    [[nodiscard]] QString description() {
        return QAccessible::queryAccessibleInterface(&view)->text(QAccessible::Description);
    }

    UsageModel::WeekSeries week = straightWeek({.landing = 0.9});
    ApplicationLook look{Look{.appearance = Appearance::dark}};
    QWidget panel;
    WeekChartView view{look, TestSupport::utc(), &panel};
};

TEST_F(WeekChartViewTest, ReadsOutThePlaceUnderThePointerInTheNextFrame) {
    const QImage before = picture(view);
    point(onForecast());
    ASSERT_TRUE(view.hover());
    ASSERT_TRUE(std::holds_alternative<CurvePlace>(*view.hover()));
    const QRectF card = *view.tooltipRect();
    EXPECT_EQ(card.width(), 210.0);
    EXPECT_EQ(card.left(), onForecast().x() - 14.0 - 210.0);
    EXPECT_TRUE(DrawingTests::near(DrawingTests::Canvas::pixel(picture(view), card.left() + 4.0, card.center().y()),
                                   look.palette().cardRaised));
    EXPECT_NE(picture(view), before);
}

TEST_F(WeekChartViewTest, LeavesNoTraceWhenThePointerGoes) {
    const QImage before = picture(view);
    point(onForecast());
    point(onSession(1));
    leave();
    EXPECT_FALSE(view.hover());
    EXPECT_FALSE(view.tooltipRect());
    EXPECT_EQ(picture(view), before);
}

TEST_F(WeekChartViewTest, PaintsAnewWhatTheReadOutColoursAndNothingElse) {
    point(onForecast());
    PaintLog log(view);
    const QImage before = picture(view);
    const QRegion rest = QRegion(view.rect()) - log.painted();
    EXPECT_TRUE(rest.isEmpty()); // the picture itself asked for all
    PaintLog hoverLog(view);
    leave();
    EXPECT_EQ(hoverLog.count(), 1);
    EXPECT_FALSE(hoverLog.painted().contains(QPoint(60, 150)));
    EXPECT_FALSE(hoverLog.painted().contains(QPoint(60, 280)));
    const QImage after = picture(view);
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x) {
            const bool isKept = after.pixel(x, y) == before.pixel(x, y);
            EXPECT_TRUE(isKept || hoverLog.painted().contains(QPoint(x, y))) << x << "," << y;
        }
    }
}

TEST_F(WeekChartViewTest, PaintsNothingWhereThePointerMeetsNothing) {
    point({10.0, 10.0});
    PaintLog log(view);
    point({12.0, 12.0});
    EXPECT_EQ(log.count(), 0);
    EXPECT_FALSE(view.hover());
}

TEST_F(WeekChartViewTest, ReadsOutASession) {
    point(onSession(1));
    ASSERT_TRUE(view.hover());
    EXPECT_EQ(std::get<UsageModel::SessionBar>(*view.hover()), week.sessions[1]);
    EXPECT_TRUE(view.rect().contains(view.tooltipRect()->toAlignedRect()));
}

TEST_F(WeekChartViewTest, KeepsTheCardInsideAllOverTheChart) {
    for (double y = 1.0; y < 300.0; y += 7.0) {
        for (double x = 1.0; x < 656.0; x += 7.0) {
            point({x, y});
            if (!view.tooltipRect()) continue;
            EXPECT_TRUE(QRectF(14.0, 8.0, 656.0 - 28.0, 300.0 - 8.0 - 14.0).contains(*view.tooltipRect()))
                << x << "," << y;
        }
    }
}

TEST_F(WeekChartViewTest, ReadsOutTheNewWeekUnderAPointerThatRests) {
    point(onForecast());
    const QString before = description();
    auto next = straightWeek({.landing = 1.2});
    view.setWeek(next);
    QApplication::processEvents();
    ASSERT_TRUE(view.hover());
    EXPECT_NE(description(), before);
}

TEST_F(WeekChartViewTest, PaintsNothingForAnEqualWeek) {
    PaintLog log(view);
    view.setWeek(week);
    QApplication::processEvents();
    EXPECT_EQ(log.count(), 0);
    view.setWeek(week, 0.5);
    QApplication::processEvents();
    EXPECT_EQ(log.count(), 1);
}

TEST_F(WeekChartViewTest, DrawsAnewInAnotherLook) {
    const QImage dark = picture(view);
    look.force(Appearance::light);
    QApplication::processEvents();
    EXPECT_NE(picture(view), dark);
    look.force(Appearance::dark);
    EXPECT_EQ(picture(view), dark);
}

TEST_F(WeekChartViewTest, TellsAScreenReaderWhatTheChartComesTo) {
    view.setWeek(straightWeek({.landing = 1.2}));
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&view);
    EXPECT_EQ(interface->role(), QAccessible::Chart);
    const std::string name = interface->text(QAccessible::Name).toStdString();
    EXPECT_THAT(name, StartsWith("This week's usage chart. 48% of the weekly cap used so far. Projected to reach"));
    EXPECT_EQ(description().toStdString(), name);
}

TEST_F(WeekChartViewTest, TellsAScreenReaderWhatIsReadOut) {
    point(onForecast());
    EXPECT_THAT(description().toStdString(), HasSubstr("forecast, Projected 63%, Typical week 60%, Week elapsed 70%"));
    point(onSession(1));
    EXPECT_THAT(description().toStdString(), HasSubstr("Opus 60%, Sonnet 40%, Cost of week 2% of the week"));
    leave();
    EXPECT_THAT(description().toStdString(), StartsWith("This week's usage chart."));
}

TEST_F(WeekChartViewTest, ShowsARingForTheKeyboardOnly) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel));
    view.clearFocus(); // a window's only control has the focus from the start
    view.setFocus(Qt::TabFocusReason);
    const auto* ring = panel.findChild<FocusRing*>();
    ASSERT_NE(ring, nullptr);
    EXPECT_TRUE(ring->geometry().contains(view.geometry().adjusted(-4, -4, 4, 4)));
    EXPECT_EQ(ring->outline().box, QRectF(view.rect()));
    view.clearFocus();
    EXPECT_EQ(panel.findChild<FocusRing*>(), nullptr);
    view.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(panel.findChild<FocusRing*>(), nullptr);
}

TEST_F(WeekChartViewTest, WalksAlongTheCurvesByKey) {
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, Qt::Key_Right);
    ASSERT_TRUE(view.hover());
    EXPECT_NEAR(std::get<CurvePlace>(*view.hover()).at - week.now, 0.0, 1.0);
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_NEAR(std::get<CurvePlace>(*view.hover()).at - week.now, 3600.0, 1.0);
    QTest::keyClick(&view, Qt::Key_PageUp);
    EXPECT_NEAR(std::get<CurvePlace>(*view.hover()).at - week.now, -23.0 * 3600.0, 1.0);
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_FALSE(view.hover());
}

TEST_F(WeekChartViewTest, StopsAtTheWindowsEnds) {
    view.setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 9; ++i) QTest::keyClick(&view, Qt::Key_PageUp);
    EXPECT_NEAR(std::get<CurvePlace>(*view.hover()).at - week.windowStart, 0.0, 1.0);
    for (int i = 0; i < 20; ++i) QTest::keyClick(&view, Qt::Key_PageDown);
    EXPECT_NEAR(std::get<CurvePlace>(*view.hover()).at - week.windowEnd, 0.0, 1.0);
}

TEST_F(WeekChartViewTest, ReadsOutNothingOfAWindowWithoutLength) {
    auto none = week;
    none.windowEnd = none.windowStart;
    view.setWeek(none);
    point(onForecast());
    EXPECT_FALSE(view.hover());
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_FALSE(view.hover());
}

TEST_F(WeekChartViewTest, IsAsSharpAsWhatItIsDrawnOn) {
    const QImage twice = picture(view, 2.0);
    const auto layout = WeekChart::layOut({.series = week,
                                           .calendar = TestSupport::utc(),
                                           .size = {.width = 656.0, .height = 300.0},
                                           .pixelsPerPoint = 2.0});
    const auto direct =
        Images::drawn({656.0, 300.0}, 2.0, [&](QPainter& painter) { WeekChart::paint(painter, layout, look.look()); });
    EXPECT_EQ(twice, direct);
}

TEST_F(WeekChartViewTest, LeavesNoTraceAtTwoPixelsAPointEither) {
    const QImage before = picture(view, 2.0);
    point(onSession(0));
    EXPECT_NE(picture(view, 2.0), before);
    leave();
    EXPECT_EQ(picture(view, 2.0), before);
}

} // namespace
