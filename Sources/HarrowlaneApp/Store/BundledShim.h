#pragma once

#include <filesystem>
#include <optional>

namespace HarrowlaneApp {

/// The status line helper in a bundle: in its place, or, as earlier versions had it, among the resources. Absent where
/// the bundle holds none.
[[nodiscard]] std::optional<std::filesystem::path> bundledShim(const std::filesystem::path& bundle);

} // namespace HarrowlaneApp
