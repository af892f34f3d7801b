#include "Report/View.h"

#include <string>

namespace Report {

using UsageModel::Severity;
using UsageModel::WindowKind;

Ink inkOf(Severity severity) {
    switch (severity) {
    case Severity::green: return Ink::good;
    case Severity::amber: return Ink::warning;
    case Severity::red: break;
    }
    return Ink::critical;
}

bool isGauged(const UsageModel::UsageSnapshot& snapshot, const UsageModel::WindowState& meter) {
    return meter.confidence.anchored || (meter.kind == WindowKind::session5h && snapshot.sessionCapInLogUnits);
}

Line nameColumn(WindowKind kind) {
    constexpr std::size_t columns = 15; // the longest name and a gap
    return Line(displayName(kind)).padTo(columns);
}

Lines named(const Line& name, const std::vector<Line>& items, const View& view) {
    if (view.width >= narrowBelow) return labelled(name, arranged(items, view.width - name.columns()));
    constexpr std::string_view indent = "  ";
    Lines lines{name};
    append(lines, labelled(Line(indent), arranged(items, view.width - indent.size())));
    return lines;
}

} // namespace Report
