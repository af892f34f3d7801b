#include "SampleHome/LogFile.h"

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace SampleHome {

namespace {

constexpr std::size_t bufferSize = std::size_t{1} << 20U;

} // namespace

LogFile::LogFile(std::filesystem::path path) : path_(std::move(path)) {
    std::error_code error;
    std::filesystem::create_directories(path_.parent_path(), error);
    if (error) fail(error.value());
    file_.reset(std::fopen(path_.c_str(), "wb"));
    if (!file_) fail(errno);
    // Our own buffer already holds a megabyte: a second one would only copy.
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
}

std::string& LogFile::beginLine() {
    // Here and not at a line's end, since the last line may yet be torn.
    if (buffer_.size() >= bufferSize) flush();
    lineStart_ = buffer_.size();
    return buffer_;
}

void LogFile::endLine() {
    buffer_ += '\n';
    lineEnd_ = buffer_.size();
    ++lines_;
}

void LogFile::tearLastLine(unsigned perCent) {
    buffer_.resize(lineStart_ + (buffer_.size() - lineStart_) * perCent / 100);
    lineEnd_ = lineStart_;
    --lines_;
}

void LogFile::close() {
    flush();
    if (std::fclose(file_.release()) != 0) fail(errno);
}

void LogFile::flush() {
    if (std::fwrite(buffer_.data(), 1, buffer_.size(), file_.get()) != buffer_.size()) fail(errno);
    written_ += lineEnd_;
    buffer_.clear();
    lineEnd_ = 0;
}

void LogFile::fail(int reason) const {
    throw std::runtime_error("cannot write " + path_.string() + ": " + std::generic_category().message(reason));
}

} // namespace SampleHome
