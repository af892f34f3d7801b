#pragma once

#include <optional>
#include <string>
#include <vector>

#include "HarrowlaneApp/Copy/WeekChartGeometry.h"

namespace HarrowlaneApp::WeekChart {

/// What lies between the landing and the limit.
struct Wash {
    enum class Kind { unspent, over };

    Kind kind = Kind::over;
    /// The heights of the limit and of the landing.
    double limitY = 0.0;
    double landingY = 0.0;
    /// "36% unspent", "20% over"; absent where the band is too low for it.
    std::optional<std::string> text;
    /// Where the middle of the text stands, for the excess 60 left of the panel's right edge.
    Point textPlace;

    friend bool operator==(const Wash&, const Wash&) = default;
};

/// Absent where the landing lies near the limit, and where no limit is known.
[[nodiscard]] std::optional<Wash> wash(const UsageModel::WeekSeries& series, const Geometry& geometry);

/// Where the likely forecast reaches the limit.
struct CrossingMark {
    Point centre;
    /// "runs out Sun 11:13 PM"
    std::string caption;

    friend bool operator==(const CrossingMark&, const CrossingMark&) = default;
};

/// Absent where the limit is not reached, and where none is known: the words would be a claim.
[[nodiscard]] std::optional<CrossingMark> crossingMark(const UsageModel::WeekSeries& series, const Geometry& geometry,
                                                       const UsageModel::Calendar& calendar);
/// The plate for a caption of the measured size: left above the mark, kept inside the top panel.
[[nodiscard]] Rect captionPlate(const CrossingMark& mark, const Size& text, const Geometry& geometry);

/// A value told at the right edge of the top panel.
struct Readout {
    enum class Role { landing, typical, ghost };

    Role role = Role::landing;
    std::string text;
    /// The height of the value, and the one where the text stands, clear of the others.
    double trueY = 0.0;
    double y = 0.0;

    friend bool operator==(const Readout&, const Readout&) = default;
};

/// In the order of `Role`; spread, at least 15 between any two. `ghostFactor` as the what-if panel has it.
[[nodiscard]] std::vector<Readout> readouts(const UsageModel::WeekSeries& series, const Geometry& geometry,
                                            std::optional<double> ghostFactor);

} // namespace HarrowlaneApp::WeekChart
