#include <iostream>

#include "Conformance/Server.h"

int main() {
    std::ios::sync_with_stdio(false);
    Conformance::serve(Conformance::allOperations(), std::cin, std::cout);
}
