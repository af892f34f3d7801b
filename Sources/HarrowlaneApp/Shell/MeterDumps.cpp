#include "HarrowlaneApp/Shell/MeterDumps.h"

#include <filesystem>
#include <system_error>

#include "HarrowlaneApp/Drawing/IconArt.h"
#include "HarrowlaneApp/Drawing/MeterStrips.h"
#include "HarrowlaneApp/Shell/ImageFile.h"

namespace HarrowlaneApp {

void MeterArt::dumpSampleStrip(const std::string& file) {
    write(sampleStrip(), {.path = file, .name = file});
}

void MeterArt::dumpMenuBarStrip(const std::string& file, double scale) {
    write(menuBarStrip(scale), {.path = file, .name = file});
}

void IconArt::dumpIconset(const std::string& folder) {
    // Where the folder cannot be made, the files cannot be written either, and say so.
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    for (const File& file : iconset()) {
        const std::string name = file.name.toStdString();
        write(image(file.side), {.path = (std::filesystem::path(folder) / name).string(), .name = name});
    }
}

} // namespace HarrowlaneApp
