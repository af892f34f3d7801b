#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

/// What an import cannot do without, done as plainly and directly as the libraries allow: the measure for ours.
namespace Bench::Bare {

/// Reads each file whole and gives each of its lines to one simdjson parser. Returns the number of good lines.
std::size_t parseAll(std::span<const std::string> logs);

/// A row of the table of turns.
struct Row {
    double ts = 0.0;
    std::string session;
    std::string file;
    std::string model;
    std::string modelClass;
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheCreation = 0;
    std::int64_t cacheRead = 0;
    std::string effort;
};

/// The turns of a database, in the order in which they were stored.
[[nodiscard]] std::vector<Row> rowsOf(const std::filesystem::path& database);

/// Stores the rows in a new database that has the schema of `like`, in one transaction.
void insertAll(std::span<const Row> rows, const std::filesystem::path& database, const std::filesystem::path& like);

} // namespace Bench::Bare
