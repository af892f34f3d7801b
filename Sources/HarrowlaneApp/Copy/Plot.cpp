#include "HarrowlaneApp/Copy/Plot.h"

#include <algorithm>
#include <cmath>

namespace HarrowlaneApp {

double Plot::x(UsageModel::Date date) const {
    const double span = windowEnd - windowStart;
    const double share = (date - windowStart) / span;
    // So that a share that is no number comes out as 0 too.
    return panel.x + (span > 0 && share > 0 ? std::min(share, 1.0) : 0.0) * panel.width;
}

double Plot::y(double level) const {
    return panel.bottom() - std::min(level, axisTop) / axisTop * panel.height;
}

double Plot::heldY(double level) const {
    return y(std::isnan(level) ? 0.0 : std::max(level, 0.0));
}

} // namespace HarrowlaneApp
