#include "HarrowlaneApp/Drawing/WeekChartCaptions.h"

#include <cmath>
#include <map>

#include <gmock/gmock.h>

#include "ChartWeeks.h"

namespace {

using namespace HarrowlaneApp;
using DrawingTests::Straight;
using DrawingTests::straightWeek;
using Role = WeekChart::Caption::Role;
using TestSupport::utc;
using UsageModel::SeriesScale;

constexpr double height = 300.0;

struct View {
    double width = 656.0;
    std::optional<double> whatIfFactor;
};

WeekChart::Layout layOut(const UsageModel::WeekSeries& series, const View& view = {}) {
    return WeekChart::layOut({.series = series,
                              .calendar = utc(),
                              .size = {.width = view.width, .height = height},
                              .pixelsPerPoint = 2.0,
                              .whatIfFactor = view.whatIfFactor});
}

struct Box {
    std::string text;
    Rect rect;
};

std::vector<Box> boxes(const WeekChart::Layout& layout) {
    std::vector<Box> all;
    for (const auto& caption : layout.captions) all.push_back({caption.text.toStdString(), caption.box});
    if (layout.crossingCaption)
        all.push_back({layout.crossingCaption->caption.text.toStdString(), layout.crossingCaption->plate});
    return all;
}

bool overlap(const Rect& a, const Rect& b) {
    return a.x < b.right() && b.x < a.right() && a.y < b.bottom() && b.y < a.bottom();
}

/// What is wrong with the captions; empty where nothing is.
std::string faults(const WeekChart::Layout& layout, double width) {
    std::string found;
    const auto all = boxes(layout);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Rect& box = all[i].rect;
        if (box.x < 0 || box.y < 0 || box.right() > width || box.bottom() > height) found += all[i].text + " leaves; ";
        for (std::size_t j = 0; j < i; ++j) {
            if (overlap(box, all[j].rect)) found += all[i].text + " on " + all[j].text + "; ";
        }
    }
    return found;
}

class Captions : public testing::TestWithParam<Straight> {};

TEST_P(Captions, NeitherCollideNorLeaveTheViewAtAnyWidth) {
    const auto series = straightWeek(GetParam());
    for (double width = 480.0; width <= 1600.0; width += 16.0) {
        for (const std::optional<double> factor : {std::optional<double>(), std::optional(0.5), std::optional(1.0)}) {
            EXPECT_EQ(faults(layOut(series, {.width = width, .whatIfFactor = factor}), width), "") << width;
        }
    }
}

std::vector<Straight> weeks() {
    std::vector<Straight> all;
    for (const SeriesScale scale : {SeriesScale::capFraction, SeriesScale::typicalWeeks}) {
        for (const double landing : {0.0, 0.05, 0.64, 1.0, 1.06, 1.14, 1.3, 4.0}) {
            for (const double gone : {0.0, 0.03, 0.15, 0.4, 0.75, 0.9, 0.94, 0.97, 1.0}) {
                all.push_back({.scale = scale, .landing = landing, .gone = gone, .boundaryEstimated = landing > 1.0});
            }
        }
    }
    for (const int sessions : {0, 1, 40}) all.push_back({.sessions = sessions});
    return all;
}

INSTANTIATE_TEST_SUITE_P(Weeks, Captions, testing::ValuesIn(weeks()));

const WeekChart::Caption& find(const WeekChart::Layout& layout, Role role) {
    const auto found = std::ranges::find(layout.captions, role, &WeekChart::Caption::role);
    if (found == layout.captions.end()) throw std::runtime_error("no such caption");
    return *found;
}

double middle(const Rect& rect) {
    return rect.x + rect.width / 2.0;
}

TEST(WeekChartCaptions, StandAtTheirPlacesAroundThePanels) {
    const auto series = straightWeek({});
    const auto layout = layOut(series);
    const Rect& top = layout.geometry.top.panel;
    EXPECT_NEAR(middle(find(layout, Role::now).box), layout.geometry.x(series.now), 1e-9);
    EXPECT_EQ(find(layout, Role::now).start.y, top.y - 5.0);
    EXPECT_NEAR(find(layout, Role::reset).box.right(), top.right(), 1e-9);
    EXPECT_EQ(find(layout, Role::reset).start.y, top.y - 5.0);
    EXPECT_EQ(find(layout, Role::reference).start, (Point{top.x + 8.0, layout.geometry.topY(1.0) - 6.5}));
    EXPECT_NEAR(find(layout, Role::tick).box.right(), top.x - 8.0, 1e-9);
    EXPECT_NEAR(find(layout, Role::barAxis).box.right(), top.x - 8.0, 1e-9);
    EXPECT_EQ(find(layout, Role::landing).start.x, top.right() + 15.0);
}

