#include "UsageIngest/RecordedDisk.h"

#include <algorithm>
#include <map>
#include <new>
#include <span>

#include <sqlite3.h>

#include "Support/TemporaryFolder.h"

namespace {

using Step = RecordedDisk::Step;
using Kind = Step::Kind;

constexpr std::size_t sectorBytes = 512;

RecordedDisk* recording = nullptr;
sqlite3_vfs* system() {
    static sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
    return vfs;
}

/// What SQLite takes for its file; the system's stands right behind it.
struct File {
    sqlite3_file base{};
    /// Empty where the file is not recorded.
    std::string name;

    [[nodiscard]] sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File& ours(sqlite3_file* file) {
    return *reinterpret_cast<File*>(file);
}

sqlite3_file* real(sqlite3_file* file) {
    return ours(file).real();
}

const sqlite3_io_methods& methods(sqlite3_file* file) {
    return *real(file)->pMethods;
}

void record(Step step) {
    if (recording != nullptr && !step.file.empty()) recording->add(std::move(step));
}

int closeFile(sqlite3_file* file) {
    const int result = methods(file).xClose(real(file));
    ours(file).~File();
    return result;
}

bool fails(sqlite3_file* file) {
    return recording != nullptr && !ours(file).name.empty() && recording->strikes();
}

int writeFile(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
    const bool isToFail = fails(file);
    const int written = isToFail ? count / 2 : count;
    record({.kind = Kind::write,
            .file = ours(file).name,
            .offset = offset,
            .bytes = std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(written))});
    const int result = methods(file).xWrite(real(file), bytes, written, offset);
    return isToFail ? SQLITE_IOERR_WRITE : result;
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    if (fails(file)) return SQLITE_IOERR_TRUNCATE;
    record({.kind = Kind::truncate, .file = ours(file).name, .offset = size, .bytes = {}});
    return methods(file).xTruncate(real(file), size);
}

int syncFile(sqlite3_file* file, int flags) {
    if (fails(file)) return SQLITE_IOERR_FSYNC;
    const int result = methods(file).xSync(real(file), flags);
    record({.kind = Kind::sync, .file = ours(file).name, .bytes = {}});
    return result;
}

/// Version 2: without memory maps, through which nothing could be recorded.
const sqlite3_io_methods& recordedMethods() {
    static const sqlite3_io_methods methodsOfOurs = [] {
        sqlite3_io_methods made{};
        made.iVersion = 2;
        made.xClose = closeFile;
        made.xRead = [](sqlite3_file* f, void* into, int n, sqlite3_int64 at) {
            return methods(f).xRead(real(f), into, n, at);
        };
        made.xWrite = writeFile;
        made.xTruncate = truncateFile;
        made.xSync = syncFile;
        made.xFileSize = [](sqlite3_file* f, sqlite3_int64* size) { return methods(f).xFileSize(real(f), size); };
        made.xLock = [](sqlite3_file* f, int level) { return methods(f).xLock(real(f), level); };
        made.xUnlock = [](sqlite3_file* f, int level) { return methods(f).xUnlock(real(f), level); };
        made.xCheckReservedLock = [](sqlite3_file* f, int* held) {
            return methods(f).xCheckReservedLock(real(f), held);
        };
        made.xFileControl = [](sqlite3_file* f, int op, void* arg) {
            return methods(f).xFileControl(real(f), op, arg);
        };
        made.xSectorSize = [](sqlite3_file* f) { return methods(f).xSectorSize(real(f)); };
        made.xDeviceCharacteristics = [](sqlite3_file* f) { return methods(f).xDeviceCharacteristics(real(f)); };
        made.xShmMap = [](sqlite3_file* f, int page, int size, int extend, void volatile** memory) {
            return methods(f).xShmMap(real(f), page, size, extend, memory);
        };
        made.xShmLock = [](sqlite3_file* f, int at, int n, int flags) {
            return methods(f).xShmLock(real(f), at, n, flags);
        };
        made.xShmBarrier = [](sqlite3_file* f) { methods(f).xShmBarrier(real(f)); };
        made.xShmUnmap = [](sqlite3_file* f, int remove) { return methods(f).xShmUnmap(real(f), remove); };
        return made;
    }();
    return methodsOfOurs;
}

std::string nameOf(const char* path) {
    return std::filesystem::path(path).filename().string();
}

int openFile(sqlite3_vfs* /*vfs*/, const char* path, sqlite3_file* file, int flags, int* flagsOut) {
    constexpr int recorded = SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_WAL | SQLITE_OPEN_MAIN_JOURNAL;
    File* const made = new (file) File;
    if (path != nullptr && (flags & recorded) != 0) made->name = nameOf(path);
    const int result = system()->xOpen(system(), path, made->real(), flags, flagsOut);
    // Where SQLite finds no methods it closes nothing.
    if (made->real()->pMethods != nullptr)
        made->base.pMethods = &recordedMethods();
    else
        made->~File();
    return result;
}

int removeFile(sqlite3_vfs* /*vfs*/, const char* path, int syncFolder) {
    const int result = system()->xDelete(system(), path, syncFolder);
    record({.kind = Kind::remove, .file = nameOf(path), .bytes = {}, .durable = syncFolder != 0});
    return result;
}

sqlite3_vfs& recordedSystem() {
    static sqlite3_vfs vfs = [] {
        // All else is the system's own, which asks nothing of the table that it is called through.
        sqlite3_vfs made = *system();
        made.pNext = nullptr;
        made.zName = "recorded";
        made.szOsFile = static_cast<int>(sizeof(File)) + system()->szOsFile;
        made.xOpen = openFile;
        made.xDelete = removeFile;
        return made;
    }();
    return vfs;
}

/// A file as the disk holds it, and what is still on its way there.
struct DiskFile {
    std::string synced;
    std::vector<const Step*> pending;
    bool everSynced = false;
    bool removed = false;
};

void apply(const Step& step, std::size_t bytes, std::string& content) {
    const auto offset = static_cast<std::size_t>(step.offset);
    if (step.kind == Kind::truncate) return content.resize(std::min(content.size(), offset));
    if (content.size() < offset + bytes) content.resize(offset + bytes);
    std::copy_n(step.bytes.begin(), bytes, content.begin() + static_cast<std::ptrdiff_t>(offset));
}

void apply(const Step& step, DiskFile& file) {
    if (step.kind == Kind::remove) {
        if (step.durable) file = {};
        file.removed = true;
        return;
    }
    // A file of that name is made anew.
    if (file.removed) file = {};
    if (step.kind != Kind::sync) return file.pending.push_back(&step);
    for (const Step* pending : file.pending) apply(*pending, pending->bytes.size(), file.synced);
    file.pending.clear();
    file.everSynced = true;
}

bool isDatabase(const std::string& name) {
    return name.ends_with(".db");
}

/// The first sync of a journal that was made anew is one of the folder too: what was removed before stays away.
void apply(const Step& step, std::map<std::string, DiskFile>& files) {
    DiskFile& file = files[step.file];
    const bool syncsFolder = step.kind == Kind::sync && !file.everSynced && !isDatabase(step.file);
    apply(step, file);
    if (!syncsFolder) return;
    std::erase_if(files, [](const auto& other) { return other.second.removed; });
}

std::string afterThePowerCut(const DiskFile& file, std::mt19937& random) {
    std::string content = file.synced;
    const std::size_t keptOfFour = random() % 5; // none of them, all of them, and between
    for (const Step* pending : file.pending) {
        if (random() % 4 >= keptOfFour) continue;
        const std::size_t sectors = pending->bytes.size() / sectorBytes;
        const bool torn = sectors > 0 && keptOfFour < 4 && random() % 4 == 0;
        apply(*pending, torn ? random() % sectors * sectorBytes : pending->bytes.size(), content);
    }
    return content;
}

} // namespace

