#pragma once

#include <vector>

#include <QImage>
#include <QString>

class QPainter;

/// The program's icon: two rails across which the clock line stands, drawn at any size.
namespace HarrowlaneApp::IconArt {

/// Draws the icon into a square from the painter's origin on. `coarse` is the form for small sizes, with heavier rails
/// and line, which stand on whole pixels where one unit of the painter is one pixel.
void paint(QPainter& painter, double side, bool coarse);

/// An icon of so many pixels, in the coarse form below 64; null where there are none.
[[nodiscard]] QImage image(int side);

/// A file of an icon set.
struct File {
    QString name;
    int side = 0;
};

/// The files of a set, from the smallest on: 16 to 512 points, at one and at two pixels a point.
[[nodiscard]] std::vector<File> iconset();

} // namespace HarrowlaneApp::IconArt
