#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include <sys/mount.h>

namespace TestSupport {

/// A small file system in memory, laid over a folder, which it makes where it is missing. Needs the right to mount.
class SmallDisk {
public:
    explicit SmallDisk(const std::filesystem::path& where) : where_(where) {
        std::filesystem::create_directories(where);
        mounted_ = mount("tmpfs", where.c_str(), "tmpfs", 0, "size=400k") == 0;
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk() {
        if (mounted_) umount2(where_.c_str(), MNT_DETACH);
    }

    [[nodiscard]] bool isMounted() const { return mounted_; }
    /// Leaves so many bytes for others, in whole pages of 4096, or fewer where there are no more.
    void fill(std::uintmax_t room = 0) const {
        makeRoom();
        const std::string page(4096, 'x');
        std::ofstream file(filler(), std::ios::binary);
        while (file.write(page.data(), static_cast<std::streamsize>(page.size()))) {
        }
        file.close();
        const std::uintmax_t size = std::filesystem::file_size(filler());
        std::filesystem::resize_file(filler(), size - std::min(size, room));
    }
    void makeRoom() const { std::filesystem::remove(filler()); }
    void grow() const { remount(0, "size=64m"); }
    void makeReadOnly() const { remount(MS_RDONLY, ""); }
    void makeWritable() const { remount(0, ""); }

private:
    [[nodiscard]] std::filesystem::path filler() const { return where_ / "filler"; }
    void remount(unsigned long flags, const char* options) const {
        if (mount("tmpfs", where_.c_str(), "tmpfs", MS_REMOUNT | flags, options) != 0)
            throw std::system_error(errno, std::generic_category(), "remount");
    }

    std::filesystem::path where_;
    bool mounted_ = false;
};

/// The half-written files that a full disk may have left below a folder.
inline std::vector<std::filesystem::path> temporaryFilesBelow(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().native().ends_with(".tmp")) found.push_back(entry.path());
    }
    return found;
}

} // namespace TestSupport
