#pragma once

#include <array>
#include <string_view>

/// The tables of the record. Times (`ts`, `mtime`, `last_ts`, `resets_at`) are seconds since 1970, sizes and offsets
/// are bytes, counts are tokens; enumerations are stored by their names.
namespace UsageIngest::Schema {

inline constexpr std::array<std::string_view, 4> tableNames{"meta", "file_cursor", "usage_event", "anchor"};
inline constexpr std::array<std::string_view, 2> indexNames{"ix_event_ts", "ix_event_path"};

inline constexpr const char* tables = R"(CREATE TABLE IF NOT EXISTS meta(key TEXT PRIMARY KEY, value TEXT);
CREATE TABLE IF NOT EXISTS file_cursor(
    path TEXT PRIMARY KEY, inode INTEGER, size INTEGER,
    mtime REAL, byte_offset INTEGER, last_ts REAL);
CREATE TABLE IF NOT EXISTS usage_event(
    ts REAL NOT NULL, session_id TEXT, file_path TEXT NOT NULL,
    model TEXT, model_class TEXT,
    input INTEGER, output INTEGER, cache_creation INTEGER, cache_read INTEGER,
    effort TEXT);
CREATE TABLE IF NOT EXISTS anchor(
    ts REAL NOT NULL, source TEXT, window TEXT, kind TEXT,
    used_fraction REAL, resets_at REAL,
    UNIQUE(ts, window, source));
)";

inline constexpr const char* eventIndexes = R"(CREATE INDEX IF NOT EXISTS ix_event_ts ON usage_event(ts);
CREATE INDEX IF NOT EXISTS ix_event_path ON usage_event(file_path);
)";
inline constexpr const char* dropEventIndexes = "DROP INDEX IF EXISTS ix_event_ts; DROP INDEX IF EXISTS ix_event_path;";

} // namespace UsageIngest::Schema
