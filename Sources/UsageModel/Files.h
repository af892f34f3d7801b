#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The one seam to the file system: every system call on a user's files that the program makes itself stands here,
/// retried where a signal interrupted it. What fails throws `std::system_error` with the path, unless told otherwise.
namespace UsageModel {

struct FileStat {
    std::int64_t size = 0;
    /// Modification time, seconds since 1970.
    double mtime = 0.0;
    std::int64_t inode = 0;

    friend bool operator==(const FileStat&, const FileStat&) = default;
};

/// Links are followed. All zero where the attributes cannot be read; never throws.
[[nodiscard]] FileStat fileStat(const std::string& path) noexcept;

/// A regular file open for reading; closed when it goes away.
class ReadableFile {
public:
    /// Throws also for a folder, a pipe or a device: reading one might never end.
    explicit ReadableFile(const std::filesystem::path& path);
    ReadableFile(ReadableFile&& other) noexcept : fd_(std::exchange(other.fd_, -1)), path_(std::move(other.path_)) {}
    ReadableFile& operator=(ReadableFile&& other) noexcept {
        std::swap(fd_, other.fd_);
        std::swap(path_, other.path_);
        return *this;
    }
    ~ReadableFile();

    /// Moves to a byte offset, which may lie past the end.
    void seek(std::uint64_t offset);
    /// Reads up to the size of `into`; the count may be less than asked for, and is 0 only at the end of the file.
    [[nodiscard]] std::size_t read(std::span<char> into);

private:
    int fd_ = -1;
    std::filesystem::path path_;
};

[[nodiscard]] std::string readWholeFile(const std::filesystem::path& path);

/// What a descriptor still gives; where reading fails, what it gave until then. Never throws but for want of memory.
[[nodiscard]] std::string readToEnd(int fd);

struct FolderEntry {
    std::string name;
    /// It is itself a folder, not a link to one.
    bool isFolder = false;
};

/// The entries of a folder but "." and "..", in the order the system gives them. Where the folder cannot be read, as
/// many as could be; never throws.
[[nodiscard]] std::vector<FolderEntry> folderEntries(const std::string& folder);

/// Makes the folder and its parents where they are missing, for the owner alone (0700). Existing ones stay as they are.
void createPrivateFolders(const std::filesystem::path& folder);

/// Leaves the owner alone with access: 0700 for a folder, 0600 for a file. Does nothing where that is so already.
void makePrivate(const std::filesystem::path& path);

/// A file that is to be replaced as a whole, by way of a file beside it.
struct FileReplacement {
    std::filesystem::path file;
    /// In the same folder, and used by nobody else; what lies there is removed first. It is gone afterwards.
    std::filesystem::path temporary;
    std::string_view content;
    std::filesystem::perms mode = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    enum class Durability {
        /// Whoever reads the file finds the old content or the new.
        whole,
        /// So they do after a power cut.
        wholeOnDisk,
    };
    Durability durability = Durability::whole;
};

/// Whatever fails, the file is as it was and the temporary one is gone.
void replaceFile(const FileReplacement& replacement);

/// Removes a file; does nothing where there is none.
void removeFile(const std::filesystem::path& path);

/// Makes an empty file of mode 0600 where there is none.
void createPrivateFile(const std::filesystem::path& path);

} // namespace UsageModel
