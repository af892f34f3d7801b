#include "Support/TemporaryTree.h"

#include <cstdlib>
#include <stdexcept>

#include <unistd.h>

#include "SampleHome/SampleHome.h"
#include "UsageIngest/LogDiscovery.h"

namespace Bench {

namespace {

std::filesystem::path newFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "benchmark-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make a folder " + name);
    return name;
}

} // namespace

TemporaryTree::TemporaryTree(const Wish& wish) : folder_(newFolder()) {
    constexpr double now = 1'790'000'000;
    SampleHome::makeSampleHome({.home = folder_ / "home", .bytes = wish.bytes, .now = now, .files = wish.files});
}

TemporaryTree::~TemporaryTree() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::vector<std::filesystem::path> TemporaryTree::logs() const {
    return UsageIngest::LogDiscovery(projects()).discover();
}

void TemporaryTree::forgetImport() const {
    std::filesystem::remove_all(database().parent_path());
}

void shell(const std::string& command, const std::filesystem::path& tree) {
    setenv("TREE", tree.c_str(), 1);
    if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

} // namespace Bench