TEST(WeekChartCaptions, PutAReadoutsCapitalsBesideItsValue) {
    const auto layout = layOut(straightWeek({.landing = 0.5}));
    const auto& landing = find(layout, Role::landing);
    EXPECT_NEAR(landing.box.y + landing.box.height / 2.0, layout.geometry.topY(0.5), 1e-9);
}

TEST(WeekChartCaptions, EndTheCrossingsPlateLeftAboveItsMark) {
    const auto layout = layOut(straightWeek({.landing = 1.06}));
    ASSERT_TRUE(layout.crossingCaption);
    const Rect& plate = layout.crossingCaption->plate;
    EXPECT_NEAR(plate.right(), layout.crossing->centre.x - 9.0, 1e-9);
    EXPECT_NEAR(plate.bottom(), layout.crossing->centre.y - 8.0, 1e-9);
    EXPECT_EQ(plate.height, 19.0);
    EXPECT_NEAR(plate.width - layout.crossingCaption->caption.box.width, 14.0, 1e-9);
    EXPECT_NEAR(middle(plate), middle(layout.crossingCaption->caption.box), 1e-9);
}

TEST(WeekChartCaptions, LeaveTheLimitsNameAloneWhereTheWeekRunsOutAtOnce) {
    const auto layout = layOut(straightWeek({.landing = 4.0, .gone = 0.0}));
    ASSERT_TRUE(layout.crossingCaption);
    EXPECT_FALSE(overlap(layout.crossingCaption->plate, find(layout, Role::reference).box));
}

TEST(WeekChartCaptions, MoveTheResetBehindItsLineWhereThePresentNeedsItsPlace) {
    const auto layout = layOut(straightWeek({.gone = 1.0, .boundaryEstimated = true}));
    const Rect& reset = find(layout, Role::reset).box;
    EXPECT_GE(reset.x, layout.geometry.top.panel.right());
    EXPECT_LE(find(layout, Role::now).box.right() + 4.0, reset.x + 1e-9);
    EXPECT_NEAR(middle(find(layout, Role::now).box), layout.geometry.top.panel.right(), 12.0);
}

TEST(WeekChartCaptions, NameTheLimitBelowItsLineWhereItRunsAlongThePanelsTop) {
    auto series = straightWeek({});
    series.limitLevel = 1.24;
    const auto layout = layOut(series);
    const auto& name = find(layout, Role::reference);
    EXPECT_GT(name.box.y, layout.reference.y);
    EXPECT_EQ(faults(layout, 656.0), "");
}

TEST(WeekChartCaptions, SetAReadoutSmallerThatIsTooLongForItsRoom) {
    for (const double landing : {12.34, 123.45, 1234567.0, 1e15}) {
        const auto layout = layOut(straightWeek({.scale = SeriesScale::typicalWeeks, .landing = landing}));
        EXPECT_LE(find(layout, Role::landing).box.right(), 656.0) << landing;
    }
    EXPECT_EQ(find(layOut(straightWeek({.landing = 4.0})), Role::landing).font.size(), 12.0);
}

TEST(WeekChartCaptions, SayTheUnspentAndTheExcess) {
    EXPECT_EQ(find(layOut(straightWeek({.landing = 0.3})), Role::unspent).text, "70% unspent");
    const auto over = layOut(straightWeek({.landing = 1.2}));
    EXPECT_EQ(find(over, Role::over).text, "20% over");
    EXPECT_NEAR(middle(find(over, Role::over).box), over.geometry.top.panel.right() - 60.0, 1e-9);
}

TEST(WeekChartCaptions, KeepTheirDistanceAcrossTheYear) {
    // The first and the last column of days are of every width.
    for (int shift = 0; shift < 24; ++shift) {
        auto series = straightWeek({.landing = 1.1});
        for (UsageModel::Date* date : {&series.windowStart, &series.windowEnd, &series.now})
            *date = *date + shift * TestSupport::hour;
        EXPECT_EQ(faults(layOut(series, {.width = 480.0}), 480.0), "") << shift;
    }
}

TEST(WeekChartCaptions, AreColouredByWhatTheyTell) {
    const Palette& dark = Palette::resolved(Appearance::dark);
    const auto color = [&](Role role, bool limit = true) {
        return WeekChart::captionColor(role, dark, &Palette::warn, limit);
    };
    EXPECT_EQ(color(Role::landing), dark.warn);
    EXPECT_EQ(color(Role::ghost), dark.warn);
    EXPECT_EQ(color(Role::typical), dark.violet);
    EXPECT_EQ(color(Role::reference), withOpacity(dark.crit, 0.9));
    EXPECT_EQ(color(Role::reference, false), withOpacity(dark.dim, 0.9));
    EXPECT_EQ(color(Role::crossing), dark.crit);
    EXPECT_EQ(color(Role::tick), dark.dim);
    EXPECT_EQ(color(Role::now), withOpacity(dark.ink, 0.85));
}

} // namespace
