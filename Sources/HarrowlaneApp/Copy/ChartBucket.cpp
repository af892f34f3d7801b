#include "HarrowlaneApp/Copy/ChartBucket.h"

#include <algorithm>

#include "HarrowlaneApp/Copy/Figures.h"

namespace HarrowlaneApp {

using UsageModel::ModelClass;

std::string_view label(ChartBucket bucket) {
    constexpr std::array<std::string_view, 4> labels{"Opus", "Fable", "Sonnet", "Haiku & other"};
    return labels[UsageModel::caseIndex(bucket)];
}

ChartBucket chartBucket(ModelClass modelClass) {
    switch (modelClass) {
    case ModelClass::opus: return ChartBucket::opus;
    case ModelClass::fable: return ChartBucket::fable;
    case ModelClass::sonnet: return ChartBucket::sonnet;
    case ModelClass::haiku:
    case ModelClass::other: break;
    }
    return ChartBucket::other;
}

std::array<BucketShare, 4> chartBucketed(const UsageModel::EnumMap<ModelClass, double>& by) {
    std::array<BucketShare, 4> shares{{
        {.bucket = ChartBucket::opus},
        {.bucket = ChartBucket::fable},
        {.bucket = ChartBucket::sonnet},
        {.bucket = ChartBucket::other},
    }};
    for (const auto& [modelClass, share] : by) shares[UsageModel::caseIndex(chartBucket(modelClass))].share += share;
    return shares;
}

std::array<BucketShare, 4> largestFirst(std::array<BucketShare, 4> shares) {
    std::ranges::stable_sort(shares, std::ranges::greater(), &BucketShare::share);
    return shares;
}

std::vector<BucketShare> mixBreakdown(const UsageModel::SessionBar& bar) {
    constexpr double leastShare = 0.005;
    std::vector<BucketShare> mix;
    std::ranges::copy_if(largestFirst(chartBucketed(bar.byModelClass)), std::back_inserter(mix),
                         [](const BucketShare& part) { return part.share >= leastShare; });
    return mix;
}

std::string mixText(const BucketShare& share) {
    return std::string(label(share.bucket)) + " " + Figures::percent(share.share);
}

} // namespace HarrowlaneApp
