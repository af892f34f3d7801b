#pragma once

#include <filesystem>
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
/// " (needs a GUI session)" where the image is null; and where the file cannot be written, that, and no half of it is
/// left. Never throws.
void write(const QImage& image, const ImageFile& file);

/// A folder for images, made where it is missing. Where it cannot be made, its files cannot be written either, and say
/// so.
class ImageFolder {
public:
    explicit ImageFolder(std::filesystem::path path);

    /// Writes the image to the file of that name in it; the printed line has the name alone.
    void write(const QImage& image, const std::string& name) const;

private:
    std::filesystem::path path_;
};

} // namespace HarrowlaneApp
