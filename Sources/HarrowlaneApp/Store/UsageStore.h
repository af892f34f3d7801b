#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <qcoro/qcorotask.h>

#include "HarrowlaneApp/Alerts/NotificationCoordinator.h"
#include "HarrowlaneApp/Store/Readiness.h"
#include "HarrowlaneApp/Store/Records.h"
#include "UsageEngine/Aggregator.h"
#include "UsageGauge/GaugeReader.h"
#include "UsageGauge/GaugeWatcher.h"
#include "UsageGauge/StatusLineInstaller.h"
#include "UsageModel/AppPaths.h"

namespace HarrowlaneApp {

/// The one object that the views watch: it turns logs and gauge into snapshots, every half minute and whenever the
/// gauge changes. For the main thread; the database and the engine work on threads of their own, and their results come
/// back to the main one in a fixed order. Views read the fields and listen to the signals, each of which tells that its
/// field has another value now.
class UsageStore : public QObject {
    Q_OBJECT

public:
    using InstallState = UsageGauge::StatusLineInstaller::State;

    /// All that the store knows of the world outside of it.
    struct Surroundings {
        UsageModel::AppPaths paths;
        std::function<UsageModel::Date()> clock;
        /// Called on the database's thread; what it throws is shown.
        std::function<std::shared_ptr<Records>()> openRecords;
        /// Called on the engine's thread.
        std::function<UsageModel::UsageSnapshot(const UsageEngine::SnapshotInput&)> engine;
        /// Outlives the store.
        NotificationService& service;
        std::function<AlertSettings()> alertSettings;
        /// The folder of the bundled program; absent for a bare one.
        std::optional<std::filesystem::path> bundle;
        /// Whether a made-up gauge stands in while no real one was read.
        enum class Gauge { real, orDemo } gauge = Gauge::real;
        /// From the end of one run to the begin of the next.
        double periodSeconds = 30.0;
        /// How long a manual refresh shows at least, that it be seen.
        double spinnerSeconds = 0.35;
    };

    /// Those of the real program: its clock, the database and the engine.
    [[nodiscard]] static Surroundings realSurroundings(NotificationService& service);

    /// What a picture is to show.
    struct Preview {
        UsageModel::UsageSnapshot snapshot;
        InstallState installState = InstallState::notInstalled;
        Readiness readiness = Readiness::ready;
        std::optional<UsageModel::UsageSnapshot> sample;
    };

    /// Starts the refreshes and the watch of the gauge. The first run begins with the event loop.
    explicit UsageStore(Surroundings surroundings);
    /// A store that shows what it is given and never refreshes on its own.
    UsageStore(Surroundings surroundings, const Preview& preview);
    /// Waits for work that is under way, and drops what would have come of it.
    ~UsageStore() override;

    [[nodiscard]] const UsageModel::UsageSnapshot& snapshot() const { return snapshot_; }
    /// The last failure's words; absent when the last run was clean.
    [[nodiscard]] const std::optional<std::string>& lastError() const { return lastError_; }
    [[nodiscard]] Readiness readiness() const { return readiness_; }
    /// What the views show instead of the snapshot, when present.
    [[nodiscard]] const std::optional<UsageModel::UsageSnapshot>& sampleSnapshot() const { return sampleSnapshot_; }
    [[nodiscard]] bool isShowingSample() const { return sampleSnapshot_.has_value(); }
    [[nodiscard]] InstallState installState() const { return installState_; }
    /// A manual refresh is under way.
    [[nodiscard]] bool isRefreshing() const { return isRefreshing_; }
    [[nodiscard]] AuthorizationStatus notificationAuthorization() const { return notificationAuthorization_; }

    void setSampleSnapshot(std::optional<UsageModel::UsageSnapshot> sample);

    /// Opens the database where it is not open yet, and begins the refreshes, in place of those begun before. Where it
    /// cannot be opened, none begin.
    void start();
    /// Asks for one run. While one is under way all requests together give one more, and nobody waits for it.
    QCoro::Task<> refresh();
    /// A refresh by hand: also looks at the install state again, and tries to open a database that could not be opened.
    /// Does nothing while another one is under way.
    QCoro::Task<> refreshNow();

    void installShim();
    void uninstallShim();

    /// Asks anew whether banners are allowed.
    void refreshNotificationAuthorization();
    void sendTestNotification() { notifier_.sendTestNotification(surroundings_.clock()); }

signals:
    void snapshotChanged();
    void lastErrorChanged();
    void readinessChanged();
    void sampleSnapshotChanged();
    void installStateChanged();
    void isRefreshingChanged();
    void notificationAuthorizationChanged();
    /// For the store itself: comes from the watcher's thread.
    void gaugeTouched();

private:
    struct NotStarted {};
    UsageStore(Surroundings surroundings, NotStarted);

    QCoro::Task<> loop(int generation);
    QCoro::Task<> open(int generation);
    QCoro::Task<> runRefresh();
    QCoro::Task<> runPipeline();
    QCoro::Task<std::shared_ptr<Records>> opened();
    QCoro::Task<UsageIngest::SyncStats> synced(const std::vector<std::filesystem::path>& files);
    QCoro::Task<UsageIngest::EventList> allEvents();
    QCoro::Task<std::vector<UsageModel::Anchor>> anchors();
    QCoro::Task<UsageModel::UsageSnapshot> computed(const UsageIngest::EventList& events,
                                                    const std::vector<UsageModel::Anchor>& anchors);
    void startGaugeWatch();
    [[nodiscard]] std::optional<UsageModel::GaugeReading> gaugeForRun();
    void publish(const UsageModel::UsageSnapshot& snapshot);
    void change(const char* whatFails, const std::function<void()>& install);

    template <typename T>
    void set(T& field, std::type_identity_t<T> value, void (UsageStore::*changed)());

    Surroundings surroundings_;
    UsageModel::UsageSnapshot snapshot_;
    std::optional<std::string> lastError_;
    Readiness readiness_ = Readiness::warmingUp;
    std::optional<UsageModel::UsageSnapshot> sampleSnapshot_;
    InstallState installState_ = InstallState::notInstalled;
    bool isRefreshing_ = false;
    bool isRefreshInFlight_ = false;
    bool refreshPending_ = false;
    /// Counts the starts: a loop whose number has passed ends.
    int generation_ = 0;
    std::shared_ptr<Records> store_;
    UsageGauge::GaugeReader gaugeReader_;
    UsageGauge::StatusLineInstaller installer_;
    std::optional<UsageModel::GaugeReading> lastGoodGauge_;
    std::optional<double> heldSessionCap_;
    NotificationCoordinator notifier_;
    AuthorizationStatus notificationAuthorization_ = AuthorizationStatus::notDetermined;
    QTimer sleep_;
    /// Of one thread, which alone touches the database.
    QThreadPool storePool_;
    QThreadPool enginePool_;
    std::unique_ptr<UsageGauge::GaugeWatcher> gaugeWatcher_;
};

} // namespace HarrowlaneApp
