#pragma once

#include <filesystem>
#include <optional>

namespace HarrowlaneApp {

/// The status line helper that a bundled program brings along: among its helpers, or among its resources, where former
/// names go first. Absent where there is none of these.
[[nodiscard]] std::optional<std::filesystem::path> bundledShimURL(const std::filesystem::path& bundle);

} // namespace HarrowlaneApp
