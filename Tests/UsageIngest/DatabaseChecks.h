#pragma once

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "UsageIngest/SQLiteDB.h"
#include "UsageIngest/TurnLog.h"
#include "UsageModel/Files.h"

namespace TurnLog {

/// What SQLite itself finds in the database: "ok" where it is whole.
inline std::string integrityOf(const std::filesystem::path& database) {
    UsageIngest::SQLiteDB db(database.native());
    auto row = db.prepare("PRAGMA integrity_check;");
    return row.step() ? std::string(row.text(0)) : "nothing said";
}

/// How many rows of each log the cursors promise: a row for each line in front of them.
inline std::map<std::string, long> rowsThatCursorsPromise(const std::filesystem::path& database) {
    UsageIngest::SQLiteDB db(database.native());
    auto row = db.prepare("SELECT path, byte_offset FROM file_cursor WHERE byte_offset > 0;");
    std::map<std::string, long> promised;
    while (row.step()) {
        const std::string log = UsageModel::readWholeFile(row.text(0));
        promised[std::string(row.text(0))] = std::count(log.begin(), log.begin() + row.integer(1), '\n');
    }
    return promised;
}

inline std::map<std::string, long> rowsOfEachLog(const std::filesystem::path& database) {
    UsageIngest::SQLiteDB db(database.native());
    auto row = db.prepare("SELECT file_path, COUNT(*) FROM usage_event GROUP BY file_path;");
    std::map<std::string, long> rows;
    while (row.step()) rows[std::string(row.text(0))] = static_cast<long>(row.integer(1));
    return rows;
}

/// Whatever has happened to the database, it is whole, and its cursors stand where its rows end; returns the turns in
/// it.
inline long expectConsistent(const std::filesystem::path& database) {
    UsageIngest::IngestStore store(database);
    EXPECT_EQ(integrityOf(database), "ok");
    const Counts counts = countsIn(store);
    for (const auto& [turn, count] : counts) EXPECT_EQ(count, 1) << "turn " << turn;
    EXPECT_EQ(rowsOfEachLog(database), rowsThatCursorsPromise(database));
    return static_cast<long>(counts.size());
}

inline void expectCatchesUp(const std::filesystem::path& database, const std::filesystem::path& logs, long lastTurn) {
    UsageIngest::IngestStore store(database);
    syncAll(store, logs);
    EXPECT_EQ(countsIn(store), onceEach(1, lastTurn));
    EXPECT_EQ(integrityOf(database), "ok");
}

enum class SharedMemory { copied, leftOut };

/// Copies the database's files, as far as there are any, from their folder into another one.
inline void copyDatabase(const std::filesystem::path& from, const std::filesystem::path& to,
                         SharedMemory sharedMemory = SharedMemory::copied) {
    if (!std::filesystem::exists(from)) return;
    for (const auto& entry : std::filesystem::directory_iterator(from)) {
        if (sharedMemory == SharedMemory::leftOut && entry.path().native().ends_with("-shm")) continue;
        std::filesystem::copy_file(entry.path(), to / entry.path().filename().native());
    }
}

} // namespace TurnLog
