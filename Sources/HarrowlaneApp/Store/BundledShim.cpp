#include "HarrowlaneApp/Store/BundledShim.h"

#include <algorithm>
#include <system_error>
#include <vector>

#include "UsageModel/AppPaths.h"

namespace HarrowlaneApp {

namespace {

namespace fs = std::filesystem;
using UsageModel::AppPaths;

std::vector<fs::path> candidates(const fs::path& contents) {
    std::vector<fs::path> places{contents / "Helpers" / AppPaths::shimName};
    for (const auto name : AppPaths::legacyShimNames) places.push_back(contents / "Resources" / name);
    places.push_back(contents / "Resources" / AppPaths::shimName);
    return places;
}

} // namespace

std::optional<fs::path> bundledShimURL(const fs::path& bundle) {
    const std::vector<fs::path> places = candidates(bundle / "Contents");
    const auto found = std::ranges::find_if(places, [](const fs::path& place) {
        std::error_code ignored;
        return fs::is_regular_file(place, ignored);
    });
    if (found == places.end()) return std::nullopt;
    return *found;
}

} // namespace HarrowlaneApp
