#include "HarrowlaneApp/Store/UsageStore.h"

#include <utility>

#include "HarrowlaneApp/Store/BundledShim.h"
#include "HarrowlaneApp/Store/DemoGauge.h"
#include "HarrowlaneApp/Store/Memory.h"
#include "HarrowlaneApp/Store/Suspending.h"

namespace HarrowlaneApp {

namespace {

using UsageModel::UsageSnapshot;

void keepOneThread(QThreadPool& pool, QThread::Priority priority) {
    pool.setMaxThreadCount(1);
    pool.setExpiryTimeout(-1); // a thread that waits costs nothing; one begun anew for each run does
    pool.setThreadPriority(priority);
}

enum class LogsThere { none, some };

/// The list of files never leaves the records' thread: thousands of paths take long to copy, and even to free.
LogsThere syncAll(Records& records) {
    const UsageIngest::LogFiles files = records.discover();
    records.sync(files);
    return files.empty() ? LogsThere::none : LogsThere::some;
}

Readiness readinessOf(LogsThere logs, const UsageIngest::EventList& events) {
    if (logs == LogsThere::none) return Readiness::noLogsFound;
    return events->empty() ? Readiness::noUsageYet : Readiness::ready;
}

} // namespace

UsageStore::UsageStore(World world, QObject* parent)
    : QObject(parent),
      world_(std::move(world)),
      gaugeReader_{world_->paths.gaugeFile()},
      installer_(world_->paths.claudeSettings(), world_->paths.support()),
      aggregator_{.calendar = world_->calendar},
      snapshot_(UsageSnapshot::warmingUp(world_->clock->now())),
      installState_(installer_.state()) {
    notifier_.emplace(NotificationCoordinator::Surroundings{
        .service = world_->notifications,
        .stateURL = world_->paths.notificationState(),
        .bundle = world_->bundle ? Bundle::present : Bundle::absent,
    });
    keepOneThread(recordsPool_, QThread::InheritPriority);
    keepOneThread(enginePool_, QThread::LowPriority);
    beginning_.setSingleShot(true);
    connect(&beginning_, &QTimer::timeout, this, [this] { loop(loopTurn_); });
    start();
    startGaugeWatch();
}

UsageStore::UsageStore(Preview preview)
    : gaugeReader_{},
      installer_(std::filesystem::path(), std::filesystem::path()),
      snapshot_(std::move(preview.snapshot)),
      readiness_(preview.readiness),
      sampleSnapshot_(std::move(preview.sample)),
      installState_(preview.installState) {}

std::unique_ptr<UsageStore> UsageStore::preview(Preview preview) {
    return std::unique_ptr<UsageStore>(new UsageStore(std::move(preview)));
}

UsageStore::~UsageStore() {
    gaugeWatcher_.reset();
    recordsPool_.waitForDone();
    enginePool_.waitForDone();
}

void UsageStore::setSampleSnapshot(std::optional<UsageSnapshot> sample) {
    set(sampleSnapshot_, std::move(sample), &UsageStore::sampleSnapshotChanged);
}

void UsageStore::start() {
    if (!world_) return;
    isOpening_ = true;
    ++loopTurn_;
    beginning_.start();
}

void UsageStore::startGaugeWatch() {
    // The watcher calls on its own thread, and the run belongs to the main one.
    connect(
        this, &UsageStore::gaugeTouched, this, [this] { refresh(); }, Qt::QueuedConnection);
    gaugeWatcher_.emplace(world_->paths.gaugeFile(), [this] { emit gaugeTouched(); });
    gaugeWatcher_->start();
}

QCoro::Task<> UsageStore::loop(int turn) {
    const std::shared_ptr<Clock> clock = world_->clock;
    co_await openRecords();
    while (records_ && turn == loopTurn_) {
        co_await refresh();
        co_await asleep(this, *clock, periodSeconds);
    }
}

/// Opening may have to wait for another process, so it is no work for the main thread.
QCoro::Task<> UsageStore::openRecords() {
    const auto open = [paths = world_->paths, openRecords = world_->openRecords] {
        return std::shared_ptr<Records>(openRecords(paths));
    };
    try {
        records_ = co_await onPool(this, recordsPool_, open);
    } catch (const std::exception& error) {
        fail(error.what());
    }
    isOpening_ = false;
}

QCoro::Task<> UsageStore::refresh() {
    if (isRefreshInFlight_) {
        refreshPending_ = true;
        co_return;
    }
    isRefreshInFlight_ = true;
    do {
        refreshPending_ = false;
        co_await runRefresh();
    } while (refreshPending_);
    isRefreshInFlight_ = false;
}

QCoro::Task<> UsageStore::runRefresh() {
    try {
        co_await runSteps();
    } catch (const std::exception& error) {
        fail(error.what());
    }
}

QCoro::Task<> UsageStore::runSteps() {
    const std::shared_ptr<Records> records = records_;
    if (!records) co_return;
    const auto sync = [records] { return syncAll(*records); };
    const LogsThere logs = co_await onPool(this, recordsPool_, sync);
    const auto allEvents = [records] { return records->allEvents(); };
    const auto events = co_await onPool(this, recordsPool_, allEvents);
    set(readiness_, readinessOf(logs, events), &UsageStore::readinessChanged);

    const auto allAnchors = [records] { return records->anchors(); };
    const auto anchors = co_await onPool(this, recordsPool_, allAnchors);
    const auto aggregate = [aggregator = aggregator_, clock = world_->clock, events, anchors, gauge = gaugeForRun(),
                            held = heldSessionCap_] {
        UsageSnapshot made = aggregator.snapshot({.events = *events,
                                                  .anchors = anchors,
                                                  .gauge = gauge,
                                                  .now = clock->now(),
                                                  .ingest = UsageModel::IngestProgress::idle(),
                                                  .heldSessionCap = held});
        Memory::giveBack();
        return made;
    };
    UsageSnapshot snapshot = co_await onPool(this, enginePool_, aggregate);
    // A cap that was learnt must not vanish while the gauge stands still.
    if (snapshot.sessionCapInLogUnits) heldSessionCap_ = snapshot.sessionCapInLogUnits;
    set(snapshot_, std::move(snapshot), &UsageStore::snapshotChanged);
    set(lastError_, {}, &UsageStore::lastErrorChanged);
    notifier_->handle(snapshot_, world_->alertSettings());
    emit snapshotPublished();
}

/// The newest reading that could be read: a file that goes bad changes nothing until a good one comes back.
std::optional<UsageModel::GaugeReading> UsageStore::gaugeForRun() {
    if (auto reading = gaugeReader_.read()) lastGoodGauge_ = std::move(reading);
    if (lastGoodGauge_ || !world_->demoGauge) return lastGoodGauge_;
    return demoGauge(world_->clock->now());
}

QCoro::Task<> UsageStore::refreshNow() {
    if (isRefreshing_ || !world_) co_return;
    const std::shared_ptr<Clock> clock = world_->clock;
    set(isRefreshing_, true, &UsageStore::isRefreshingChanged);
    lookAtInstallation();
    if (records_) {
        co_await refresh();
    } else if (!isOpening_) {
        start();
    }
    co_await asleep(this, *clock, visibleSeconds);
    set(isRefreshing_, false, &UsageStore::isRefreshingChanged);
}

void UsageStore::lookAtInstallation() {
    if (world_) set(installState_, installer_.state(), &UsageStore::installStateChanged);
}

void UsageStore::installShim() {
    const auto shim = world_ && world_->bundle ? bundledShim(*world_->bundle) : std::nullopt;
    if (!shim) return fail("Shim not found — build the app with Scripts/make-app");
    changeInstallation([&] { installer_.install(*shim, world_->clock->now()); }, "Install failed: ");
}

void UsageStore::uninstallShim() {
    if (!world_) return;
    changeInstallation([&] { installer_.uninstall(); }, "Uninstall failed: ");
}

void UsageStore::changeInstallation(const std::function<void()>& change, const std::string& failureWords) try {
    change();
    set(installState_, installer_.state(), &UsageStore::installStateChanged);
    set(lastError_, {}, &UsageStore::lastErrorChanged);
} catch (const std::exception& error) {
    fail(failureWords + error.what());
}

void UsageStore::refreshNotificationAuthorization() {
    if (!notifier_) return;
    notifier_->refreshAuthorization([this] {
        set(notificationAuthorization_, notifier_->authorization(), &UsageStore::notificationAuthorizationChanged);
    });
}

void UsageStore::sendTestNotification() {
    if (notifier_) notifier_->sendTestNotification(world_->clock->now());
}

template <typename Field>
void UsageStore::set(Field& field, Field value, void (UsageStore::*changed)()) {
    if (field == value) return;
    field = std::move(value);
    emit(this->*changed)();
}

void UsageStore::fail(const std::string& words) {
    set(lastError_, std::optional(words), &UsageStore::lastErrorChanged);
}

} // namespace HarrowlaneApp
