#pragma once

#include <array>
#include <string_view>

namespace SampleHome {

/// What the person works on. The folder is "/home/user/<name>".
struct Project {
    std::string_view name;
    std::string_view branch;
    std::string_view slug;
};

inline constexpr std::array<Project, 7> projects{{
    {"orchard", "main", "quiet-humming-otter"},
    {"tidewater-api", "feature/paging", "brisk-folding-heron"},
    {"papertrail", "main", "humble-seeking-lantern"},
    {"gridlock", "fix/läufer-42", "silly-wandering-finch"},
    {"kitchen-sync", "develop", "gentle-baking-cloud"},
    {"atlas-web", "main", "merry-plotting-compass"},
    {"dotfiles", "master", "tidy-sleeping-fern"},
}};

inline constexpr std::array<std::string_view, 12> fileNames{
    "src/reader/tail.cpp", "src/reader/tail.h", "src/store/schema.sql", "web/index.ts",   "web/views/week.tsx",
    "tests/test_tail.py",  "README.md",         "docs/Übersicht.md",    "CMakeLists.txt", "config/default.json",
    "src/lib.rs",          "scripts/release",
};

} // namespace SampleHome
