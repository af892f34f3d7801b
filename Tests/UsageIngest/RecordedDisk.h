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

    enum class Lasting { once, forGood };
    /// From now on the n-th write, truncation or sync (from 1) fails, and so do all later ones where it is for good. Of
    /// a write that fails the first half has been written.
    void failAt(std::size_t n, Lasting lasting);
    /// Whether it came to that.
    [[nodiscard]] bool hasFailed() const { return hasFailed_; }
    /// Whether the call that is about to be made fails.
    [[nodiscard]] bool strikes();

    [[nodiscard]] const std::vector<Step>& steps() const { return steps_; }
    void add(Step step) { steps_.push_back(std::move(step)); }

    /// Writes the files into the folder as a disk may hold them that lost its power after so many steps: what was
    /// synced is there. Of what came later each write is there, is not, or is in part, in sectors of 512 bytes; a file
    /// that was never synced may be there or not, as may one that was removed since the folder was last synced.
    void layDown(std::size_t stepsDone, std::mt19937& random, const std::filesystem::path& folder) const;

private:
    std::vector<Step> steps_;
    std::size_t callsToFailure_ = 0;
    Lasting lasting_ = Lasting::once;
    bool hasFailed_ = false;
};
