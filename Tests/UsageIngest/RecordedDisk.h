#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

/// Keeps what SQLite does to its files, in order, so that the state of the disk after a power cut can be laid down for
/// any moment of it. Connections that are opened in this process until it ends are recorded, and must be closed by
/// then. One at a time.
class RecordedDisk {
public:
    struct Step {
        enum class Kind { write, truncate, sync, remove };
        Kind kind = Kind::write;
        /// The name without its folder.
        std::string file;
        /// Of a write; the new size where the file is truncated.
        std::int64_t offset = 0;
        std::string bytes;
        /// Of a removal: it has reached the disk as the call returns.
        bool durable = false;
    };

    RecordedDisk();
    RecordedDisk(const RecordedDisk&) = delete;
    RecordedDisk& operator=(const RecordedDisk&) = delete;
    ~RecordedDisk() { end(); }

    void end();

    [[nodiscard]] const std::vector<Step>& steps() const { return steps_; }
    void add(Step step) { steps_.push_back(std::move(step)); }

    /// Writes the files into the folder as a disk may hold them that lost its power after so many steps: what was
    /// synced is there. Of what came later each write is there, is not, or is in part, in sectors of 512 bytes; a file
    /// that was removed or never synced may be there or not.
    void layDown(std::size_t stepsDone, std::mt19937& random, const std::filesystem::path& folder) const;

private:
    std::vector<Step> steps_;
};
