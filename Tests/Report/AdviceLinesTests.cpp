#include "Report/AdviceLines.h"

#include <gtest/gtest.h>

#include "Report/SampleSnapshot.h"
#include "Report/ViewOf.h"

namespace Report {
namespace {

using UsageModel::UsageSnapshot;

TEST(AdviceLines, SayWhatWhyAndHow) {
    EXPECT_EQ(sectionText(adviceLines, sampleSnapshot()), R"(Route the rest to Sonnet · back inside the cap
This week is projected to hit 112% by reset; this lands it around 91%. Lowering
effort alone doesn't get you there.
Type /model sonnet
)");
}

TEST(AdviceLines, WithoutACommandThereIsNothingToType) {
    UsageSnapshot snapshot = sampleSnapshot();
    snapshot.recommendation = {.title = "Wait", .detail = "It refills.", .impact = "full again", .command = {}};
    EXPECT_EQ(sectionText(adviceLines, snapshot), "Wait · full again\nIt refills.\n");
}

TEST(AdviceLines, WithoutAdviceThereAreNone) {
    EXPECT_EQ(sectionText(adviceLines, ungaugedSnapshot()), "");
}

} // namespace
} // namespace Report
