#include "Report/ForecastLines.h"

#include <algorithm>
#include <string>

#include "Report/Text.h"
#include "UsageEngine/TimeText.h"

namespace Report {

namespace {

using UsageModel::Date;
using UsageModel::Projection;
using UsageModel::WindowState;

namespace TimeText = UsageEngine::TimeText;

bool isWithin(const std::optional<Date>& date, const WindowState& meter) {
    return date && meter.resetsAt && *date < *meter.resetsAt;
}

std::string whenText(const View& view, Date date) {
    return TimeText::shortStamp(date, view.calendar) + ", in " + TimeText::duration(date - view.snapshot.generatedAt);
}

/// Absent where the earliest run-out is no other than the likely one, or comes after the reset.
std::optional<Line> earliestItem(const View& view, const WindowState& meter, const Projection& projection) {
    if (!isWithin(projection.earliestEmpty, meter) || projection.earliestEmpty == projection.likelyEmpty)
        return std::nullopt;
    return Line("at the earliest " + whenText(view, *projection.earliestEmpty), Ink::warning);
}

Line likelyItem(const View& view, const WindowState& meter, const Projection& projection) {
    if (!isWithin(projection.likelyEmpty, meter)) return Line("likely lasts until its reset");
    if (*projection.likelyEmpty <= view.snapshot.generatedAt) return Line("is used up", Ink::critical);
    return Line("likely out " + whenText(view, *projection.likelyEmpty), Ink::critical);
}

Line landingItem(const Projection& projection) {
    return Line("lands at ").add(percentText(projection.endFraction), Ink::strong);
}

std::vector<Line> items(const View& view, const WindowState& meter, const Projection& projection) {
    if (!isGauged(view.snapshot, meter)) return {Line("none without an official reading", Ink::faint)};
    if (!meter.resetsAt) return {Line("none while its reset is not known", Ink::faint)};
    std::vector<Line> items{landingItem(projection), likelyItem(view, meter, projection)};
    if (const auto earliest = earliestItem(view, meter, projection)) items.push_back(*earliest);
    return items;
}

} // namespace

Lines forecastLines(const View& view) {
    Lines lines;
    for (const Projection& projection : view.snapshot.projections) {
        const auto meter = std::ranges::find(view.snapshot.meters, projection.window, &WindowState::kind);
        if (meter == view.snapshot.meters.end()) continue;
        append(lines, named(nameColumn(projection.window), items(view, *meter, projection), view));
    }
    return lines;
}

} // namespace Report
