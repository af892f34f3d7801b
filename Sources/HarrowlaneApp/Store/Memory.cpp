#include "HarrowlaneApp/Store/Memory.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace HarrowlaneApp::Memory {

#ifdef __GLIBC__

void holdLittle() {
    // Left alone, the library raises this bound with the first large block that is freed, and keeps what lies below.
    constexpr int largeBlock = 256 * 1024;
    mallopt(M_MMAP_THRESHOLD, largeBlock);
    // One for the main thread, one for all others: hardly two of them work at a time.
    mallopt(M_ARENA_MAX, 2);
}

void giveBack() {
    malloc_trim(0);
}

#else

void holdLittle() {}
void giveBack() {}

#endif

} // namespace HarrowlaneApp::Memory
