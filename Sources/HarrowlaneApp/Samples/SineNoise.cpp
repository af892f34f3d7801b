#include "HarrowlaneApp/Samples/SineNoise.h"

#include <cmath>

namespace HarrowlaneApp {

double sineNoise(double place) {
    const double large = std::sin(place * 12.9898) * 43758.5453;
    return large - std::floor(large);
}

} // namespace HarrowlaneApp
