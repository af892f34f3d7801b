#pragma once

#include <system_error>

#include <gmock/gmock.h>

#include <sys/stat.h>

#include "Support/TemporaryFolder.h"

namespace UsageModel {

/// The error that a call throws; 0 where it throws none. The words of an error must name `path`.
template <typename Call>
int errorOf(const std::filesystem::path& path, Call call) {
    try {
        call();
    } catch (const std::system_error& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr(path.string()));
        return error.code().value();
    }
    return 0;
}

inline mode_t modeOf(const std::filesystem::path& path) {
    struct stat attributes {};
    if (stat(path.c_str(), &attributes) != 0) throw std::system_error(errno, std::generic_category(), path.string());
    return attributes.st_mode & 07777;
}

class Umask {
public:
    explicit Umask(mode_t mask) : before_(umask(mask)) {}
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;
    ~Umask() { umask(before_); }

private:
    mode_t before_;
};

class FilesTest : public testing::Test {
protected:
    TestSupport::TemporaryFolder folder;
    std::filesystem::path file = folder / "file";
};

} // namespace UsageModel
