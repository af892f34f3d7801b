#include "HarrowlaneApp/Store/Records.h"

namespace HarrowlaneApp {

namespace {

class DatabaseRecords final : public Records {
public:
    explicit DatabaseRecords(const std::filesystem::path& database) : store_(database) {}

    UsageIngest::SyncStats sync(std::span<const std::filesystem::path> files) override { return store_.sync(files); }
    UsageIngest::EventList allEvents() override { return store_.allEvents(); }
    std::vector<UsageModel::Anchor> anchors() override { return store_.anchors(); }

private:
    UsageIngest::IngestStore store_;
};

} // namespace

std::shared_ptr<Records> openRecords(const std::filesystem::path& database) {
    return std::make_shared<DatabaseRecords>(database);
}

} // namespace HarrowlaneApp
