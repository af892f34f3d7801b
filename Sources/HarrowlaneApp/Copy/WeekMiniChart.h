#pragma once

#include <optional>
#include <string>

#include "HarrowlaneApp/Copy/Plot.h"
#include "UsageModel/WeekSeries.h"

/// The running total of the week at the size of a card.
namespace HarrowlaneApp::WeekMiniChart {

inline constexpr double padR = 54.0;
inline constexpr double padT = 6.0;
inline constexpr double padB = 4.0;

struct Layout {
    Plot plot;
    /// The height of the limit; absent where it does not fit, and where none is known.
    std::optional<double> limitY;
    Point now;
    /// "105%", beside the end of the forecast; kept below the view's top.
    std::string landingText;
    double landingY = 0.0;

    friend bool operator==(const Layout&, const Layout&) = default;
};

[[nodiscard]] Layout layOut(const UsageModel::WeekSeries& series, const Size& size);

} // namespace HarrowlaneApp::WeekMiniChart
