// Any bytes as a file, read from any line start in chunks of any size: the same lines and offset as a naive model.
// Where holes are passed over, only lines with as many NULs in a row as a chunk has bytes may be missing.

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

#include "FuzzCheck.h"
#include "UsageIngest/LineTailReader.h"

namespace {

struct Outcome {
    std::vector<std::string> lines;
    std::uint64_t end = 0;

    bool operator==(const Outcome&) const = default;
};

using UsageIngest::LineTailReader;

/// Whether a whole chunk of the line is NULs; chunks are counted from where the reading begins.
bool hasHole(const std::string& content, std::size_t lineStart, std::size_t lineEnd, const LineTailReader& reader) {
    const auto chunkSize = static_cast<std::size_t>(reader.chunkSize);
    for (std::size_t chunk = reader.startOffset; chunk + chunkSize <= lineEnd; chunk += chunkSize) {
        if (chunk >= lineStart && content.find_first_not_of('\0', chunk) >= chunk + chunkSize) return true;
    }
    return false;
}

Outcome modelOf(const std::string& content, const LineTailReader& reader) {
    Outcome outcome{.lines = {}, .end = reader.startOffset};
    std::size_t lineStart = reader.startOffset;
    for (std::size_t i = reader.startOffset; i < content.size(); ++i) {
        if (content[i] != '\n') continue;
        const bool isPassedOver =
            reader.holes == LineTailReader::Holes::passedOver && hasHole(content, lineStart, i, reader);
        if (i > lineStart && !isPassedOver) outcome.lines.push_back(content.substr(lineStart, i - lineStart));
        lineStart = i + 1;
        outcome.end = lineStart;
    }
    return outcome;
}

Outcome readingOf(const LineTailReader& reader) {
    Outcome outcome;
    outcome.end = reader.read([&](std::string_view line) { outcome.lines.emplace_back(line); });
    return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    static const auto file = std::filesystem::temp_directory_path() / ("brindlewick-fuzz-" + std::to_string(getpid()));
    const std::string content(reinterpret_cast<const char*>(data + 2), size - 2);
    std::ofstream(file, std::ios::binary | std::ios::trunc) << content;

    // The second byte chooses one of the line starts, and what becomes of holes.
    std::uint64_t start = 0;
    for (int skip = data[1] % 4; skip > 0; --skip) {
        const auto lineFeed = content.find('\n', start);
        if (lineFeed != std::string::npos) start = lineFeed + 1;
    }
    const bool keepsHoles = data[1] / 4 % 2 == 0;
    const LineTailReader reader{
        .url = file,
        .startOffset = start,
        .chunkSize = 1 + data[0] % 64,
        .holes = keepsHoles ? LineTailReader::Holes::kept : LineTailReader::Holes::passedOver,
    };
    fuzzCheck(readingOf(reader) == modelOf(content, reader), "the reader agrees with the model");
    return 0;
}
