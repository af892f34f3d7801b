#pragma once

#include <string>

#include "Report/View.h"
#include "UsageModel/UsageSnapshot.h"

namespace Report {

/// What a section gives for a snapshot, in UTC, in Unicode and without colours; a newline behind each line.
template <typename Section>
std::string sectionText(Section section, const UsageModel::UsageSnapshot& snapshot, std::size_t width = 80) {
    const auto utc = UsageModel::Calendar::utc();
    std::string text;
    for (const Line& line : section(View{.snapshot = snapshot, .calendar = utc, .width = width}))
        text.append(written(line, {.unicode = true})).append("\n");
    return text;
}

} // namespace Report
