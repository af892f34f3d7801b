#include "UsageIngest/LineTailReader.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <span>

#include "UsageModel/Files.h"

namespace UsageIngest {

namespace {

/// Bytes read and not yet consumed; the unfinished line stays at the front between two reads.
class LineBuffer {
public:
    explicit LineBuffer(std::size_t chunkSize) : chunkSize_(chunkSize), size_(2 * chunkSize) {}

    std::span<char> roomForChunk() {
        if (size_ - filled_ < chunkSize_) grow();
        return {bytes_.get() + filled_, chunkSize_};
    }

    /// Hands on the lines that the next `count` bytes complete; returns how many bytes that consumed.
    std::size_t take(std::size_t count, const std::function<void(std::string_view)>& onLine) {
        const char* lineStart = bytes_.get();
        const char* end = bytes_.get() + filled_ + count;
        // Only the new bytes are searched: a line of many chunks would otherwise cost the square of its length.
        const char* searchFrom = bytes_.get() + filled_;
        while (const void* found = std::memchr(searchFrom, '\n', static_cast<std::size_t>(end - searchFrom))) {
            const char* lineFeed = static_cast<const char*>(found);
            if (lineFeed > lineStart) onLine({lineStart, lineFeed});
            lineStart = searchFrom = lineFeed + 1;
        }
        filled_ = static_cast<std::size_t>(end - lineStart);
        if (lineStart != bytes_.get()) std::memmove(bytes_.get(), lineStart, filled_);
        return static_cast<std::size_t>(lineStart - bytes_.get());
    }

private:
    void grow() {
        size_ *= 2;
        auto larger = std::make_unique_for_overwrite<char[]>(size_);
        std::memcpy(larger.get(), bytes_.get(), filled_);
        bytes_ = std::move(larger);
    }

    std::size_t chunkSize_;
    std::size_t size_;
    std::size_t filled_ = 0;
    // No vector: to fill it with zeros first would take as long as reading a small file.
    std::unique_ptr<char[]> bytes_ = std::make_unique_for_overwrite<char[]>(size_);
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
