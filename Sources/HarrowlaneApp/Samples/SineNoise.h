#pragma once

namespace HarrowlaneApp {

/// A number from 0 up to 1 that looks drawn by lot, and is always the same for the same place.
[[nodiscard]] double sineNoise(double place);

} // namespace HarrowlaneApp
