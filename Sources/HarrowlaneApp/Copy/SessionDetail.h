#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "HarrowlaneApp/Copy/ChartBucket.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/WeekSeries.h"

/// What is told of one session: in its row of the session log, and where the chart is pointed at.
namespace HarrowlaneApp::SessionDetail {

/// "Thu 11:15 AM – 4:15 PM"
[[nodiscard]] std::string times(const UsageModel::SessionBar& bar, const UsageModel::Calendar& calendar);
/// "9% of the week", or "0.10× a typical week".
[[nodiscard]] std::string weekCost(const UsageModel::SessionBar& bar, const UsageModel::WeekSeries& series);
/// "74% of the 5h cap", as sure as it is known. Absent where nothing is known of the cap.
[[nodiscard]] std::optional<std::string> capText(const UsageModel::SessionBar& bar);
/// What to think of `capText`, or why there is none; absent where it was measured.
[[nodiscard]] std::optional<std::string_view> capNote(const UsageModel::SessionBar& bar);
/// All of it in one line; what is absent falls away.
[[nodiscard]] std::string plainText(const UsageModel::SessionBar& bar, const UsageModel::WeekSeries& series,
                                    const UsageModel::Calendar& calendar);

/// A row of the session log.
struct LogRow {
    std::string times;
    bool isRunning = false;
    std::vector<BucketShare> mix;
    std::string cost;
    std::optional<std::string> capText;
    /// The week's cost before this session and with it, in the scale of the series.
    double totalBefore = 0.0;
    double total = 0.0;
    std::string totalText;
    std::string plainText;

    friend bool operator==(const LogRow&, const LogRow&) = default;
};

inline constexpr std::string_view logTitle = "Session log";
/// What a running session's times are followed by.
inline constexpr std::string_view runningMark = " — running";

/// The sessions with the running total of their cost, the newest first.
[[nodiscard]] std::vector<LogRow> log(const UsageModel::WeekSeries& series, const UsageModel::Calendar& calendar);
/// What to think of the caps in the whole log; absent where each of them was measured.
[[nodiscard]] std::optional<std::string> logNote(std::span<const UsageModel::SessionBar> sessions);

} // namespace HarrowlaneApp::SessionDetail
