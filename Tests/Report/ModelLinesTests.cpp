#include "Report/ModelLines.h"

#include <gmock/gmock.h>

#include "Report/SampleSnapshot.h"
#include "Report/Text.h"
#include "Report/ViewOf.h"

namespace Report {
namespace {

using testing::HasSubstr;
using UsageModel::LiveModel;
using UsageModel::ModelClass;
using UsageModel::UsageSnapshot;

TEST(ModelLines, TheLargestShareComesFirst) {
    EXPECT_EQ(sectionText(modelLines, sampleSnapshot(), 40), R"(Sonnet  ███████████████████▌░░░░░░   75%
Opus    ██████▌░░░░░░░░░░░░░░░░░░░   25%
)");
}

TEST(ModelLines, EqualSharesKeepTheOrderOfTheClasses) {
    UsageSnapshot snapshot;
    snapshot.models.byClass = {{ModelClass::haiku, 1}, {ModelClass::opus, 1}};
    EXPECT_EQ(sectionText(modelLines, snapshot, 40), R"(Opus    █████████████░░░░░░░░░░░░░   50%
Haiku   █████████████░░░░░░░░░░░░░   50%
)");
}

TEST(ModelLines, WithoutBurnThereAreNone) {
    UsageSnapshot snapshot;
    snapshot.models.byClass = {{ModelClass::haiku, 0}};
    EXPECT_EQ(sectionText(modelLines, snapshot), "");
}

TEST(LiveLines, TellEachSession) {
    EXPECT_EQ(sectionText(liveLines, sampleSnapshot()),
              R"(8e461893-1fc3-4416-a39f-2ee09d78b1dd  Opus    X-High   1m ago   75%
1b9d6bcd-bbfd-4b2d-9b5d-ab8dfbbd4bed  Sonnet          40m ago   25%
)");
}

TEST(LiveLines, AnIdIsShortenedWhereItIsNarrow) {
    EXPECT_EQ(sectionText(liveLines, sampleSnapshot(), 40), R"(8e461893…  Opus    X-High   1m ago   75%
1b9d6bcd…  Sonnet          40m ago   25%
)");
}

TEST(LiveLines, AnIdCannotSpeakToTheTerminal) {
    UsageSnapshot snapshot = sampleSnapshot();
    snapshot.live.sessions[0].id = "evil\x1b[2J\n\u202e";
    EXPECT_THAT(sectionText(liveLines, snapshot), HasSubstr("evil?[2J??"));
}

TEST(LiveLines, OnlySoManyAreListed) {
    UsageSnapshot snapshot = sampleSnapshot();
    snapshot.live.sessions.resize(1500, snapshot.live.sessions[0]);
    const std::string text = sectionText(liveLines, snapshot);
    EXPECT_EQ(std::ranges::count(text, '\n'), 7);
    EXPECT_THAT(text, HasSubstr("\nand 1,494 more\n"));
}

TEST(LiveLines, WhereNothingRanThereAreNone) {
    EXPECT_EQ(sectionText(liveLines, ungaugedSnapshot()), "");
}

} // namespace
} // namespace Report
