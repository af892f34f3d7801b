#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "UsageModel/EnumMap.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/ModelClass.h"
#include "UsageModel/WeekSeries.h"

namespace HarrowlaneApp {

/// The colour families of the model classes on charts: those with enough use to tell apart, and the rest.
enum class ChartBucket { opus, fable, sonnet, other };

[[nodiscard]] std::string_view label(ChartBucket bucket);
[[nodiscard]] ChartBucket chartBucket(UsageModel::ModelClass modelClass);

/// The part of a session that went to one family, 0 to 1.
struct BucketShare {
    ChartBucket bucket = ChartBucket::other;
    double share = 0.0;

    friend bool operator==(const BucketShare&, const BucketShare&) = default;
};

/// The sums by family: always the four, in their order.
[[nodiscard]] std::array<BucketShare, 4> chartBucketed(const UsageModel::EnumMap<UsageModel::ModelClass, double>& by);
/// The largest first; of equals, in the enumeration's order.
[[nodiscard]] std::array<BucketShare, 4> largestFirst(std::array<BucketShare, 4> shares);

/// The families that are worth a row in a session's break-down, the largest first.
[[nodiscard]] std::vector<BucketShare> mixBreakdown(const UsageModel::SessionBar& bar);
/// "Opus 60%"
[[nodiscard]] std::string mixText(const BucketShare& share);

} // namespace HarrowlaneApp

template <>
struct UsageModel::EnumNames<HarrowlaneApp::ChartBucket> {
    static constexpr std::array<std::string_view, 4> names{"opus", "fable", "sonnet", "other"};
};
