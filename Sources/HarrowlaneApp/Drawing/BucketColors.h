#pragma once

#include "HarrowlaneApp/Copy/ChartBucket.h"
#include "HarrowlaneApp/Drawing/Palette.h"

namespace HarrowlaneApp {

/// The colour in which a family of models shows on charts, in logs and in legends.
[[nodiscard]] const QColor& bucketColor(ChartBucket bucket, Appearance appearance);

} // namespace HarrowlaneApp
