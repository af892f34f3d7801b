#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "UsageModel/IngestProgress.h"

namespace Report {

/// "reading the logs [#####.....]  50%" for a fraction from 0 to 1.
[[nodiscard]] std::string progressLine(double fraction);

/// A line of a terminal that shows how far an import has come, while it takes long enough to be noticed. The line is
/// erased when the bar goes away. Needs no escape codes, so that any terminal will do.
class ProgressBar {
public:
    /// An import shorter than this shows nothing: a flash of a bar would only disturb.
    static constexpr double quietSeconds = 0.3;
    static constexpr double secondsBetweenLines = 0.1;

    using Write = std::function<void(std::string_view)>;
    /// Seconds since any fixed instant.
    using Clock = std::function<double()>;

    /// Without `write` nothing is ever shown.
    ProgressBar(Write write, Clock clock);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    void show(const UsageModel::IngestProgress& progress);

private:
    Write write_;
    Clock clock_;
    double nextLineAt_ = 0.0;
    std::size_t shownWidth_ = 0;
};

} // namespace Report
