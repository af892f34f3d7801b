#include "HarrowlaneApp/Copy/ChartBucket.h"

#include <gmock/gmock.h>

namespace HarrowlaneApp {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using UsageModel::ModelClass;
using UsageModel::SessionBar;

TEST(MixBreakdown, HasTheLargestFirstAndLeavesOutTheSmallest) {
    SessionBar bar;
    bar.byModelClass = {{ModelClass::opus, 0.004},
                        {ModelClass::fable, 0.005},
                        {ModelClass::sonnet, 0.5},
                        {ModelClass::haiku, 0.2},
                        {ModelClass::other, 0.3}};
    EXPECT_THAT(mixBreakdown(bar),
                ElementsAre(BucketShare{ChartBucket::sonnet, 0.5}, BucketShare{ChartBucket::other, 0.5},
                            BucketShare{ChartBucket::fable, 0.005}));
}

TEST(MixBreakdown, OfASessionWithoutUseIsEmpty) {
    SessionBar bar;
    EXPECT_THAT(mixBreakdown(bar), IsEmpty());
    bar.byModelClass = {{ModelClass::opus, 0.0}};
    EXPECT_THAT(mixBreakdown(bar), IsEmpty());
}

TEST(ChartBuckets, AreTheFamiliesAndTheRest) {
    std::vector<std::string_view> labels;
    for (const ModelClass modelClass : UsageModel::allCases<ModelClass>)
        labels.push_back(label(chartBucket(modelClass)));
    EXPECT_THAT(labels, ElementsAre("Opus", "Fable", "Sonnet", "Haiku & other", "Haiku & other"));
}

} // namespace
} // namespace HarrowlaneApp
