#include "HarrowlaneApp/Store/BundledShim.h"

#include <vector>

#include "UsageModel/AppPaths.h"

namespace HarrowlaneApp {

namespace fs = std::filesystem;
using UsageModel::AppPaths;

std::optional<fs::path> bundledShim(const fs::path& bundle) {
    const fs::path contents = bundle / "Contents";
    std::vector<fs::path> candidates{contents / "Helpers" / AppPaths::shimName};
    for (const std::string_view name : AppPaths::legacyShimNames) candidates.push_back(contents / "Resources" / name);
    candidates.push_back(contents / "Resources" / AppPaths::shimName);
    for (fs::path& candidate : candidates) {
        std::error_code error;
        if (fs::is_regular_file(candidate, error)) return std::move(candidate);
    }
    return std::nullopt;
}

} // namespace HarrowlaneApp
