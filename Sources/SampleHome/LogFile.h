#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

namespace SampleHome {

/// One log being written, line by line, through a buffer of about a megabyte.
/// Every operation throws std::runtime_error with path and reason when the file cannot be written.
class LogFile {
public:
    /// Creates the file and the folders above it. A file that exists is emptied.
    explicit LogFile(std::filesystem::path path);

    /// The place to append the next line to; valid until endLine.
    std::string& beginLine();

    /// Completes the line with its line feed.
    void endLine();

    /// Cuts the last line, which must be complete, to `perCent` (0 to 99) of its length, as if the writer had been
    /// interrupted in the midst of it. It no longer counts. The file must be closed next.
    void tearLastLine(unsigned perCent);

    /// Writes what is left. Without this call the rest is lost.
    void close();

    /// Size of the complete lines so far.
    [[nodiscard]] std::uint64_t bytes() const { return written_ + lineEnd_; }
    /// Number of complete lines so far.
    [[nodiscard]] std::uint64_t lines() const { return lines_; }

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void flush();
    [[noreturn]] void fail(int reason) const;

    std::filesystem::path path_;
    std::unique_ptr<std::FILE, Closer> file_;
    std::string buffer_;
    std::uint64_t written_ = 0;
    std::uint64_t lines_ = 0;
    std::size_t lineStart_ = 0;
    std::size_t lineEnd_ = 0;
};

} // namespace SampleHome
