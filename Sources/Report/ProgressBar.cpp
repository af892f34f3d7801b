#include "Report/ProgressBar.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace Report {

std::string progressLine(double fraction) {
    constexpr std::size_t width = 40;
    const double share = std::clamp(fraction, 0.0, 1.0);
    const auto done = static_cast<std::size_t>(share * static_cast<double>(width));
    std::array<char, 8> percent{};
    std::snprintf(percent.data(), percent.size(), "%3d%%", static_cast<int>(share * 100));
    return "reading the logs [" + std::string(done, '#') + std::string(width - done, '.') + "] " + percent.data();
}

ProgressBar::ProgressBar(Write write, Clock clock) : write_(std::move(write)), clock_(std::move(clock)) {
    if (write_) nextLineAt_ = clock_() + quietSeconds;
}

ProgressBar::~ProgressBar() {
    if (shownWidth_ > 0) write_(std::string("\r").append(shownWidth_, ' ').append("\r"));
}

void ProgressBar::show(const UsageModel::IngestProgress& progress) {
    if (!write_ || progress.complete) return;
    const double now = clock_();
    if (now < nextLineAt_) return;
    nextLineAt_ = now + secondsBetweenLines;
    const std::string line = progressLine(progress.fraction());
    shownWidth_ = line.size();
    write_("\r" + line);
}

} // namespace Report
