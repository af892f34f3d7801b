#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "Support/Quoted.h"

namespace TestSupport {

/// Makes a locale, in that folder, that writes a comma in its numbers. Returns the shell's words that set it for a
/// command; absent where it cannot be made.
inline std::optional<std::string> localeWithAComma(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    const std::string file = quoted((folder / "de_DE.UTF-8").string());
    if (std::system(("localedef -i de_DE -f UTF-8 " + file + " >/dev/null 2>&1").c_str()) != 0) return std::nullopt;
    return "LC_ALL=de_DE.UTF-8 LOCPATH=" + quoted(folder.string());
}

} // namespace TestSupport
