#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include <sqlite3.h>

namespace UsageIngest {

/// Owns one prepared statement of a connection that outlives it; finalises it when it goes away.
/// Parameters are numbered from 1, columns from 0, as in SQLite. What fails throws `SQLiteError`.
class SQLiteStmt {
public:
    SQLiteStmt(sqlite3_stmt* stmt, sqlite3* db) : stmt_(stmt), db_(db) {}
    SQLiteStmt(SQLiteStmt&& other) noexcept : stmt_(std::exchange(other.stmt_, nullptr)), db_(other.db_) {}
    SQLiteStmt& operator=(SQLiteStmt&& other) noexcept {
        std::swap(stmt_, other.stmt_);
        std::swap(db_, other.db_);
        return *this;
    }
    ~SQLiteStmt() { sqlite3_finalize(stmt_); }

    /// Makes the statement ready for another run, with all parameters NULL.
    void reset();

    /// SQLite copies the text at once; it ends at its first NUL.
    void bind(int parameter, const char* text);
    void bind(int parameter, std::int64_t value);
    void bind(int parameter, double value);

    /// True when a row is ready, false when there is no more.
    bool step();
    [[nodiscard]] bool isNull(int column) const;
    /// Empty for NULL. Valid until the next step or reset.
    [[nodiscard]] std::string_view text(int column) const;
    /// 0 for NULL.
    [[nodiscard]] std::int64_t integer(int column) const;
    /// 0 for NULL.
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] std::optional<double> optionalReal(int column) const;

private:
    void requireOk(int code) const;

    sqlite3_stmt* stmt_;
    sqlite3* db_;
};

} // namespace UsageIngest
