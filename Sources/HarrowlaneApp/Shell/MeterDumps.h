#pragma once

#include <string>

/// The jobs that write the meter and the icon as PNG files. Each prints a line a file; none of them fails. Need a
/// QGuiApplication.
namespace HarrowlaneApp {

namespace MeterArt {

/// `MeterArt::sampleStrip`.
void dumpSampleStrip(const std::string& file);
/// `MeterArt::menuBarStrip`; without an image where the scale allows none.
void dumpMenuBarStrip(const std::string& file, double scale);

} // namespace MeterArt

namespace IconArt {

/// Every file of `IconArt::iconset`, into a folder that is made where it is missing.
void dumpIconset(const std::string& folder);

} // namespace IconArt

} // namespace HarrowlaneApp
