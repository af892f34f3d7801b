#include "HarrowlaneApp/Soak/ProcessFigures.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <malloc.h>
#include <unistd.h>

namespace HarrowlaneApp {

namespace {

std::int64_t entries(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
}

std::int64_t residentBytes() {
    std::int64_t size = 0;
    std::int64_t resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

} // namespace

ProcessFigures ProcessFigures::now() {
    const struct mallinfo2 info = mallinfo2();
    return {.descriptors = entries("/proc/self/fd"),
            .threads = entries("/proc/self/task"),
            .heap = static_cast<std::int64_t>(info.uordblks + info.hblkhd),
            .resident = residentBytes()};
}

std::ostream& operator<<(std::ostream& stream, const ProcessFigures& figures) {
    return stream << figures.descriptors << " descriptors, " << figures.threads << " threads, heap "
                  << figures.heap / 1024 << " KiB, resident " << figures.resident / 1024 << " KiB";
}

} // namespace HarrowlaneApp
