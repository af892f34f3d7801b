#pragma once

#include <atomic>
#include <memory>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Alerts/FakeNotificationService.h"
#include "HarrowlaneApp/Store/UsageStore.h"
#include "HarrowlaneApp/Store/UsageStoreFakes.h"
#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {

/// A store on fakes, in a home of its own.
class StoreOnFakes : public testing::Test {
protected:
    static constexpr UsageModel::Date start{1772323200};

    UsageStore& open() {
        store_ = std::make_unique<UsageStore>(world());
        connect();
        return *store_;
    }

    UsageStore::World world() {
        return {.paths = paths_,
                .calendar = UsageModel::Calendar::utc(),
                .clock = clock_,
                .openRecords = [this](const UsageModel::AppPaths&) -> std::unique_ptr<Records> {
                    ++openings_;
                    if (!openFailure_.empty()) throw std::runtime_error(openFailure_);
                    return std::make_unique<FakeRecords>(shelf_);
                },
                .bundle = home_.path() / "Test.app",
                .notifications = service_,
                .alertSettings = [this] { return settings_; }};
    }

    void connect() {
        QObject::connect(store_.get(), &UsageStore::snapshotPublished, [this] { ++published_; });
    }

    [[nodiscard]] testing::AssertionResult runs(int count) {
        if (becomes([&] { return published_ == count; })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << published_ << " runs";
    }

    void writeGauge(double percent) const {
        TestSupport::writeFile(paths_.gaugeFile(), R"({"capturedAt":)" + std::to_string(start.secondsSince1970 - 60.0) +
                                                       R"(,"source":"statusline","windows":{"five_hour":)" +
                                                       R"({"usedPercentage":)" + std::to_string(percent) +
                                                       R"(,"resetsAt":1772330000}}})");
    }

    /// The identifiers of the banners that tell of a level, not of the pace.
    [[nodiscard]] std::vector<std::string> levelBanners() const {
        std::vector<std::string> identifiers;
        for (const Banner& banner : service_.posted) {
            if (banner.identifier.starts_with("hwl-level-")) identifiers.push_back(banner.identifier);
        }
        return identifiers;
    }

    TestSupport::TemporaryFolder home_;
    UsageModel::AppPaths paths_{home_.path()};
    std::shared_ptr<HandTurnedClock> clock_ = std::make_shared<HandTurnedClock>(start);
    std::shared_ptr<FakeRecords::Shelf> shelf_ = std::make_shared<FakeRecords::Shelf>();
    std::string openFailure_;
    FakeNotificationService service_;
    AlertSettings settings_;
    std::atomic<int> openings_ = 0;
    int published_ = 0;
    std::unique_ptr<UsageStore> store_;
};

} // namespace HarrowlaneApp
