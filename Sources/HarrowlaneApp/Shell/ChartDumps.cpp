#include "HarrowlaneApp/Shell/ChartDumps.h"

#include <array>
#include <cstdio>
#include <exception>
#include <future>

#include "HarrowlaneApp/Samples/ChartScenarios.h"
#include "HarrowlaneApp/Shell/ImageFile.h"
#include "HarrowlaneApp/Shell/ViewPictures.h"
#include "HarrowlaneApp/Store/Clock.h"
#include "HarrowlaneApp/Store/Records.h"
#include "HarrowlaneApp/Views/ApplicationLook.h"
#include "HarrowlaneApp/Views/WeekTab.h"
#include "UsageEngine/Aggregator.h"
#include "UsageGauge/GaugeReader.h"

namespace HarrowlaneApp::DumpChart {

namespace {

using UsageModel::AppPaths;
using UsageModel::Calendar;
using UsageModel::UsageSnapshot;

constexpr int padding = 18;

struct Scheme {
    Appearance appearance = Appearance::light;
    std::string_view name;
};

constexpr std::array<Scheme, 2> schemes{{{Appearance::light, "light"}, {Appearance::dark, "dark"}}};

QImage weekImage(const UsageModel::WeekSeries& series, const Calendar& calendar, Appearance appearance) {
    const ApplicationLook look{Look{.appearance = appearance}};
    auto* tab = new WeekTab(look, calendar);
    tab->setContent({.series = &series});
    return ViewPictures::onGround(tab, look, padding);
}

UsageSnapshot currentSnapshot(const AppPaths& paths, const Calendar& calendar) {
    const auto records = openRecords(paths);
    records->sync(records->discover());
    const auto events = records->allEvents();
    return UsageEngine::Aggregator{.calendar = calendar}.snapshot({
        .events = *events,
        .anchors = records->anchors(),
        .gauge = UsageGauge::GaugeReader{paths.gaugeFile()}.read(),
        .now = SystemClock().now(),
        .ingest = UsageModel::IngestProgress::idle(),
    });
}

} // namespace

void render(const std::string& folder) {
    const Calendar calendar = Calendar::local();
    for (const Scenario& scenario : scenarios()) {
        render({.snapshot = scenario.make(calendar), .name = scenario.name, .calendar = calendar}, folder);
    }
}

void render(const Shown& shown, const std::string& folder) {
    const ImageFolder images(folder);
    const std::string name(shown.name);
    for (const Scheme& scheme : schemes) {
        if (!shown.snapshot.weekSeries) {
            std::printf("no weekSeries for %s\n", name.c_str());
            continue;
        }
        const QImage image = weekImage(*shown.snapshot.weekSeries, shown.calendar, scheme.appearance);
        const std::string picture = name + "-" + std::string(scheme.name);
        if (image.isNull()) {
            std::printf("no image for %s (needs a GUI session)\n", picture.c_str());
            continue;
        }
        images.write(image, "week-" + picture + ".png");
    }
}

std::optional<UsageSnapshot> liveSnapshot(const AppPaths& paths, const Calendar& calendar) {
    try {
        return currentSnapshot(paths, calendar);
    } catch (const std::exception& failure) {
        std::printf("live dump failed: %s\n", failure.what());
        return std::nullopt;
    }
}

void renderLive(const std::string& folder) {
    const Calendar calendar = Calendar::local();
    const auto snapshot = std::async(std::launch::async, [&] { return liveSnapshot(AppPaths(), calendar); }).get();
    if (!snapshot) return;
    render({.snapshot = *snapshot, .name = "live", .calendar = calendar}, folder);
}

} // namespace HarrowlaneApp::DumpChart
