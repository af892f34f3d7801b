#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

namespace TestSupport {

/// A fresh folder that goes away, with all that is in it, at the end of the scope.
class TemporaryFolder {
public:
    TemporaryFolder() : TemporaryFolder(std::filesystem::temp_directory_path()) {}
    explicit TemporaryFolder(const std::filesystem::path& parent) {
        std::string pattern = (parent / "brindlewick-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::system_error(errno, std::generic_category(), "mkdtemp");
        path_ = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

/// Where files are cheap: memory, on a system that has such a folder.
inline std::filesystem::path fastestParent() {
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
}

/// Replaces the file's content; makes its folder where it is missing.
inline void writeFile(const std::filesystem::path& path, std::string_view content) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

/// Adds to the file's end; makes the file and its folder where they are missing.
inline void appendFile(const std::filesystem::path& path, std::string_view content) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary | std::ios::app) << content;
}

} // namespace TestSupport
