#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <QCoroTask>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include "HarrowlaneApp/Alerts/NotificationCoordinator.h"
#include "HarrowlaneApp/Copy/Readiness.h"
#include "HarrowlaneApp/Store/Clock.h"
#include "HarrowlaneApp/Store/Records.h"
#include "UsageEngine/Aggregator.h"
#include "UsageGauge/GaugeReader.h"
#include "UsageGauge/GaugeWatcher.h"
#include "UsageGauge/StatusLineInstaller.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/UsageSnapshot.h"

namespace HarrowlaneApp {

/// The one object that the views watch, and the program's main loop: turns logs and gauge into a snapshot, at once,
/// every thirty seconds, at each change of the gauge, and when asked. For the main thread. A field tells of its change
/// by the signal of its name, and only where the new value differs from the old.
class UsageStore : public QObject {
    Q_OBJECT

public:
    /// How long a run rests before the next, and how long the refresh button shows that it works, seconds.
    static constexpr double periodSeconds = 30.0;
    static constexpr double visibleSeconds = 0.35;

    /// What the store lives on.
    struct World {
        UsageModel::AppPaths paths;
        UsageModel::Calendar calendar = UsageModel::Calendar::local();
        std::shared_ptr<Clock> clock = std::make_shared<SystemClock>();
        /// Called on the database's own thread. Throws `std::exception` where the records cannot be opened.
        std::function<std::unique_ptr<Records>(const UsageModel::AppPaths&)> openRecords = HarrowlaneApp::openRecords;
        /// The program's bundle; absent where it runs as a bare executable.
        std::optional<std::filesystem::path> bundle;
        /// Where banners go. Outlives the store.
        NotificationService& notifications;
        /// What the user has set by now; read at each run.
        std::function<AlertSettings()> alertSettings = [] { return AlertSettings(); };
        /// Stands in while there is no reading at all: for pictures.
        bool demoGauge = false;
    };

    /// Starts the loop and the watch on the gauge.
    explicit UsageStore(World world, QObject* parent = nullptr);

    struct Preview {
        UsageModel::UsageSnapshot snapshot;
        UsageGauge::StatusLineInstaller::State installState = UsageGauge::StatusLineInstaller::State::notInstalled;
        Readiness readiness = Readiness::ready;
        std::optional<UsageModel::UsageSnapshot> sample;
    };
    /// A store that shows what it is given, and starts nothing.
    [[nodiscard]] static std::unique_ptr<UsageStore> preview(Preview preview);

    /// Waits for what runs on the other threads. A run that is under way unwinds at once and changes nothing.
    ~UsageStore() override;

    [[nodiscard]] const UsageModel::UsageSnapshot& snapshot() const { return snapshot_; }
    /// The words of the last failure; absent since the last clean run.
    [[nodiscard]] const std::optional<std::string>& lastError() const { return lastError_; }
    [[nodiscard]] Readiness readiness() const { return readiness_; }
    /// Shown instead of `snapshot`.
    [[nodiscard]] const std::optional<UsageModel::UsageSnapshot>& sampleSnapshot() const { return sampleSnapshot_; }
    void setSampleSnapshot(std::optional<UsageModel::UsageSnapshot> sample);
    [[nodiscard]] bool isShowingSample() const { return sampleSnapshot_.has_value(); }
    [[nodiscard]] UsageGauge::StatusLineInstaller::State installState() const { return installState_; }
    /// A refresh that the user asked for is under way.
    [[nodiscard]] bool isRefreshing() const { return isRefreshing_; }

    /// Begins the loop, in the place of one that runs; not before the event loop has a moment, so that what is built
    /// around the store, such as the status item's first image, waits for nothing. Does nothing in a preview.
    void start();
    /// Asks for a run; one that is asked for during a run follows it, however often.
    QCoro::Task<> refresh();
    /// The refresh button: also looks at the installation again, and tries again to open the database.
    QCoro::Task<> refreshNow();

    /// Reads `installState` anew, where another program may have changed Claude Code's settings.
    void lookAtInstallation();
    /// Points Claude Code's status line at the helper in our bundle, and back. What fails stands in `lastError`.
    void installShim();
    void uninstallShim();

    /// Whether banners may be shown, as far as it was asked.
    [[nodiscard]] AuthorizationStatus notificationAuthorization() const { return notificationAuthorization_; }
    /// Asks; the answer comes by `notificationAuthorizationChanged`, where it differs.
    void refreshNotificationAuthorization();
    /// Shows a banner at once, whatever the settings say. Does nothing in a preview.
    void sendTestNotification();

signals:
    void snapshotChanged();
    void lastErrorChanged();
    void readinessChanged();
    void sampleSnapshotChanged();
    void installStateChanged();
    void isRefreshingChanged();
    void notificationAuthorizationChanged();
    /// A run is through, whether or not its snapshot differs.
    void snapshotPublished();
    /// The gauge may have changed. From the watcher's thread.
    void gaugeTouched();

private:
    explicit UsageStore(Preview preview);

    void startGaugeWatch();
    QCoro::Task<> loop(int turn);
    QCoro::Task<> openRecords();
    QCoro::Task<> runRefresh();
    QCoro::Task<> runSteps();
    [[nodiscard]] std::optional<UsageModel::GaugeReading> gaugeForRun();
    void changeInstallation(const std::function<void()>& change, const std::string& failureWords);

    template <typename Field>
    void set(Field& field, Field value, void (UsageStore::*changed)());
    void fail(const std::string& words);

    /// Absent in a preview, as is what is made from it.
    std::optional<World> world_;
    UsageGauge::GaugeReader gaugeReader_;
    UsageGauge::StatusLineInstaller installer_;
    UsageEngine::Aggregator aggregator_;
    std::optional<NotificationCoordinator> notifier_;

    UsageModel::UsageSnapshot snapshot_;
    std::optional<std::string> lastError_;
    Readiness readiness_ = Readiness::warmingUp;
    std::optional<UsageModel::UsageSnapshot> sampleSnapshot_;
    UsageGauge::StatusLineInstaller::State installState_ = UsageGauge::StatusLineInstaller::State::notInstalled;
    AuthorizationStatus notificationAuthorization_ = AuthorizationStatus::notDetermined;
    bool isRefreshing_ = false;
    bool isOpening_ = false;
    bool isRefreshInFlight_ = false;
    bool refreshPending_ = false;
    /// Absent until opened. Shared with a run, which may outlive the store.
    std::shared_ptr<Records> records_;
    std::optional<UsageModel::GaugeReading> lastGoodGauge_;
    std::optional<double> heldSessionCap_;
    /// Counts the loops begun: an older one ends when it wakes.
    int loopTurn_ = 0;
    /// Waits for the event loop's first moment.
    QTimer beginning_;

    /// The only thread that touches the records, and the engine's.
    QThreadPool recordsPool_;
    QThreadPool enginePool_;
    /// Last: its thread calls into all of the above.
    std::optional<UsageGauge::GaugeWatcher> gaugeWatcher_;
};

} // namespace HarrowlaneApp
