#pragma once

#include <memory>

#include "HarrowlaneApp/Store/StoreOnARealHome.h"

namespace Pipeline {

/// The whole of the program that works unseen, on a home whose logs and gauge a test writes as its clock goes on.
class RunningProgram : public HarrowlaneApp::StoreOnARealHome {
protected:
    /// From when an instant's logs are written to when the program looks at them.
    static constexpr double delay = 30.0;

    /// Goes to an instant at which the program is at rest. What is written there lies in the past once it looks.
    void arriveAt(UsageModel::Date instant) {
        ASSERT_TRUE(HarrowlaneApp::becomes([&] { return rests(); }));
        clock_->set(instant);
    }
    /// Starts the program, anew where it runs already, in a zone: one that runs stays in its own.
    void startIn(const UsageModel::Calendar& calendar) {
        store_.reset();
        published_ = 0;
        open(calendar);
        QObject::connect(store_.get(), &HarrowlaneApp::UsageStore::snapshotPublished, [this] { seePublished(); });
        ASSERT_TRUE(HarrowlaneApp::becomes([&] { return published_ > 0 && rests(); }));
    }
    /// Called after each run of the program, on whatever grounds.
    virtual void seePublished() {}
    /// What the program tells, `delay` later, of all that is written by now.
    const UsageModel::UsageSnapshot& look() {
        runAfter(delay);
        EXPECT_EQ(store_->lastError(), std::nullopt);
        EXPECT_TRUE(isUpToDate());
        return store_->snapshot();
    }
    /// Ends the program and opens what it has kept.
    [[nodiscard]] std::unique_ptr<HarrowlaneApp::Records> recordsLeft() {
        store_.reset();
        return HarrowlaneApp::openRecords(paths_);
    }
};

} // namespace Pipeline
