// Any bytes as a file, read from any line start in chunks of any size: the same lines and offset as a naive model.

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

Outcome modelOf(const std::string& content, std::uint64_t start) {
    Outcome outcome{.lines = {}, .end = start};
    std::size_t lineStart = start;
    for (std::size_t i = start; i < content.size(); ++i) {
        if (content[i] != '\n') continue;
        if (i > lineStart) outcome.lines.push_back(content.substr(lineStart, i - lineStart));
        lineStart = i + 1;
        outcome.end = lineStart;
    }
    return outcome;
}

Outcome readingOf(const std::filesystem::path& file, std::uint64_t start, std::int64_t chunkSize) {
    Outcome outcome;
    const UsageIngest::LineTailReader reader{.url = file, .startOffset = start, .chunkSize = chunkSize};
    outcome.end = reader.read([&](std::string_view line) { outcome.lines.emplace_back(line); });
    return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    static const auto file = std::filesystem::temp_directory_path() / ("brindlewick-fuzz-" + std::to_string(getpid()));
    const std::int64_t chunkSize = 1 + data[0] % 64;
    const std::string content(reinterpret_cast<const char*>(data + 2), size - 2);
    std::ofstream(file, std::ios::binary | std::ios::trunc) << content;

    // The second byte chooses one of the line starts.
    std::uint64_t start = 0;
    for (int skip = data[1] % 4; skip > 0; --skip) {
        const auto lineFeed = content.find('\n', start);
        if (lineFeed != std::string::npos) start = lineFeed + 1;
    }
    fuzzCheck(readingOf(file, start, chunkSize) == modelOf(content, start), "the reader agrees with the model");
    return 0;
}
