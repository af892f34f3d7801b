#pragma once

#include <atomic>
#include <mutex>
#include <semaphore>

#include <QCoreApplication>
#include <QTest>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Alerts/FakeNotificationService.h"
#include "HarrowlaneApp/Store/UsageStore.h"
#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {

/// Records in memory, which can be made to wait and to fail. The fields are set while nothing runs.
class FakeRecords final : public Records {
public:
    UsageIngest::SyncStats sync(std::span<const std::filesystem::path> files) override {
        ++syncs;
        if (onSync) onSync();
        filesSeen = files.size();
        return {};
    }
    UsageIngest::EventList allEvents() override {
        return std::make_shared<const std::vector<UsageModel::UsageEvent>>(events);
    }
    std::vector<UsageModel::Anchor> anchors() override {
        if (onAnchors) onAnchors();
        return {};
    }

    std::atomic<int> syncs = 0;
    std::atomic<std::size_t> filesSeen = 0;
    std::function<void()> onSync;
    std::function<void()> onAnchors;
    std::vector<UsageModel::UsageEvent> events;
};

/// An engine that keeps what it was asked.
class FakeEngine {
public:
    struct Question {
        std::size_t events = 0;
        std::optional<UsageModel::GaugeReading> gauge;
        UsageModel::Date now;
        UsageModel::IngestProgress ingest;
        std::optional<double> held;
    };

    UsageModel::UsageSnapshot answer(const UsageEngine::SnapshotInput& input) {
        const std::scoped_lock lock(mutex_);
        questions_.push_back({input.events.size(), input.gauge, input.now, input.ingest, input.heldSessionCap});
        UsageModel::UsageSnapshot snapshot = next_;
        snapshot.generatedAt = input.now;
        return snapshot;
    }
    /// What it answers from now on, but for the time.
    void setNext(const UsageModel::UsageSnapshot& snapshot) {
        const std::scoped_lock lock(mutex_);
        next_ = snapshot;
    }
    [[nodiscard]] std::vector<Question> questions() const {
        const std::scoped_lock lock(mutex_);
        return questions_;
    }
    [[nodiscard]] std::size_t runs() const { return questions().size(); }

private:
    mutable std::mutex mutex_;
    std::vector<Question> questions_;
    UsageModel::UsageSnapshot next_;
};

inline UsageModel::UsageSnapshot withHeadline(const char* headline) {
    UsageModel::UsageSnapshot snapshot;
    snapshot.verdict.headline = headline;
    return snapshot;
}

class StoreFixture : public testing::Test {
protected:
    static void SetUpTestSuite() {
        static int count = 0;
        static const QCoreApplication application(count, nullptr);
    }

    StoreFixture() {
        engine.setNext(withHeadline("computed"));
        // The first save makes the file, which is a change of the watched folder, and gives a run that no test asks
        // for.
        AlertStateFile(stateFile()).save({}, UsageModel::Date{now});
    }

    [[nodiscard]] std::filesystem::path stateFile() const {
        return UsageModel::AppPaths(home.path()).notificationState();
    }

    /// One whose loop runs once, unless the period is made shorter.
    [[nodiscard]] UsageStore::Surroundings surroundings() {
        return {.paths = UsageModel::AppPaths(home.path()),
                .clock = [this] { return UsageModel::Date{now.load()}; },
                .openRecords = [this]() -> std::shared_ptr<Records> {
                    ++opened;
                    if (openError) throw std::runtime_error(openError);
                    return records;
                },
                .engine = [this](const UsageEngine::SnapshotInput& input) { return engine.answer(input); },
                .service = service,
                .alertSettings = [this] { return alertSettings; },
                .bundle = bundle,
                .periodSeconds = 3600,
                .spinnerSeconds = 0.001};
    }
    [[nodiscard]] std::unique_ptr<UsageStore> started() { return std::make_unique<UsageStore>(surroundings()); }
    /// One whose first run is over.
    [[nodiscard]] std::unique_ptr<UsageStore> settled() {
        auto store = started();
        EXPECT_TRUE(eventually([&] { return store->snapshot().verdict.headline == "computed"; }));
        return store;
    }

    /// Lets the event loop run until something holds; false where it does not in good time.
    [[nodiscard]] static bool eventually(const std::function<bool()>& holds) {
        constexpr int patience = 20'000;
        return QTest::qWaitFor(holds, patience);
    }
    /// Does a run from begin to end.
    void run(UsageStore& store) {
        const std::size_t before = engine.runs();
        store.refresh();
        EXPECT_TRUE(eventually([&] { return engine.runs() > before; }));
        letThrough();
    }
    /// Lets what is due happen.
    static void letThrough() {
        for (int i = 0; i < 20; ++i) QTest::qWait(1);
    }
    void writeLog() { TestSupport::writeFile(home / ".claude/projects/p/log.jsonl", ""); }
    void writeGauge(std::string_view content) {
        TestSupport::writeFile(UsageModel::AppPaths(home.path()).gaugeFile(), content);
    }

    TestSupport::TemporaryFolder home;
    std::atomic<double> now = 1790000000.0;
    std::shared_ptr<FakeRecords> records = std::make_shared<FakeRecords>();
    FakeEngine engine;
    FakeNotificationService service;
    AlertSettings alertSettings;
    std::optional<std::filesystem::path> bundle;
    std::atomic<int> opened = 0;
    std::atomic<const char*> openError = nullptr;
};

} // namespace HarrowlaneApp
