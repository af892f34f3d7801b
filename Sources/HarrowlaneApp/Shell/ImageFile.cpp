#include "HarrowlaneApp/Shell/ImageFile.h"

#include <cstdio>
#include <fstream>
#include <system_error>
#include <utility>

#include <QBuffer>
#include <QByteArray>
#include <QImage>

namespace HarrowlaneApp {

namespace {

// Of PNG's degrees of packing; higher ones take twice the time for a few percent.
constexpr int packing = 80;

QByteArray encoded(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG", packing) ? bytes : QByteArray();
}

/// What is no file of its own, such as a terminal, stays.
void removeHalf(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored)) std::filesystem::remove(path, ignored);
}

bool store(const std::string& path, const QByteArray& bytes) {
    if (bytes.isEmpty()) return false;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file.is_open()) return false;
    file.write(bytes.data(), bytes.size());
    file.close();
    if (file.good()) return true;
    removeHalf(path);
    return false;
}

} // namespace

void write(const QImage& image, const ImageFile& file) {
    if (image.isNull()) {
        std::printf("no image for %s (needs a GUI session)\n", file.name.c_str());
    } else if (store(file.path, encoded(image))) {
        std::printf("wrote %s\n", file.name.c_str());
    } else {
        std::printf("could not write %s\n", file.name.c_str());
    }
}

ImageFolder::ImageFolder(std::filesystem::path path) : path_(std::move(path)) {
    std::error_code ignored;
    std::filesystem::create_directories(path_, ignored);
}

void ImageFolder::write(const QImage& image, const std::string& name) const {
    HarrowlaneApp::write(image, {.path = (path_ / name).string(), .name = name});
}

} // namespace HarrowlaneApp
