#include "Report/WindowLines.h"

#include <algorithm>
#include <string>

#include "HarrowlaneApp/Copy/Pace.h"
#include "Report/Bar.h"
#include "Report/Text.h"
#include "UsageEngine/TimeText.h"

namespace Report {

namespace {

using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;
using UsageModel::WindowState;

namespace Pace = HarrowlaneApp::Pace;
namespace TimeText = UsageEngine::TimeText;

constexpr std::string_view gap = "  ";

Pace::Status paceOf(const WindowState& meter) {
    return Pace::status({.tokensUsed = meter.used, .timeUsed = meter.elapsedFraction});
}

Line barOf(const View& view, const WindowState& meter, std::size_t columns) {
    const Ink hot = inkOf(paceOf(meter).severity);
    return drawn({
        .columns = columns,
        .filled = isGauged(view.snapshot, meter) ? meter.used : 0.0,
        .ink = meter.used >= 1 ? Ink::critical : Ink::good,
        .mark = meter.elapsedFraction,
        .beyondMark = meter.used >= 1 ? Ink::critical : hot,
    });
}

/// Percent and pace, in the same columns for every window.
Line figures(const View& view, const WindowState& meter) {
    constexpr std::size_t percentColumns = 5;
    constexpr std::size_t paceColumns = 15;
    if (!isGauged(view.snapshot, meter))
        return Line(rightAligned("?", percentColumns)).add(padded("", gap.size() + paceColumns));
    const std::string percent = (meter.confidence.anchored ? "" : "≈") + percentText(meter.used);
    const Pace::Status pace = paceOf(meter);
    return Line(rightAligned(percent, percentColumns), Ink::strong)
        .add(gap)
        .add(padded(Pace::ratioText(pace.ratio) + " " + pace.label, paceColumns), inkOf(pace.severity));
}

/// Only the official edges of a window are certain.
bool isEstimated(const UsageSnapshot& snapshot, const WindowState& meter) {
    return meter.kind == WindowKind::weeklyAll && snapshot.weekSeries && snapshot.weekSeries->boundaryEstimated;
}

Line resetItem(const View& view, const WindowState& meter) {
    if (!meter.resetsAt) return Line("reset not known");
    const std::string about = isEstimated(view.snapshot, meter) ? "~" : "";
    return Line("resets in " + about + TimeText::duration(*meter.resetsAt - view.snapshot.generatedAt) + ", " +
                TimeText::shortStamp(*meter.resetsAt, view.calendar));
}

Line confidenceItem(const View& view, const WindowState& meter) {
    const UsageModel::Confidence& confidence = meter.confidence;
    if (!isGauged(view.snapshot, meter)) return Line("no official reading", Ink::warning);
    if (!confidence.anchored) return Line("estimated from your own sessions", Ink::warning);
    return Line("read " + TimeText::duration(confidence.secondsSinceAnchor.value_or(0)) + " ago, give or take " +
                percentText(confidence.estimatedError));
}

std::vector<Line> details(const View& view, const WindowState& meter) {
    return {Line(percentText(meter.elapsedFraction) + " of its time gone"), resetItem(view, meter),
            confidenceItem(view, meter)};
}

Lines wideWindow(const View& view, const WindowState& meter) {
    const Line name = nameColumn(meter.kind);
    const Line right = Line(gap).add(figures(view, meter));
    const std::size_t columns = view.width - name.columns() - right.columns();
    Lines lines{Line(name).add(barOf(view, meter, columns)).add(right)};
    append(lines, labelled(Line().padTo(name.columns()), arranged(details(view, meter), view.width - name.columns())));
    return lines;
}

Lines narrowWindow(const View& view, const WindowState& meter) {
    Lines lines{nameColumn(meter.kind).add(figures(view, meter)), barOf(view, meter, view.width)};
    append(lines, arranged(details(view, meter), view.width));
    return lines;
}

} // namespace

Lines windowLines(const View& view) {
    Lines lines;
    for (const WindowState& meter : view.snapshot.meters) {
        if (!lines.empty()) lines.emplace_back();
        append(lines, view.width < narrowBelow ? narrowWindow(view, meter) : wideWindow(view, meter));
    }
    return lines;
}

} // namespace Report
