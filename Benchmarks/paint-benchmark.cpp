// What it takes to paint the week chart anew, as large as the dashboard shows it, on one core.

#include <cmath>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "HarrowlaneApp/Drawing/WeekChartPainter.h"
#include "Support/Ratios.h"

namespace {

using namespace HarrowlaneApp;
using UsageModel::Date;
using UsageModel::ModelClass;
using UsageModel::SeriesPoint;
using UsageModel::WeekSeries;

constexpr Date monday{1772470800};
constexpr double hour = 3600.0;
constexpr double weekHours = 168.0;
constexpr double width = 720.0;
constexpr double height = 300.0;
constexpr double scale = 2.0;
constexpr double secondsForRepaint = 0.006;

/// A curve that rises by steps, `perHour` points an hour.
std::vector<SeriesPoint> curve(double fromHour, double toHour, double start, double end, int perHour) {
    std::vector<SeriesPoint> points;
    const int steps = static_cast<int>((toHour - fromHour) * perHour);
    for (int step = 0; step <= steps; ++step) {
        const double share = static_cast<double>(step) / steps;
        const double wave = 0.02 * std::sin(share * 40.0) * share * (1.0 - share);
        points.push_back({.t = monday + (fromHour + share * (toHour - fromHour)) * hour,
                          .used = start + share * (end - start) + wave});
    }
    return points;
}

/// Half over, over its cap, with a session every four hours and everything that can be drawn.
WeekSeries fullWeek(int pointsPerHour) {
    constexpr int sessions = 42;
    WeekSeries week;
    week.windowStart = monday;
    week.windowEnd = monday + weekHours * hour;
    week.now = monday + 84.0 * hour;
    week.usedNow = 0.7;
    week.limitLevel = 1.0;
    week.norm.basis = UsageModel::WeeklyNorm::Basis::median;
    week.actual = curve(0.0, 84.0, 0.0, 0.7, pointsPerHour);
    week.baseline = curve(0.0, weekHours, 0.0, 0.9, pointsPerHour);
    week.forecastLikely = curve(84.0, weekHours, 0.7, 1.2, pointsPerHour);
    week.forecastHigh = curve(84.0, weekHours, 0.7, 1.3, pointsPerHour);
    week.forecastLow = curve(84.0, weekHours, 0.7, 1.05, pointsPerHour);
    week.coneLikelyEnd = week.forecastLikely.back();
    week.crossing = monday + 134.0 * hour;
    for (int index = 0; index < sessions; ++index) {
        const Date start = monday + index * 4.0 * hour;
        week.sessions.push_back({.start = start,
                                 .end = start + 3.5 * hour,
                                 .fillFraction = 0.4 + 0.014 * index,
                                 .byModelClass = {{ModelClass::opus, 0.4},
                                                  {ModelClass::fable, 0.3},
                                                  {ModelClass::sonnet, 0.2},
                                                  {ModelClass::haiku, 0.1}},
                                 .isCurrent = index + 1 == sessions,
                                 .capBasis = UsageModel::SessionCapBasis::learnedScale});
    }
    return week;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const auto calendar = UsageModel::Calendar::utc();
    const Look look{.appearance = Appearance::dark};
    QImage image(QSize(static_cast<int>(width * scale), static_cast<int>(height * scale)),
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);

    const auto repaint = [&](const WeekSeries& week) {
        const auto layout = WeekChart::layOut({.series = week,
                                               .calendar = calendar,
                                               .size = {.width = width, .height = height},
                                               .pixelsPerPoint = scale,
                                               .whatIfFactor = 0.5});
        image.fill(Qt::transparent);
        QPainter painter(&image);
        WeekChart::paint(painter, layout, look);
    };
    const WeekSeries hourly = fullWeek(1);
    const WeekSeries everyMinute = fullWeek(60);
    constexpr int rounds = 100;
    Bench::add("hourly_points", rounds, [&] { repaint(hourly); });
    Bench::add("points_every_minute", rounds, [&] { repaint(everyMinute); });
    return Bench::run(argc, argv,
                      {{.subject = "hourly_points", .measures = {}, .limit = secondsForRepaint},
                       {.subject = "points_every_minute", .measures = {}, .limit = secondsForRepaint}});
}
