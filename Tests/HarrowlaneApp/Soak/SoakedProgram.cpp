#include "HarrowlaneApp/Soak/SoakedProgram.h"

#include <algorithm>
#include <cmath>

#include "Shim/GaugeWriter.h"
#include "Support/LoggedTurn.h"
#include "UsageGauge/GaugeReader.h"
#include "UsageIngest/IngestStore.h"
#include "UsageIngest/LogDiscovery.h"
#include "UsageModel/Files.h"

namespace HarrowlaneApp {

namespace {

using UsageModel::Date;
using UsageModel::UsageSnapshot;

constexpr double hour = 3600.0;
constexpr int historyHours = 14 * 24;
constexpr int gaugesPerSecond = 10;
constexpr long turnsPerLog = 100;

UsageModel::GaugeWindow window(double seconds, double length) {
    const double begun = std::floor(seconds / length) * length;
    // A little faster than its time goes by: levels are reached, and the forecast has something to warn of.
    const double used = std::min(std::floor(108.0 * (seconds - begun) / length), 100.0);
    return {.usedPercentage = used, .resetsAt = begun + length};
}

} // namespace

SoakedProgram::SoakedProgram(unsigned seed) : random_(seed) {
    for (int back = historyHours; back > 0; --back) logTurn(clock_->now() - back * hour);
    restartPanel();
    restartService();
    program_ =
        std::make_unique<HarrowlaneApp>(HarrowlaneApp::Surroundings{.world = {.paths = paths_,
                                                                              .calendar = UsageModel::Calendar::utc(),
                                                                              .clock = clock_,
                                                                              .bundle = home_.path() / "Test.app",
                                                                              .notifications = notifications_},
                                                                    .item = item_,
                                                                    .preferences = preferences_,
                                                                    .appearance = appearance_,
                                                                    .autostart = autostart_});
    QObject::connect(&store(), &UsageStore::snapshotPublished, [this] { ++tally_.refreshes; });
    QObject::connect(&store(), &UsageStore::lastErrorChanged, [this] { tally_.errors += store().lastError() ? 1 : 0; });
}

bool SoakedProgram::liveOnePeriod() {
    if (!becomes([this] { return clock_->sleepers() > 0; })) return false;
    const Date begun = clock_->now();
    for (int second = 0; second < static_cast<int>(UsageStore::periodSeconds); ++second) {
        for (int i = 0; i < gaugesPerSecond; ++i)
            writeGauge(begun + (second + static_cast<double>(i) / gaugesPerSecond));
        QCoreApplication::processEvents();
    }
    logTurn(begun + 15.0);
    comeAndGo();
    useWindows();
    clock_->turn(UsageStore::periodSeconds);
    return refreshes();
}

bool SoakedProgram::refreshes() {
    return becomes([this] { return store().snapshot().generatedAt == clock_->now() && clock_->sleepers() > 0; });
}

bool SoakedProgram::chance(double probability) {
    return std::bernoulli_distribution(probability)(random_);
}

void SoakedProgram::logTurn(Date at) {
    const long number = ++tally_.turns;
    const auto log = paths_.sessionLogs() / "project" / (std::to_string(number / turnsPerLog) + ".jsonl");
    TestSupport::appendFile(log, TestSupport::loggedTurn(at, number));
}

void SoakedProgram::writeGauge(Date at) {
    const double seconds = at.secondsSince1970;
    Shim::storeGauge(
        {.capturedAt = seconds,
         .source = "statusLine",
         .windows = {{"five_hour", window(seconds, 5.0 * hour)}, {"seven_day", window(seconds, 7.0 * 24.0 * hour)}}},
        paths_.gaugeFile());
    ++tally_.gauges;
    if (!chance(0.01)) return;
    const std::string whole = UsageModel::readWholeFile(paths_.gaugeFile());
    TestSupport::writeFile(paths_.gaugeFile(), whole.substr(0, whole.size() / 2));
    ++tally_.tornGauges;
}

void SoakedProgram::comeAndGo() {
    if (chance(0.1)) restartPanel();
    if (chance(0.1)) restartService();
    if (chance(0.05)) panel_.reset();
    if (chance(0.05)) service_.reset();
    // What the stubs keep for tests is not the program's.
    if (panel_) panel_->calls.clear();
    if (service_) service_->calls.clear();
}

void SoakedProgram::restartPanel() {
    panel_.reset();
    panel_ = std::make_unique<StubWatcher>(desktop_);
    ++tally_.panels;
}

void SoakedProgram::restartService() {
    service_.reset();
    service_ =
        std::make_unique<StubService>(desktop_,
                                      StubService::Place{.name = "org.freedesktop.Notifications",
                                                         .path = "/org/freedesktop/Notifications",
                                                         .interface = "org.freedesktop.Notifications"},
                                      [this](const QDBusMessage& message) -> std::optional<StubService::Reply> {
                                          if (message.member() == "GetCapabilities")
                                              return StubService::Reply{.values = {QStringList{"body"}}};
                                          return StubService::Reply{.values = {static_cast<uint>(++tally_.banners)}};
                                      });
    ++tally_.services;
}

void SoakedProgram::useWindows() {
    if (chance(0.2)) Q_EMIT item_.activated(QPoint(400, 5));
    if (chance(0.1)) program_->openDashboard();
    if (chance(0.1)) program_->dashboard().close();
    if (chance(0.05)) program_->openSettings();
    if (chance(0.05)) program_->settings().close();
}

void SoakedProgram::openWindows() {
    program_->popover().open(QPoint(400, 5));
    program_->openDashboard();
    program_->openSettings();
}

UsageSnapshot SoakedProgram::seenAfresh() {
    const TestSupport::TemporaryFolder folder;
    UsageIngest::IngestStore records(folder / "usage.db");
    records.sync(UsageIngest::LogDiscovery(paths_.sessionLogs()).discover());
    const auto events = records.allEvents();
    const auto anchors = records.anchors();
    return UsageEngine::Aggregator{.calendar = UsageModel::Calendar::utc()}.snapshot(
        {.events = *events,
         .anchors = anchors,
         .gauge = UsageGauge::GaugeReader{.url = paths_.gaugeFile()}.read(),
         .now = clock_->now(),
         .ingest = UsageModel::IngestProgress::idle(),
         .heldSessionCap = store().snapshot().sessionCapInLogUnits});
}

void SoakedProgram::changeBetweenRefreshes() {
    logTurn(clock_->now() - 1.0);
    do {
        writeGauge(clock_->now());
    } while (!UsageGauge::GaugeReader{.url = paths_.gaugeFile()}.read());
}

bool SoakedProgram::bringDesktopBack() {
    restartPanel();
    restartService();
    return becomes([this] { return item_.presence() == StatusItem::Presence::shown; });
}

bool SoakedProgram::panelShowsSnapshot() {
    const auto shown =
        qdbus_cast<NotifierToolTip>(PanelSide(desktop_, panel_->items().last()).property(QStringLiteral("ToolTip")));
    const UsageModel::Verdict& verdict = store().snapshot().verdict;
    return shown.title == QString::fromStdString(verdict.headline) &&
           shown.text == QString::fromStdString(verdict.subtext).toHtmlEscaped();
}

std::ostream& operator<<(std::ostream& stream, const SoakedProgram::Tally& tally) {
    return stream << tally.refreshes << " refreshes, " << tally.errors << " errors, " << tally.turns << " turns, "
                  << tally.gauges << " gauges (" << tally.tornGauges << " torn), " << tally.panels << " panels, "
                  << tally.services << " notification services, " << tally.banners << " banners\n";
}

} // namespace HarrowlaneApp
