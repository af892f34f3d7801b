#include "UsageIngest/LineTailReader.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <span>
#include <utility>

#include "UsageModel/Files.h"

namespace UsageIngest {

namespace {

bool isHole(std::span<const char> chunk) {
    return !chunk.empty() && chunk.front() == '\0' &&
           std::memcmp(chunk.data(), chunk.data() + 1, chunk.size() - 1) == 0;
}

/// Bytes read and not yet consumed; the unfinished line stays at the front between two reads.
class LineBuffer {
public:
    LineBuffer(std::size_t chunkSize, LineTailReader::Holes holes)
        : chunkSize_(chunkSize),
          holes_(holes),
          size_(2 * chunkSize) {}

    std::span<char> roomForChunk() {
        if (size_ - filled_ < chunkSize_) grow();
        return {bytes_.get() + filled_, chunkSize_};
    }

    /// Hands on the lines that the next `count` bytes complete; returns how many bytes that consumed.
    std::uint64_t take(std::size_t count, const std::function<void(std::string_view)>& onLine) {
        const std::span<const char> chunk(bytes_.get() + filled_, count);
        const bool entersHole = holes_ == LineTailReader::Holes::passedOver && count == chunkSize_ && isHole(chunk);
        filled_ += count;
        const std::uint64_t consumed = handOn(chunk, onLine);
        if (entersHole || passedOver_ > 0) passedOver_ += std::exchange(filled_, 0);
        return consumed;
    }

private:
    // Only the new bytes are searched: a line of many chunks would otherwise cost the square of its length.
    std::uint64_t handOn(std::span<const char> chunk, const std::function<void(std::string_view)>& onLine) {
        const char* lineStart = bytes_.get();
        const char* searchFrom = chunk.data();
        const char* end = chunk.data() + chunk.size();
        std::uint64_t consumed = 0;
        while (const void* found = std::memchr(searchFrom, '\n', static_cast<std::size_t>(end - searchFrom))) {
            const char* lineFeed = static_cast<const char*>(found);
            if (lineFeed > lineStart && passedOver_ == 0) onLine({lineStart, lineFeed});
            consumed += std::exchange(passedOver_, 0);
            lineStart = searchFrom = lineFeed + 1;
        }
        const auto length = static_cast<std::size_t>(lineStart - bytes_.get());
        dropFront(length);
        return consumed + length;
    }

    void dropFront(std::size_t length) {
        filled_ -= length;
        if (length > 0) std::memmove(bytes_.get(), bytes_.get() + length, filled_);
    }

    void grow() {
        size_ *= 2;
        auto larger = std::make_unique_for_overwrite<char[]>(size_);
        std::memcpy(larger.get(), bytes_.get(), filled_);
        bytes_ = std::move(larger);
    }

    std::size_t chunkSize_;
    LineTailReader::Holes holes_;
    std::size_t size_;
    std::size_t filled_ = 0;
    /// Of the unfinished line, which is not kept, where it is not zero.
    std::uint64_t passedOver_ = 0;
    // No vector: to fill it with zeros first would take as long as reading a small file.
    std::unique_ptr<char[]> bytes_ = std::make_unique_for_overwrite<char[]>(size_);
};

} // namespace

std::uint64_t LineTailReader::read(const std::function<void(std::string_view)>& onLine) const {
    UsageModel::ReadableFile file(url);
    file.seek(startOffset);

    LineBuffer buffer(static_cast<std::size_t>(std::max<std::int64_t>(chunkSize, 1)), holes);
    std::uint64_t consumed = startOffset;
    while (const std::size_t count = file.read(buffer.roomForChunk())) consumed += buffer.take(count, onLine);
    return consumed;
}

} // namespace UsageIngest
