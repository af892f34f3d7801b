#include "Report/AdviceLines.h"

#include "Report/Text.h"

namespace Report {

Lines adviceLines(const View& view) {
    const auto& advice = view.snapshot.recommendation;
    if (!advice) return {};
    Lines lines =
        arranged({Line(oneLine(advice->title), Ink::strong), Line(oneLine(advice->impact), Ink::good)}, view.width);
    append(lines, wrapped(Line(oneLine(advice->detail)), view.width));
    if (advice->command) append(lines, wrapped(Line("Type ").add(oneLine(*advice->command), Ink::accent), view.width));
    return lines;
}

} // namespace Report
