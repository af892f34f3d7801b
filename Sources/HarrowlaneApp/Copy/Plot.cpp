#include "HarrowlaneApp/Copy/Plot.h"

#include <algorithm>
#include <cmath>

namespace HarrowlaneApp {

double Plot::x(UsageModel::Date date) const {
    const double span = windowEnd - windowStart;
    const double share = span > 0 ? std::clamp((date - windowStart) / span, 0.0, 1.0) : 0.0;
    return panel.x + share * panel.width;
}

double Plot::y(double level) const {
    return panel.bottom() - std::min(level, axisTop) / axisTop * panel.height;
}

double Plot::heldY(double level) const {
    return y(std::isnan(level) ? 0.0 : std::max(level, 0.0));
}

} // namespace HarrowlaneApp
