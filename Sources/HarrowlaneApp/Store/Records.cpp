#include "HarrowlaneApp/Store/Records.h"

namespace HarrowlaneApp {

namespace {

class LoggedRecords : public Records {
public:
    explicit LoggedRecords(const UsageModel::AppPaths& paths) : logs_(paths.sessionLogs()), store_(paths.database()) {}

    UsageIngest::LogFiles discover() override { return logs_.discover(); }
    UsageIngest::SyncStats sync(const UsageIngest::LogFiles& files) override { return store_.sync(files); }
    UsageIngest::EventList allEvents() override { return store_.allEvents(); }
    std::vector<UsageModel::Anchor> anchors() override {
        auto anchors = store_.anchors();
        // The last thing that a run asks for; the next one comes much later.
        store_.releaseMemory();
        return anchors;
    }

private:
    UsageIngest::LogDiscovery logs_;
    UsageIngest::IngestStore store_;
};

} // namespace

std::unique_ptr<Records> openRecords(const UsageModel::AppPaths& paths) {
    return std::make_unique<LoggedRecords>(paths);
}

} // namespace HarrowlaneApp
