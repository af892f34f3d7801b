#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

namespace UsageIngest {

/// Reads one file from a byte offset to its last complete line.
struct LineTailReader {
    std::filesystem::path url;
    /// Where to begin, in bytes; must be the start of a line.
    std::uint64_t startOffset = 0;
    /// Bytes asked of the file per read; at least 1.
    std::int64_t chunkSize = 262144;
    enum class Holes {
        kept,
        /// A line is passed over, and takes no memory, from where a whole chunk of it is NULs: as the hole of a sparse
        /// file reads, which takes no room on the disk. Such a line is no JSON.
        passedOver,
    };
    Holes holes = Holes::kept;

    /// Calls `onLine` with each complete, non-empty line, without its line feed, and returns the offset of the first
    /// byte not consumed: the one behind the last line feed, or `startOffset` where there is none. The bytes handed
    /// over are the reader's own and valid during the call only. A line feed is the only line end; a line may be of
    /// any length. Throws `std::system_error` where the file cannot be opened, sought or read, and whatever `onLine`
    /// throws.
    std::uint64_t read(const std::function<void(std::string_view)>& onLine) const;
};

} // namespace UsageIngest
