// Writes pictures for looking at, if a folder is named.
#include "HarrowlaneApp/Samples/PreviewData.h"
#include "HarrowlaneApp/Views/NowView.h"
#include "HarrowlaneApp/Views/Snapshots.h"
#include <cstdlib>
#include <gtest/gtest.h>
using namespace HarrowlaneApp;
namespace {
void write(const char* name, UsageStore::Preview preview, Look look) {
    const auto store = UsageStore::preview(std::move(preview));
    ApplicationLook appLook(look);
    NowView view({.store = *store,
                  .look = appLook,
                  .calendar = UsageModel::Calendar::utc(),
                  .now = [] { return ViewTests::thursday; },
                  .sampleWeek = [](auto) { return ViewTests::overPace(); }});
    for (int s : {1, 2}) image(view, s).save(QString("%1/%2-%3x.png").arg(getenv("PICS")).arg(name).arg(s));
}
TEST(NowPictures, AreWritten) {
    if (!getenv("PICS")) GTEST_SKIP();
    using S = UsageGauge::StatusLineInstaller::State;
    const Look dark{.appearance = Appearance::dark};
    const Look light{.appearance = Appearance::light};
    Look contrast = dark;
    contrast.increaseContrast = true;
    Look flat = dark;
    flat.reduceTransparency = true;
    const auto warming = UsageModel::UsageSnapshot::warmingUp(ViewTests::thursday);
    write("dark", {.snapshot = warming, .sample = ViewTests::overPace()}, dark);
    write("light", {.snapshot = warming, .sample = ViewTests::overPace()}, light);
    write("contrast", {.snapshot = warming, .sample = ViewTests::overPace()}, contrast);
    write("flat", {.snapshot = warming, .sample = ViewTests::overPace()}, flat);
    Look contrastLight = light;
    contrastLight.increaseContrast = true;
    write("contrast-light", {.snapshot = warming, .sample = ViewTests::overPace()}, contrastLight);
    write("calm", {.snapshot = ViewTests::calm(), .installState = S::installed}, dark);
    write("calm-light", {.snapshot = ViewTests::calm(), .installState = S::installed}, light);
    write("nologs", {.snapshot = warming, .readiness = Readiness::noLogsFound}, dark);
    write("nousage", {.snapshot = warming, .readiness = Readiness::noUsageYet}, dark);
    write("nousage-light", {.snapshot = warming, .readiness = Readiness::noUsageYet}, light);
    write("warming", {.snapshot = warming, .readiness = Readiness::warmingUp}, dark);
    write("warming-light", {.snapshot = warming, .readiness = Readiness::warmingUp}, light);
    write("estimated", {.snapshot = ViewTests::estimated()}, dark);
    write("estimated-light", {.snapshot = ViewTests::estimated()}, light);
    write("empty", {.snapshot = warming, .readiness = Readiness::ready}, dark);
    auto longs = ViewTests::overPace();
    std::string words;
    while (words.size() < 300) words += "word and more ";
    longs.recommendation->title = words;
    longs.recommendation->detail = words;
    longs.recommendation->impact = words;
    longs.recommendation->command = "/model " + std::string(300, 'x');
    write("long", {.snapshot = longs}, dark);
}
} // namespace
