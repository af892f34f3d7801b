#include "HarrowlaneApp/Alerts/AlertStateFile.h"

#include <cmath>
#include <string>
#include <system_error>

#include <unistd.h>

#include "UsageModel/Files.h"

namespace HarrowlaneApp {

namespace {

namespace Json = UsageModel::Json;

// A state takes some hundred bytes; whatever is this large is something else, and not worth the memory.
constexpr std::int64_t largestState = 1 << 20;

std::optional<std::string> contentOf(const std::filesystem::path& file) {
    if (UsageModel::fileStat(file).size > largestState) return std::nullopt;
    try {
        return UsageModel::readWholeFile(file);
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

} // namespace

PersistedState AlertStateFile::load() const {
    const auto content = contentOf(url_);
    if (!content) return {};
    if (auto state = Json::decodeText<PersistedState>(*content)) return *std::move(state);
    if (const auto machine = Json::decodeText<UsageEngine::NotificationFSM>(*content)) return {.fsm = *machine};
    return {};
}

void AlertStateFile::save(const PersistedState& state, UsageModel::Date now) {
    // The clock may have been set back since.
    if (failedAt_ && std::abs(now - *failedAt_) < pauseAfterFailureSeconds) return;
    failedAt_.reset();
    try {
        replace(state);
    } catch (const std::system_error&) {
        failedAt_ = now;
    } catch (const Json::Error&) {
        failedAt_ = now;
    }
}

void AlertStateFile::replace(const PersistedState& state) const {
    const std::string content = Json::toText(Json::encode(state));
    if (contentOf(url_) == content) return;
    UsageModel::createPrivateFolders(url_.parent_path());
    std::filesystem::path temporary = url_;
    temporary.concat(".").concat(std::to_string(getpid())).concat(".tmp");
    UsageModel::replaceFile({.file = url_, .temporary = temporary, .content = content});
}

} // namespace HarrowlaneApp
