#include <cstdio>

#include <QCoreApplication>

#include "HarrowlaneApp/Platform/ApplicationBundle.h"

// Prints the identifier of the bundle that this program lies in, or "none".
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const auto bundle = HarrowlaneApp::ApplicationBundle::ofThisProcess();
    std::puts(bundle ? bundle->identifier.c_str() : "none");
    return 0;
}
