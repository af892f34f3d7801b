#include "UsageModel/Files.h"

#include <cerrno>
#include <memory>
#include <system_error>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace UsageModel {

namespace {

constexpr mode_t ownersFolder = 0700;
constexpr mode_t ownersFile = 0600;
constexpr mode_t permissionBits = 07777;
constexpr std::size_t wholeFileChunk = 65536;

[[noreturn]] void fail(const char* verb, const std::filesystem::path& path, int error) {
    throw std::system_error(error, std::generic_category(), std::string("cannot ") + verb + " " + path.string());
}

template <typename Call>
auto retried(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool isFolder(const std::string& folder, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
    struct stat attributes {};
    return lstat((folder + '/' + entry.d_name).c_str(), &attributes) == 0 && S_ISDIR(attributes.st_mode);
}

} // namespace

FileStat fileStat(const std::string& path) noexcept {
    struct stat attributes {};
    if (retried([&] { return stat(path.c_str(), &attributes); }) != 0) return {};
    const auto& modified = attributes.st_mtim;
    return {
        .size = attributes.st_size,
        .mtime = static_cast<double>(modified.tv_sec) + static_cast<double>(modified.tv_nsec) * 1e-9,
        .inode = static_cast<std::int64_t>(attributes.st_ino),
    };
}

ReadableFile::ReadableFile(const std::filesystem::path& path) : path_(path) {
    // Without O_NONBLOCK the opening of a pipe that nobody writes to would wait for ever.
    fd_ = retried([&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); });
    if (fd_ == -1) fail("open", path, errno);

    struct stat attributes {};
    const int status = retried([&] { return fstat(fd_, &attributes); });
    const int error = status != 0                   ? errno
                      : S_ISDIR(attributes.st_mode) ? EISDIR
                      : S_ISREG(attributes.st_mode) ? 0
                                                    : EINVAL;
    if (error == 0) return;
    close(std::exchange(fd_, -1));
    fail("read", path, error);
}

ReadableFile::~ReadableFile() {
    if (fd_ != -1) close(fd_);
}

void ReadableFile::seek(std::uint64_t offset) {
    if (lseek(fd_, static_cast<off_t>(offset), SEEK_SET) == -1) fail("seek in", path_, errno);
}

std::size_t ReadableFile::read(std::span<char> into) {
    const ssize_t count = retried([&] { return ::read(fd_, into.data(), into.size()); });
    if (count == -1) fail("read", path_, errno);
    return static_cast<std::size_t>(count);
}

std::string readWholeFile(const std::filesystem::path& path) {
    ReadableFile file(path);
    std::string content;
    std::size_t filled = 0;
    while (true) {
        content.resize(filled + wholeFileChunk);
        const std::size_t count = file.read(std::span(content).subspan(filled));
        filled += count;
        if (count == 0) break;
    }
    content.resize(filled);
    return content;
}

std::string readToEnd(int fd) {
    std::string content;
    std::size_t filled = 0;
    while (true) {
        content.resize(filled + wholeFileChunk);
        const ssize_t count = retried([&] { return ::read(fd, content.data() + filled, wholeFileChunk); });
        if (count <= 0) break;
        filled += static_cast<std::size_t>(count);
    }
    content.resize(filled);
    return content;
}

std::vector<FolderEntry> folderEntries(const std::string& folder) {
    DIR* opened = opendir(folder.c_str());
    while (opened == nullptr && errno == EINTR) opened = opendir(folder.c_str());
    const std::unique_ptr<DIR, FolderCloser> open(opened);
    std::vector<FolderEntry> entries;
    if (!open) return entries;
    while (const dirent* entry = readdir(open.get())) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") continue;
        entries.push_back({.name = std::string(name), .isFolder = isFolder(folder, *entry)});
    }
    return entries;
}

namespace {

// The mask of the process takes bits away from the mode that mkdir is given; the owner's must stay.
bool makeFolder(const std::filesystem::path& folder) {
    return mkdir(folder.c_str(), ownersFolder) == 0 && chmod(folder.c_str(), ownersFolder) == 0;
}

} // namespace

void createPrivateFolders(const std::filesystem::path& folder) {
    if (folder.empty() || makeFolder(folder)) return;
    if (errno == ENOENT && folder.has_parent_path() && folder.parent_path() != folder) {
        createPrivateFolders(folder.parent_path());
        if (makeFolder(folder)) return;
    }
    const int error = errno;
    std::error_code ignored;
    if (!std::filesystem::is_directory(folder, ignored)) fail("create folder", folder, error);
}

void makePrivate(const std::filesystem::path& path) {
    struct stat attributes {};
    if (retried([&] { return stat(path.c_str(), &attributes); }) != 0) fail("read the mode of", path, errno);
    const mode_t wanted = S_ISDIR(attributes.st_mode) ? ownersFolder : ownersFile;
    if ((attributes.st_mode & permissionBits) == wanted) return;
    if (chmod(path.c_str(), wanted) != 0) fail("change the mode of", path, errno);
}

namespace {

void writeAll(int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = retried([&] { return ::write(fd, content.data(), content.size()); });
        if (count == -1) throw std::system_error(errno, std::generic_category());
        content.remove_prefix(static_cast<std::size_t>(count));
    }
}

// Throws without a path, which the caller knows.
void fill(int fd, const FileReplacement& replacement) {
    const auto require = [](int result) {
        if (result != 0) throw std::system_error(errno, std::generic_category());
    };
    // The mask of the process has taken bits away from the mode that the file was opened with.
    require(fchmod(fd, static_cast<mode_t>(replacement.mode)));
    writeAll(fd, replacement.content);
    if (replacement.durability == FileReplacement::Durability::wholeOnDisk) require(retried([&] { return fsync(fd); }));
}

void writeTemporary(const FileReplacement& replacement) {
    // Not to be led elsewhere by a link that somebody has put there.
    removeFile(replacement.temporary);
    const int fd = retried(
        [&] { return open(replacement.temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, ownersFile); });
    if (fd == -1) fail("create", replacement.temporary, errno);
    try {
        fill(fd, replacement);
    } catch (const std::system_error& error) {
        close(fd);
        fail("write", replacement.temporary, error.code().value());
    }
    // Some file systems tell only now that the content could not be stored.
    if (close(fd) != 0 && errno != EINTR) fail("write", replacement.temporary, errno);
}

} // namespace

void replaceFile(const FileReplacement& replacement) {
    try {
        writeTemporary(replacement);
        if (rename(replacement.temporary.c_str(), replacement.file.c_str()) != 0)
            fail("replace", replacement.file, errno);
    } catch (const std::system_error&) {
        unlink(replacement.temporary.c_str());
        throw;
    }
}

void removeFile(const std::filesystem::path& path) {
    if (unlink(path.c_str()) != 0 && errno != ENOENT) fail("remove", path, errno);
}

void createPrivateFile(const std::filesystem::path& path) {
    int fd = retried([&] { return open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, ownersFile); });
    const bool made = fd != -1;
    if (!made && errno == EEXIST)
        fd = retried([&] { return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, ownersFile); });
    if (fd == -1) fail("create", path, errno);
    // The mask of the process may have taken the owner's own bits away.
    const int error = made && fchmod(fd, ownersFile) != 0 ? errno : 0;
    close(fd);
    if (error != 0) fail("change the mode of", path, error);
}

} // namespace UsageModel
