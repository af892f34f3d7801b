#include "UsageIngest/FaultPoints.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstring>
#include <mutex>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using FaultPoints::Lasting;
using FaultPoints::Layer;

struct State {
    bool armed = false;
    Layer layer = Layer::systemCall;
    Lasting lasting = Lasting::once;
    long remaining = 0;
    int error = EIO;
    bool struck = false;
    std::string sql;
    long stepsToKill = 0;
    bool interrupting = false;
    bool interruptNext = true;
    long logsOpened = 0;
} state;
std::mutex stateMutex; // a sync reads on a second thread

bool strikes(Layer layer, const char* sql = nullptr) {
    const std::lock_guard lock(stateMutex);
    if (!state.armed || layer != state.layer) return false;
    if (state.struck) return state.lasting == Lasting::forGood;
    if (--state.remaining > 0) return false;
    state.struck = true;
    if (sql != nullptr) state.sql = sql;
    return true;
}

bool systemCallFails() {
    if (!strikes(Layer::systemCall)) return false;
    errno = state.error;
    return true;
}

// Every other call is interrupted, so that each succeeds when it is tried again.
bool isInterrupted() {
    const std::lock_guard lock(stateMutex);
    if (!state.interrupting) return false;
    state.interruptNext = !state.interruptNext;
    if (state.interruptNext) return false;
    errno = EINTR;
    return true;
}

std::size_t atMostAFew(std::size_t count) {
    constexpr std::size_t few = 7;
    return state.interrupting ? std::min(count, few) : count;
}

} // namespace

extern "C" {

int __real_open(const char*, int, ...);
ssize_t __real_read(int, void*, size_t);
off_t __real_lseek(int, off_t, int);
int __real_fstat(int, struct stat*);
int __real_stat(const char*, struct stat*);
DIR* __real_opendir(const char*);
struct dirent* __real_readdir(DIR*);
int __real_mkdir(const char*, mode_t);
int __real_chmod(const char*, mode_t);
int __real_fchmod(int, mode_t);

int __wrap_open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (systemCallFails() || isInterrupted()) return -1;
    if (std::string_view(path).ends_with(".jsonl")) ++state.logsOpened;
    return __real_open(path, flags, mode);
}
ssize_t __wrap_read(int fd, void* into, size_t count) {
    return systemCallFails() || isInterrupted() ? -1 : __real_read(fd, into, atMostAFew(count));
}
off_t __wrap_lseek(int fd, off_t offset, int whence) {
    return systemCallFails() ? -1 : __real_lseek(fd, offset, whence);
}
int __wrap_fstat(int fd, struct stat* into) {
    return systemCallFails() ? -1 : __real_fstat(fd, into);
}
int __wrap_stat(const char* path, struct stat* into) {
    return systemCallFails() || isInterrupted() ? -1 : __real_stat(path, into);
}
DIR* __wrap_opendir(const char* path) {
    return systemCallFails() || isInterrupted() ? nullptr : __real_opendir(path);
}
struct dirent* __wrap_readdir(DIR* folder) {
    return systemCallFails() ? nullptr : __real_readdir(folder);
}
int __wrap_mkdir(const char* path, mode_t mode) {
    return systemCallFails() ? -1 : __real_mkdir(path, mode);
}
int __wrap_chmod(const char* path, mode_t mode) {
    return systemCallFails() ? -1 : __real_chmod(path, mode);
}
int __wrap_fchmod(int fd, mode_t mode) {
    return systemCallFails() ? -1 : __real_fchmod(fd, mode);
}

int __real_sqlite3_open_v2(const char*, sqlite3**, int, const char*);
int __real_sqlite3_exec(sqlite3*, const char*, int (*)(void*, int, char**, char**), void*, char**);
int __real_sqlite3_prepare_v2(sqlite3*, const char*, int, sqlite3_stmt**, const char**);
int __real_sqlite3_step(sqlite3_stmt*);
int __real_sqlite3_bind_text(sqlite3_stmt*, int, const char*, int, void (*)(void*));
int __real_sqlite3_bind_int64(sqlite3_stmt*, int, sqlite3_int64);
int __real_sqlite3_bind_double(sqlite3_stmt*, int, double);
int __real_sqlite3_busy_timeout(sqlite3*, int);

