#include "HarrowlaneApp/Shell/MeterDumps.h"

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
    const ImageFolder images(folder);
    for (const File& file : iconset()) images.write(image(file.side), file.name.toStdString());
}

} // namespace HarrowlaneApp
