#include "HarrowlaneApp/Store/UsageStore.h"

#include <chrono>
#include <cstdlib>
#include <string_view>
#include <utility>

#include <QPointer>

#include <qcoro/qcorotimer.h>

#include "HarrowlaneApp/Store/BundledShim.h"
#include "HarrowlaneApp/Store/DemoGauge.h"
#include "HarrowlaneApp/Store/OnPool.h"
#include "UsageIngest/LogDiscovery.h"

namespace HarrowlaneApp {

namespace {

using UsageIngest::EventList;
using UsageModel::Anchor;
using UsageModel::UsageSnapshot;
using Files = std::vector<std::filesystem::path>;

std::chrono::milliseconds milliseconds(double seconds) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

Readiness readinessWith(const Files& files, const EventList& events) {
    if (files.empty()) return Readiness::noLogsFound;
    return events->empty() ? Readiness::noUsageYet : Readiness::ready;
}

} // namespace

UsageStore::Surroundings UsageStore::realSurroundings(NotificationService& service) {
    const UsageModel::AppPaths paths;
    const char* demo = std::getenv(demoGaugeVariable);
    return {
        .paths = paths,
        .clock =
            [] {
                const std::chrono::duration<double> since = std::chrono::system_clock::now().time_since_epoch();
                return UsageModel::Date{since.count()};
            },
        .openRecords = [paths] { return openRecords(paths.database()); },
        .engine = [aggregator = UsageEngine::Aggregator{.calendar = UsageModel::Calendar::local()}](
                      const UsageEngine::SnapshotInput& input) { return aggregator.snapshot(input); },
        .service = service,
        .alertSettings = [] { return AlertSettings(); },
        .gauge =
            demo != nullptr && std::string_view(demo) == "1" ? Surroundings::Gauge::orDemo : Surroundings::Gauge::real,
    };
}

UsageStore::UsageStore(Surroundings surroundings, NotStarted)
    : surroundings_(std::move(surroundings)),
      snapshot_(UsageSnapshot::warmingUp(surroundings_.clock())),
      gaugeReader_{surroundings_.paths.gaugeFile()},
      installer_(surroundings_.paths.claudeSettings(), surroundings_.paths.support()),
      notifier_({.service = surroundings_.service,
                 .stateURL = surroundings_.paths.notificationState(),
                 .bundle = surroundings_.bundle ? Bundle::present : Bundle::absent}) {
    for (QThreadPool* pool : {&storePool_, &enginePool_}) {
        pool->setMaxThreadCount(1);
        // A thread that may expire wakes up only to do so, and the next run needs it again.
        pool->setExpiryTimeout(-1);
    }
    enginePool_.setThreadPriority(QThread::LowPriority);
    sleep_.setSingleShot(true);
    // A coarse one may ring a second and a half early, and wakes the processor as often.
    sleep_.setTimerType(Qt::PreciseTimer);
    connect(&sleep_, &QTimer::timeout, this, [this] { loop(generation_); });
    connect(
        this, &UsageStore::gaugeTouched, this, [this] { refresh(); }, Qt::QueuedConnection);
}

UsageStore::UsageStore(Surroundings surroundings) : UsageStore(std::move(surroundings), NotStarted{}) {
    installState_ = installer_.state();
    start();
    startGaugeWatch();
}

UsageStore::UsageStore(Surroundings surroundings, const Preview& preview)
    : UsageStore(std::move(surroundings), NotStarted{}) {
    snapshot_ = preview.snapshot;
    installState_ = preview.installState;
    readiness_ = preview.readiness;
    sampleSnapshot_ = preview.sample;
}

UsageStore::~UsageStore() {
    // First of all, since its thread posts to this object.
    gaugeWatcher_.reset();
}

template <typename T>
void UsageStore::set(T& field, std::type_identity_t<T> value, void (UsageStore::*changed)()) {
    if (field == value) return;
    field = std::move(value);
    (this->*changed)();
}

void UsageStore::setSampleSnapshot(std::optional<UsageSnapshot> sample) {
    set(sampleSnapshot_, std::move(sample), &UsageStore::sampleSnapshotChanged);
}

void UsageStore::start() {
    ++generation_;
    sleep_.start(0);
}

QCoro::Task<> UsageStore::loop(int generation) {
    const QPointer<UsageStore> self(this);
    const auto isOver = [&] { return !self || generation != generation_; };
    if (!store_) co_await open(generation);
    if (isOver() || !store_) co_return;
    co_await refresh();
    if (isOver()) co_return;
    sleep_.start(milliseconds(surroundings_.periodSeconds));
}

QCoro::Task<> UsageStore::open(int generation) {
    const QPointer<UsageStore> self(this);
    try {
        const std::shared_ptr<Records> records = co_await opened();
        if (self && generation == generation_) store_ = records;
    } catch (const std::exception& error) {
        if (self && generation == generation_) set(lastError_, error.what(), &UsageStore::lastErrorChanged);
    }
}

QCoro::Task<> UsageStore::refresh() {
    if (isRefreshInFlight_) {
        refreshPending_ = true;
        co_return;
    }
    const QPointer<UsageStore> self(this);
    isRefreshInFlight_ = true;
    do {
        refreshPending_ = false;
        co_await runRefresh();
        if (!self) co_return;
    } while (refreshPending_);
    isRefreshInFlight_ = false;
}

QCoro::Task<> UsageStore::runRefresh() {
    const QPointer<UsageStore> self(this);
    try {
        co_await runPipeline();
    } catch (const std::exception& error) {
        if (self) set(lastError_, error.what(), &UsageStore::lastErrorChanged);
    }
}

QCoro::Task<> UsageStore::runPipeline() {
    const QPointer<UsageStore> self(this);
    if (!store_) co_return;
    const Files files = UsageIngest::LogDiscovery(surroundings_.paths.sessionLogs()).discover();
    co_await synced(files);
    if (!self) co_return;
    const EventList events = co_await allEvents();
    if (!self) co_return;
    // Before the limit messages are read: the first-run screens need not wait for them.
    set(readiness_, readinessWith(files, events), &UsageStore::readinessChanged);
    const std::vector<Anchor> anchors = co_await this->anchors();
    if (!self) co_return;
    const UsageSnapshot snapshot = co_await computed(events, anchors);
    if (!self) co_return;
    publish(snapshot);
}

QCoro::Task<std::shared_ptr<Records>> UsageStore::opened() {
    return onPool(storePool_, surroundings_.openRecords);
}

QCoro::Task<UsageIngest::SyncStats> UsageStore::synced(const Files& files) {
    return onPool(storePool_, [store = store_, files] { return store->sync(files); });
}

QCoro::Task<EventList> UsageStore::allEvents() {
    return onPool(storePool_, [store = store_] { return store->allEvents(); });
}

QCoro::Task<std::vector<Anchor>> UsageStore::anchors() {
    return onPool(storePool_, [store = store_] { return store->anchors(); });
}

QCoro::Task<UsageSnapshot> UsageStore::computed(const EventList& events, const std::vector<Anchor>& anchors) {
    return onPool(enginePool_, [events, anchors, gauge = gaugeForRun(), held = heldSessionCap_,
                                clock = surroundings_.clock, engine = surroundings_.engine] {
        return engine({.events = *events,
                       .anchors = anchors,
                       .gauge = gauge,
                       .now = clock(),
                       .ingest = UsageModel::IngestProgress::idle(),
                       .heldSessionCap = held});
    });
}

std::optional<UsageModel::GaugeReading> UsageStore::gaugeForRun() {
    // A gauge that goes bad or away changes nothing until a good one comes back.
    if (auto reading = gaugeReader_.read()) lastGoodGauge_ = std::move(reading);
    if (lastGoodGauge_ || surroundings_.gauge == Surroundings::Gauge::real) return lastGoodGauge_;
    return demoGauge(surroundings_.clock());
}

void UsageStore::publish(const UsageSnapshot& snapshot) {
    // The cap learnt from one reading must not vanish in the next when the gauge has not moved.
    if (snapshot.sessionCapInLogUnits) heldSessionCap_ = snapshot.sessionCapInLogUnits;
    set(snapshot_, snapshot, &UsageStore::snapshotChanged);
    set(lastError_, std::nullopt, &UsageStore::lastErrorChanged);
    notifier_.handle(snapshot_, surroundings_.alertSettings());
}

void UsageStore::startGaugeWatch() {
    gaugeWatcher_ = std::make_unique<UsageGauge::GaugeWatcher>(gaugeReader_.url, [this] { emit gaugeTouched(); });
    gaugeWatcher_->start();
}

QCoro::Task<> UsageStore::refreshNow() {
    if (isRefreshing_) co_return;
    const QPointer<UsageStore> self(this);
    set(isRefreshing_, true, &UsageStore::isRefreshingChanged);
    set(installState_, installer_.state(), &UsageStore::installStateChanged);
    if (store_) {
        co_await refresh();
    } else {
        start();
    }
    if (!self) co_return;
    co_await QCoro::sleepFor(milliseconds(surroundings_.spinnerSeconds));
    if (!self) co_return;
    set(isRefreshing_, false, &UsageStore::isRefreshingChanged);
}

void UsageStore::installShim() {
    const auto shim = surroundings_.bundle ? bundledShimURL(*surroundings_.bundle) : std::nullopt;
    if (!shim) {
        set(lastError_, "Shim not found — build the app with Scripts/make-app", &UsageStore::lastErrorChanged);
        return;
    }
    change("Install", [&] { installer_.install(*shim, surroundings_.clock()); });
}

void UsageStore::uninstallShim() {
    change("Uninstall", [&] { installer_.uninstall(); });
}

void UsageStore::change(const char* whatFails, const std::function<void()>& install) {
    try {
        install();
    } catch (const std::exception& error) {
        set(lastError_, std::string(whatFails) + " failed: " + error.what(), &UsageStore::lastErrorChanged);
        return;
    }
    set(installState_, installer_.state(), &UsageStore::installStateChanged);
    set(lastError_, std::nullopt, &UsageStore::lastErrorChanged);
}

void UsageStore::refreshNotificationAuthorization() {
    notifier_.refreshAuthorization([this] {
        set(notificationAuthorization_, notifier_.authorization(), &UsageStore::notificationAuthorizationChanged);
    });
}

} // namespace HarrowlaneApp
