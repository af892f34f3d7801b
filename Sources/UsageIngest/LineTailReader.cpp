#include "UsageIngest/LineTailReader.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <vector>

#include "UsageModel/Files.h"

namespace UsageIngest {

namespace {

/// Bytes read and not yet consumed; the unfinished line stays at the front between two reads.
class LineBuffer {
public:
    explicit LineBuffer(std::size_t chunkSize) : chunkSize_(chunkSize), bytes_(2 * chunkSize) {}

    std::span<char> roomForChunk() {
        if (bytes_.size() - filled_ < chunkSize_) bytes_.resize(2 * bytes_.size());
        return std::span(bytes_).subspan(filled_, chunkSize_);
    }

    /// Hands on the lines that the next `count` bytes complete; returns how many bytes that consumed.
    std::size_t take(std::size_t count, const std::function<void(std::string_view)>& onLine) {
        const char* lineStart = bytes_.data();
        const char* end = bytes_.data() + filled_ + count;
        // Only the new bytes are searched: a line of many chunks would otherwise cost the square of its length.
        const char* searchFrom = bytes_.data() + filled_;
        while (const void* found = std::memchr(searchFrom, '\n', static_cast<std::size_t>(end - searchFrom))) {
            const char* lineFeed = static_cast<const char*>(found);
            if (lineFeed > lineStart) onLine({lineStart, lineFeed});
            lineStart = searchFrom = lineFeed + 1;
        }
        filled_ = static_cast<std::size_t>(end - lineStart);
        if (lineStart != bytes_.data()) std::memmove(bytes_.data(), lineStart, filled_);
        return static_cast<std::size_t>(lineStart - bytes_.data());
    }

private:
    std::size_t chunkSize_;
    std::vector<char> bytes_;
    std::size_t filled_ = 0;
};

} // namespace

std::uint64_t LineTailReader::read(const std::function<void(std::string_view)>& onLine) const {
    UsageModel::ReadableFile file(url);
    file.seek(startOffset);

    LineBuffer buffer(static_cast<std::size_t>(std::max<std::int64_t>(chunkSize, 1)));
    std::uint64_t consumed = startOffset;
    while (const std::size_t count = file.read(buffer.roomForChunk())) consumed += buffer.take(count, onLine);
    return consumed;
}

} // namespace UsageIngest