int __wrap_sqlite3_open_v2(const char* path, sqlite3** into, int flags, const char* vfs) {
    if (!strikes(Layer::sqliteCall)) return __real_sqlite3_open_v2(path, into, flags, vfs);
    *into = nullptr;
    return SQLITE_IOERR;
}
int __wrap_sqlite3_exec(sqlite3* db, const char* sql, int (*callback)(void*, int, char**, char**), void* context,
                        char** words) {
    return strikes(Layer::sqliteCall, sql) ? SQLITE_IOERR : __real_sqlite3_exec(db, sql, callback, context, words);
}
int __wrap_sqlite3_prepare_v2(sqlite3* db, const char* sql, int length, sqlite3_stmt** into, const char** tail) {
    return strikes(Layer::sqliteCall, sql) ? SQLITE_IOERR : __real_sqlite3_prepare_v2(db, sql, length, into, tail);
}
int __wrap_sqlite3_step(sqlite3_stmt* stmt) {
    if (state.stepsToKill > 0 && --state.stepsToKill == 0) raise(SIGKILL);
    return strikes(Layer::sqliteCall, sqlite3_sql(stmt)) ? SQLITE_IOERR : __real_sqlite3_step(stmt);
}
int __wrap_sqlite3_bind_text(sqlite3_stmt* stmt, int i, const char* text, int length, void (*destructor)(void*)) {
    // A failed binding ends the run, whatever the statement: it is told from a failed step by having no SQL.
    return strikes(Layer::sqliteCall) ? SQLITE_NOMEM : __real_sqlite3_bind_text(stmt, i, text, length, destructor);
}
int __wrap_sqlite3_bind_int64(sqlite3_stmt* stmt, int i, sqlite3_int64 value) {
    return strikes(Layer::sqliteCall) ? SQLITE_NOMEM : __real_sqlite3_bind_int64(stmt, i, value);
}
int __wrap_sqlite3_bind_double(sqlite3_stmt* stmt, int i, double value) {
    return strikes(Layer::sqliteCall) ? SQLITE_NOMEM : __real_sqlite3_bind_double(stmt, i, value);
}
int __wrap_sqlite3_busy_timeout(sqlite3* db, int milliseconds) {
    return __real_sqlite3_busy_timeout(db, milliseconds);
}

} // extern "C"

namespace {

// SQLite's own system calls. It retries these where they were interrupted, and goes on after short reads and writes.

int sqliteOpen(const char* path, int flags, int mode) {
    return systemCallFails() || isInterrupted() ? -1 : __real_open(path, flags, mode);
}
int sqliteAccess(const char* path, int mode) {
    return systemCallFails() ? -1 : access(path, mode);
}
int sqliteStat(const char* path, struct stat* into) {
    return systemCallFails() ? -1 : __real_stat(path, into);
}
int sqliteFstat(int fd, struct stat* into) {
    return systemCallFails() ? -1 : __real_fstat(fd, into);
}
int sqliteFtruncate(int fd, off_t size) {
    return systemCallFails() || isInterrupted() ? -1 : ftruncate(fd, size);
}
int sqliteFcntl(int fd, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    return systemCallFails() ? -1 : fcntl(fd, command, argument);
}
ssize_t sqlitePread(int fd, void* into, size_t count, off_t offset) {
    return systemCallFails() || isInterrupted() ? -1
                                                : pread(fd, into, state.interrupting ? (count + 1) / 2 : count, offset);
}
ssize_t sqlitePwrite(int fd, const void* from, size_t count, off_t offset) {
    return systemCallFails() || isInterrupted()
               ? -1
               : pwrite(fd, from, state.interrupting ? (count + 1) / 2 : count, offset);
}
ssize_t sqliteRead(int fd, void* into, size_t count) {
    return systemCallFails() || isInterrupted() ? -1 : __real_read(fd, into, count);
}
ssize_t sqliteWrite(int fd, const void* from, size_t count) {
    return systemCallFails() || isInterrupted() ? -1 : write(fd, from, count);
}
void* sqliteMmap(void* address, size_t length, int protection, int flags, int fd, off_t offset) {
    return systemCallFails() ? MAP_FAILED : mmap(address, length, protection, flags, fd, offset);
}
int sqliteUnlink(const char* path) {
    return systemCallFails() ? -1 : unlink(path);
}

// SQLite tries locks again for seconds before it gives up; a lock that always fails need not be waited for.
int sleepNot(sqlite3_vfs*, int microseconds) {
    return microseconds;
}

template <typename Function>
void replace(const char* name, Function function) {
    sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
    const auto pointer = reinterpret_cast<sqlite3_syscall_ptr>(function);
    // A name that this build of SQLite does not use has no call to replace.
    if (vfs->xGetSystemCall(vfs, name) != nullptr) vfs->xSetSystemCall(vfs, name, pointer);
}

[[maybe_unused]] const bool replaced = [] {
    sqlite3_initialize();
    replace("open", sqliteOpen);
    replace("access", sqliteAccess);
    replace("stat", sqliteStat);
    replace("fstat", sqliteFstat);
    replace("ftruncate", sqliteFtruncate);
    replace("fcntl", sqliteFcntl);
    replace("read", sqliteRead);
    replace("pread", sqlitePread);
    replace("pread64", sqlitePread);
    replace("write", sqliteWrite);
    replace("pwrite", sqlitePwrite);
    replace("pwrite64", sqlitePwrite);
    replace("mmap", sqliteMmap);
    replace("unlink", sqliteUnlink);
    return true;
}();

} // namespace

namespace FaultPoints {

void failAt(Layer layer, long n, Lasting lasting, int error) {
    state.armed = true;
    state.layer = layer;
    state.remaining = n;
    state.lasting = lasting;
    state.error = error;
    state.struck = false;
    sqlite3_vfs_find(nullptr)->xSleep = sleepNot;
}

void killAtStep(long n) {
    state.stepsToKill = n;
}

void interruptEverything() {
    state.interrupting = true;
}

bool struck() {
    return state.struck;
}

std::string struckSql() {
    return state.sql;
}

long logsOpened() {
    return state.logsOpened;
}

} // namespace FaultPoints
