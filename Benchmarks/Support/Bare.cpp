#include "Support/Bare.h"

#include <cstring>
#include <fstream>
#include <optional>

#include <simdjson.h>

#include "UsageIngest/SQLiteDB.h"

namespace Bench::Bare {

namespace {

namespace fs = std::filesystem;
using UsageIngest::SQLiteDB;
using UsageIngest::SQLiteStmt;

/// Reads into a buffer that serves file after file, with the room behind the end that simdjson asks for.
std::string_view readWhole(const std::string& file, std::vector<char>& buffer) {
    const std::size_t size = fs::file_size(file);
    if (buffer.size() < size + simdjson::SIMDJSON_PADDING) buffer.resize(size + simdjson::SIMDJSON_PADDING);
    std::ifstream stream;
    stream.rdbuf()->pubsetbuf(nullptr, 0);
    stream.open(file, std::ios::binary);
    stream.read(buffer.data(), static_cast<std::streamsize>(size));
    return {buffer.data(), size};
}

std::size_t parseLines(std::string_view text, simdjson::dom::parser& parser) {
    std::size_t good = 0;
    while (const void* found = std::memchr(text.data(), '\n', text.size())) {
        const auto length = static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
        simdjson::dom::element element;
        if (length > 0 && parser.parse(text.data(), length, false).get(element) == simdjson::SUCCESS) ++good;
        text.remove_prefix(length + 1);
    }
    return good;
}

std::vector<std::string> schemaOf(const fs::path& database) {
    SQLiteDB db(database.native());
    SQLiteStmt rows = db.prepare("SELECT sql FROM sqlite_master WHERE tbl_name='usage_event' AND sql NOT NULL;");
    std::vector<std::string> statements;
    while (rows.step()) statements.emplace_back(rows.text(0));
    return statements;
}

} // namespace

std::size_t parseAll(std::span<const std::string> logs) {
    std::vector<char> buffer;
    simdjson::dom::parser parser;
    std::size_t good = 0;
    for (const std::string& log : logs) good += parseLines(readWhole(log, buffer), parser);
    return good;
}

std::vector<Row> rowsOf(const fs::path& database) {
    SQLiteDB db(database.native());
    SQLiteStmt rows =
        db.prepare("SELECT ts,session_id,file_path,model,model_class,input,output,cache_creation,cache_read,effort\n"
                   "FROM usage_event ORDER BY rowid;");
    std::vector<Row> all;
    while (rows.step()) {
        all.push_back({
            .ts = rows.real(0),
            .session = std::string(rows.text(1)),
            .file = std::string(rows.text(2)),
            .model = std::string(rows.text(3)),
            .modelClass = std::string(rows.text(4)),
            .input = rows.integer(5),
            .output = rows.integer(6),
            .cacheCreation = rows.integer(7),
            .cacheRead = rows.integer(8),
            .effort = std::string(rows.text(9)),
        });
    }
    return all;
}

void insertAll(std::span<const Row> rows, const fs::path& database, const fs::path& like) {
    fs::create_directories(database.parent_path());
    SQLiteDB db(database.native());
    db.exec("PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;");
    for (const std::string& statement : schemaOf(like)) db.exec(statement + ";");
    db.exec("BEGIN;");
    SQLiteStmt insert = db.prepare("INSERT INTO usage_event VALUES(?,?,?,?,?,?,?,?,?,?);");
    for (const Row& row : rows) {
        insert.reset();
        insert.bind(1, row.ts);
        insert.bind(2, row.session.c_str());
        insert.bind(3, row.file.c_str());
        insert.bind(4, row.model.c_str());
        insert.bind(5, row.modelClass.c_str());
        insert.bind(6, row.input);
        insert.bind(7, row.output);
        insert.bind(8, row.cacheCreation);
        insert.bind(9, row.cacheRead);
        if (!row.effort.empty()) insert.bind(10, row.effort.c_str());
        insert.step();
    }
    db.exec("COMMIT;");
}

} // namespace Bench::Bare
