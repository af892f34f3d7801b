#pragma once

#include <memory>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Alerts/FakeNotificationService.h"
#include "HarrowlaneApp/Store/UsageStore.h"
#include "HarrowlaneApp/Store/UsageStoreFakes.h"
#include "Shim/GaugeWriter.h"
#include "Support/LoggedTurn.h"
#include "Support/TemporaryFolder.h"
#include "UsageModel/Files.h"

namespace HarrowlaneApp {

/// A store with all its real parts, in a home of its own; only the clock is turned by hand, and the banners are kept.
class StoreOnARealHome : public testing::Test {
protected:
    static constexpr UsageModel::Date start{1772323200};

    void open(const UsageModel::Calendar& calendar = UsageModel::Calendar::utc()) {
        store_ = std::make_unique<UsageStore>(UsageStore::World{.paths = paths_,
                                                                .calendar = calendar,
                                                                .clock = clock_,
                                                                .bundle = home_.path() / "Test.app",
                                                                .notifications = service_});
        QObject::connect(store_.get(), &UsageStore::snapshotPublished, [this] { ++published_; });
        service_.answerPermission({.granted = true});
        service_.answerStatus(AuthorizationStatus::authorized);
    }
    void openAndRun() {
        open();
        ASSERT_TRUE(becomes([&] { return published_ > 0 && rests(); }));
    }

    [[nodiscard]] bool rests() const { return clock_->sleepers() == 1; }
    [[nodiscard]] bool isUpToDate() const { return store_->snapshot().generatedAt == clock_->now(); }
    /// Until a run that began after the span is through, or one has failed.
    void runAfter(double seconds) {
        ASSERT_TRUE(becomes([&] { return rests(); }));
        clock_->turn(seconds);
        ASSERT_TRUE(becomes([&] { return rests() && (isUpToDate() || store_->lastError()); }));
        if (!store_->lastError()) runOnceMore();
    }
    /// The gauge may ask for a run at any time: one that was under way when the clock was turned tells its new time,
    /// but may have looked at the logs before. The one behind it has not.
    void runOnceMore() {
        const int before = published_;
        store_->refresh();
        ASSERT_TRUE(becomes([&] { return published_ > before || store_->lastError(); }));
    }

    [[nodiscard]] std::filesystem::path log() const { return paths_.sessionLogs() / "project" / "s.jsonl"; }
    void addTurn() { TestSupport::appendFile(log(), TestSupport::loggedTurn(clock_->now() - 60.0, ++turns_)); }
    [[nodiscard]] std::size_t turnsInSnapshot() const {
        return static_cast<std::size_t>(store_->snapshot().live.turns);
    }
    void writeGauge(double sessionPercent, UsageModel::Date sessionResets) const {
        Shim::storeGauge(
            {.capturedAt = clock_->now().secondsSince1970,
             .source = "statusLine",
             .windows = {{"five_hour", {.usedPercentage = sessionPercent, .resetsAt = sessionResets.secondsSince1970}},
                         {"seven_day",
                          {.usedPercentage = 60.0, .resetsAt = (start + 3.0 * 86400.0).secondsSince1970}}}},
            paths_.gaugeFile());
    }

    TestSupport::TemporaryFolder home_;
    UsageModel::AppPaths paths_{home_.path()};
    std::shared_ptr<HandTurnedClock> clock_ = std::make_shared<HandTurnedClock>(start);
    FakeNotificationService service_;
    int published_ = 0;
    long turns_ = 0;
    std::unique_ptr<UsageStore> store_;
};

} // namespace HarrowlaneApp