RecordedDisk::RecordedDisk() {
    system();
    recording = this;
    sqlite3_vfs_register(&recordedSystem(), 1);
}

void RecordedDisk::end() {
    sqlite3_vfs_unregister(&recordedSystem());
    sqlite3_vfs_register(system(), 1);
    recording = nullptr;
}

void RecordedDisk::failAt(std::size_t n, Lasting lasting) {
    callsToFailure_ = n;
    lasting_ = lasting;
    hasFailed_ = false;
}

bool RecordedDisk::strikes() {
    if (hasFailed_) return lasting_ == Lasting::forGood;
    if (callsToFailure_ == 0 || --callsToFailure_ > 0) return false;
    hasFailed_ = true;
    return true;
}

void RecordedDisk::layDown(std::size_t stepsDone, std::mt19937& random, const std::filesystem::path& folder) const {
    std::map<std::string, DiskFile> files;
    for (const Step& step : std::span(steps_).first(stepsDone)) apply(step, files);
    for (const auto& [name, file] : files) {
        const bool mayBeMissing = file.removed || !file.everSynced;
        const bool isGone = file.removed && file.synced.empty();
        if (isGone || (mayBeMissing && random() % 2 == 0)) continue;
        TestSupport::writeFile(folder / name, afterThePowerCut(file, random));
    }
}
