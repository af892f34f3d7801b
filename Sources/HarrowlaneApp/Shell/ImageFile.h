#pragma once

#include <string>

class QImage;

namespace HarrowlaneApp {

/// Where an image is to be written, and what the terminal is told of it.
struct ImageFile {
    /// Taken unchanged.
    std::string path;
    /// Its name in the printed line.
    std::string name;
};

/// Writes the image as a PNG file and prints one line: "wrote " and the name; "no image for ", the name and
/// " (needs a GUI session)" where the image is null; and where the file cannot be written, that. Never throws.
void write(const QImage& image, const ImageFile& file);

} // namespace HarrowlaneApp
