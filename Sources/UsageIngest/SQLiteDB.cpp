#include "UsageIngest/SQLiteDB.h"

#include <memory>

namespace UsageIngest {

SQLiteError::SQLiteError(std::string message, int code)
    : std::runtime_error("SQLite error " + std::to_string(code) + ": " + message),
      message_(std::move(message)),
      code_(code) {}

SQLiteDB::SQLiteDB(const std::string& path) {
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX;
    const int code = sqlite3_open_v2(path.c_str(), &handle_, flags, nullptr);
    if (code != SQLITE_OK) {
        const std::string message = handle_ != nullptr ? sqlite3_errmsg(handle_) : "open failed";
        sqlite3_close(std::exchange(handle_, nullptr));
        throw SQLiteError(message, code);
    }
    sqlite3_busy_timeout(handle_, busyTimeoutMilliseconds);
}

void SQLiteDB::exec(const std::string& sql) {
    char* words = nullptr;
    const int code = sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, &words);
    const std::unique_ptr<char, decltype(&sqlite3_free)> owned(words, sqlite3_free);
    if (code != SQLITE_OK) throw SQLiteError(words != nullptr ? words : "exec failed", code);
}

SQLiteStmt SQLiteDB::prepare(const std::string& sql) {
    sqlite3_stmt* stmt = nullptr;
    const int code = sqlite3_prepare_v2(handle_, sql.c_str(), -1, &stmt, nullptr);
    if (code != SQLITE_OK || stmt == nullptr) throw SQLiteError(sqlite3_errmsg(handle_), code);
    return {stmt, handle_};
}

Transaction::~Transaction() {
    if (committed_) return;
    sqlite3_exec(db_.handle(), "ROLLBACK;", nullptr, nullptr, nullptr);
}

void Transaction::commit() {
    db_.exec("COMMIT;");
    committed_ = true;
}

} // namespace UsageIngest
