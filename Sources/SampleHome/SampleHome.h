#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

/// Makes home folders whose session logs look like those of a person at work: for tests, benchmarks and demonstrations.
namespace SampleHome {

struct Options {
    std::filesystem::path home;       ///< folder to fill; created, with its parents, where it does not exist
    std::uint64_t seed = 1;           ///< another seed is another person
    std::uint64_t bytes = 20'000'000; ///< wished size of all logs together; reached within about one line
    double now = 0;                   ///< seconds since 1970, the end of the history: no line is later
    int days = 60;                    ///< length of the history that ends at `now`, 1 to 3650
    std::size_t files = 0;            ///< wished number of log files, sub-agents' included; 0 is a natural number
};

/// Tokens by billed category, of one turn or summed over many.
struct Tokens {
    std::uint64_t input = 0;
    std::uint64_t output = 0;
    std::uint64_t cacheCreation = 0;
    std::uint64_t cacheRead = 0;

    bool operator==(const Tokens&) const = default;
};

/// What the logs of a home hold. Only complete lines count: the half-written last line of the newest file is in none
/// of these figures, and the logs are longer than `bytes` by just that piece.
struct Summary {
    std::uint64_t files = 0;         ///< log files, sub-agents' included
    std::uint64_t lines = 0;         ///< lines that end in a line feed, empty ones and comments included
    std::uint64_t turns = 0;         ///< billed assistant lines: not synthetic, with at least one token
    std::uint64_t limitMessages = 0; ///< synthetic lines that tell, in recognisable words, that a limit was hit
    std::uint64_t bytes = 0;         ///< size of the complete lines, line feeds included
    Tokens tokens;                   ///< over all `turns`

    bool operator==(const Summary&) const = default;
};

/// The home already has a `.claude`, be it a folder, a file or a link.
class HomeOccupied : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A document as Claude Code hands it to a status line at `now`, with two of the three limits.
std::string statusLineDocument(double now);

/// Writes `<home>/.claude/projects` with one file per session, and those of sub-agents below
/// `<project>/<session>/subagents`. Equal options give the same files, byte for byte; their modification times are
/// the ends of their sessions. Memory does not grow with the size.
/// The natural number of files is one per 400 KB, but about two a day as long as that leaves 40 KB for each. A wished
/// number is lowered where files would be under 4 KB.
/// Throws HomeOccupied, before anything is written, for a home in use; std::runtime_error with path and reason when
/// a file or folder cannot be written, and what was written until then stays; std::invalid_argument for an empty
/// home, days outside their range, or a `now` that lies before 1980 or after 9000.
Summary makeSampleHome(const Options& options);

} // namespace SampleHome
