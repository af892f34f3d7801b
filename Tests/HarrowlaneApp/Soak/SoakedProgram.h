#pragma once

#include <memory>
#include <ostream>
#include <random>

#include "HarrowlaneApp/Platform/Fakes.h"
#include "HarrowlaneApp/Platform/Linux/BusNotificationService.h"
#include "HarrowlaneApp/Platform/Linux/LinuxStatusItem.h"
#include "HarrowlaneApp/Platform/Linux/PanelSide.h"
#include "HarrowlaneApp/Shell/HarrowlaneApp.h"
#include "HarrowlaneApp/Store/UsageStoreFakes.h"

namespace HarrowlaneApp {

/// The whole program in a home of its own, with a panel and a notification service that come and go, and somebody at
/// work in Claude Code. Only its clock is turned by hand.
class SoakedProgram {
public:
    /// Two weeks of work lie behind it.
    explicit SoakedProgram(unsigned seed);

    /// Thirty seconds: the gauge is written ten times in each of them, a turn is logged, something may come or go, and
    /// the program refreshes. False where it does not.
    [[nodiscard]] bool liveOnePeriod();

    /// What another start of the program makes of the home as it is; all that it is told is the session cap, which a
    /// running one keeps once it has learnt it.
    [[nodiscard]] UsageModel::UsageSnapshot seenAfresh();
    /// Logs a turn and writes the gauge, and leaves it to the watch on the gauge that this is seen.
    void changeBetweenRefreshes();
    [[nodiscard]] UsageStore& store() { return program_->store(); }

    void openWindows();
    /// Puts panel and notification service up, and waits until the item is shown there.
    [[nodiscard]] bool bringDesktopBack();
    [[nodiscard]] bool panelShowsSnapshot();

    /// What has happened so far.
    struct Tally {
        long turns = 0;
        long gauges = 0;
        long tornGauges = 0;
        long panels = 0;
        long services = 0;
        long banners = 0;
        long refreshes = 0;
        long errors = 0;
    };
    [[nodiscard]] const Tally& tally() const { return tally_; }

private:
    void logTurn(UsageModel::Date at);
    void writeGauge(UsageModel::Date at);
    void comeAndGo();
    void restartPanel();
    void restartService();
    void useWindows();
    [[nodiscard]] bool refreshes();
    [[nodiscard]] bool chance(double probability);

    TestSupport::TemporaryFolder home_{TestSupport::fastestParent()};
    UsageModel::AppPaths paths_{home_.path()};
    std::mt19937 random_;
    Tally tally_;
    std::shared_ptr<HandTurnedClock> clock_ = std::make_shared<HandTurnedClock>(UsageModel::Date{1772323200});

    PrivateBus bus_;
    QDBusConnection desktop_ = bus_.connect();
    std::unique_ptr<StubWatcher> panel_;
    std::unique_ptr<StubService> service_;
    LinuxStatusItem item_{bus_.connect()};
    BusNotificationService notifications_{bus_.connect()};
    FakePreferences preferences_;
    FakeDesktopAppearance appearance_;
    FakeAutostart autostart_;
    std::unique_ptr<HarrowlaneApp> program_;
};

std::ostream& operator<<(std::ostream& stream, const SoakedProgram::Tally& tally);

} // namespace HarrowlaneApp
