#pragma once

#include <filesystem>
#include <optional>

#include "HarrowlaneApp/Alerts/PersistedState.h"
#include "UsageModel/Date.h"

namespace HarrowlaneApp {

/// The file that holds the alerts' state. Whatever goes wrong with it stays unsaid: the worst that can come of a lost
/// state is a banner that comes twice.
class AlertStateFile {
public:
    /// For so long after a failure nothing is tried.
    static constexpr double pauseAfterFailureSeconds = 20.0;

    explicit AlertStateFile(std::filesystem::path url) : url_(std::move(url)) {}

    /// The state as it was saved last; a new one where there is none, or the file holds anything else. A file of before
    /// there were threshold alerts gives its machine, with new thresholds. Never throws but for want of memory.
    [[nodiscard]] PersistedState load() const;

    /// Makes the folder where it is missing and replaces the file as a whole, unless it holds just this state already.
    /// Never throws but for want of memory; a failure leaves the file as it was.
    ///
    /// The folder is watched for a new gauge, and a replaced file is a change of it that asks for the next refresh,
    /// which saves again. If that always replaced the file, or always failed half-way, refreshes would never end.
    void save(const PersistedState& state, UsageModel::Date now);

private:
    void replace(const PersistedState& state) const;

    std::filesystem::path url_;
    std::optional<UsageModel::Date> failedAt_;
};

} // namespace HarrowlaneApp
