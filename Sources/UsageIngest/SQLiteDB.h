#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include <sqlite3.h>

#include "UsageIngest/SQLiteStmt.h"

namespace UsageIngest {

/// A failure of SQLite: its own words and result code.
class SQLiteError : public std::runtime_error {
public:
    SQLiteError(std::string message, int code);

    [[nodiscard]] const std::string& message() const { return message_; }
    [[nodiscard]] int code() const { return code_; }
    /// "SQLite error CODE: MESSAGE"; the same as `what()`.
    [[nodiscard]] std::string description() const { return what(); }

private:
    std::string message_;
    int code_;
};

/// Owns one connection and closes it when it goes away. Every operation throws `SQLiteError` where it fails.
class SQLiteDB {
public:
    /// How long an operation waits for a lock that another process holds, in milliseconds, before it fails.
    static constexpr int busyTimeoutMilliseconds = 5000;

    /// Opens for reading and writing and creates the file where it is missing; ":memory:" stands for none.
    /// Nothing is read or written yet.
    explicit SQLiteDB(const std::string& path);
    SQLiteDB(SQLiteDB&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    SQLiteDB& operator=(SQLiteDB&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~SQLiteDB() { sqlite3_close(handle_); }

    [[nodiscard]] sqlite3* handle() const { return handle_; }

    /// Runs statements without results, several at once.
    void exec(const std::string& sql);
    [[nodiscard]] SQLiteStmt prepare(const std::string& sql);

    /// Whether a transaction is open. SQLite ends one by itself where an error leaves it no other way.
    [[nodiscard]] bool inTransaction() const { return sqlite3_get_autocommit(handle_) == 0; }

private:
    sqlite3* handle_ = nullptr;
};

/// Keeps a connection for one thread while it lives. SQLite locks the connection at every call, for every column of
/// every row; a thread that holds it already pays a fraction of that.
class HeldConnection {
public:
    explicit HeldConnection(const SQLiteDB& db) : mutex_(sqlite3_db_mutex(db.handle())) { sqlite3_mutex_enter(mutex_); }
    HeldConnection(const HeldConnection&) = delete;
    HeldConnection& operator=(const HeldConnection&) = delete;
    ~HeldConnection() { sqlite3_mutex_leave(mutex_); }

private:
    sqlite3_mutex* mutex_;
};

/// One write transaction, begun at once so that it cannot fail halfway for another writer's lock. Undone, with any
/// error of that dropped, when it goes away without a commit.
class Transaction {
public:
    explicit Transaction(SQLiteDB& db) : db_(db) { db_.exec("BEGIN IMMEDIATE;"); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void commit();

private:
    SQLiteDB& db_;
    HeldConnection held_{db_};
    bool committed_ = false;
};

} // namespace UsageIngest
