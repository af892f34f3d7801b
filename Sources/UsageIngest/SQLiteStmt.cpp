#include "UsageIngest/SQLiteStmt.h"

#include <string>

#include "UsageIngest/SQLiteDB.h"

namespace UsageIngest {

namespace {

constexpr int toFirstNul = -1;

} // namespace

void SQLiteStmt::reset() {
    sqlite3_reset(stmt_);
    sqlite3_clear_bindings(stmt_);
}

void SQLiteStmt::bind(int parameter, const char* text) {
    requireOk(sqlite3_bind_text(stmt_, parameter, text, toFirstNul, SQLITE_TRANSIENT));
}

void SQLiteStmt::bind(int parameter, std::int64_t value) {
    requireOk(sqlite3_bind_int64(stmt_, parameter, value));
}

void SQLiteStmt::bind(int parameter, double value) {
    requireOk(sqlite3_bind_double(stmt_, parameter, value));
}

bool SQLiteStmt::step() {
    const int code = sqlite3_step(stmt_);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    requireOk(code);
    return false;
}

bool SQLiteStmt::isNull(int column) const {
    return sqlite3_column_type(stmt_, column) == SQLITE_NULL;
}

std::string_view SQLiteStmt::text(int column) const {
    const unsigned char* bytes = sqlite3_column_text(stmt_, column);
    if (bytes == nullptr) {
        // A text that is there but cannot be had must not pass for an absent one.
        if (!isNull(column)) requireOk(SQLITE_NOMEM);
        return {};
    }
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(stmt_, column));
    return {reinterpret_cast<const char*>(bytes), length};
}

std::int64_t SQLiteStmt::integer(int column) const {
    return sqlite3_column_int64(stmt_, column);
}

double SQLiteStmt::real(int column) const {
    return sqlite3_column_double(stmt_, column);
}

std::optional<double> SQLiteStmt::optionalReal(int column) const {
    if (isNull(column)) return std::nullopt;
    return real(column);
}

void SQLiteStmt::requireOk(int code) const {
    if (code == SQLITE_OK) return;
    const char* words = db_ != nullptr ? sqlite3_errmsg(db_) : nullptr;
    throw SQLiteError(words != nullptr ? words : "step failed", code);
}

} // namespace UsageIngest
