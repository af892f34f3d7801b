#pragma once

#include <QImage>

/// Pictures that show the menu bar image at a range of values, on a dark and on a light bar.
namespace HarrowlaneApp::MeterArt {

/// Every sample at its true size in a row, and enlarged with its values beneath.
[[nodiscard]] QImage sampleStrip();

/// Every sample in a row as it stands in a menu bar, at `scale` pixels a point. Null as `Images::drawn` tells.
[[nodiscard]] QImage menuBarStrip(double scale);

} // namespace HarrowlaneApp::MeterArt
