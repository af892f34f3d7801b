// multiply-turns DATABASE COUNT: adds copies of the turns in a database, each at other times, until there are so many.

#include <cstdio>
#include <exception>
#include <string>

#include "Support/TemporaryTree.h"

int main(int argc, char** argv) try {
    if (argc != 3) {
        std::fputs("usage: multiply-turns DATABASE COUNT\n", stderr);
        return 2;
    }
    Bench::multiplyTurns(argv[1], std::stoul(argv[2]));
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "multiply-turns: %s\n", error.what());
    return 1;
}
