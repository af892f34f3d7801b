#include "UsageEngine/LiveModelReading.h"

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::CategoryWeights;
using UsageModel::Date;
using UsageModel::EffortLevel;
using UsageModel::LiveModel;
using UsageModel::ModelClass;
using UsageModel::UsageEvent;
using Classes = UsageModel::EnumMap<ModelClass, double>;
using Efforts = UsageModel::EnumMap<EffortLevel, double>;
using Session = LiveModel::Session;

const Date now = sunday;
/// A token of either kind weighs 1 on every class.
const CategoryWeights even{.input = 1, .output = 1};

struct Turn {
    double secondsAgo = 0;
    const char* session = "a";
    ModelClass modelClass = ModelClass::opus;
    std::optional<EffortLevel> effort;
    std::int64_t input = 1;
    std::int64_t output = 0;
};

LiveModel read(std::initializer_list<Turn> turns, double lookback = LiveModel::defaultLookback,
               const CategoryWeights& weights = even) {
    std::vector<UsageEvent> events;
    for (const Turn& turn : turns) {
        events.push_back({.ts = now - turn.secondsAgo,
                          .sessionId = turn.session,
                          .modelClass = turn.modelClass,
                          .input = turn.input,
                          .output = turn.output,
                          .effort = turn.effort});
    }
    const auto weighed = weigh(events, weights);
    return readLiveModel({.events = events, .turns = weighed, .weights = weights, .now = now, .lookback = lookback});
}

std::vector<std::string> namesOf(const LiveModel& live) {
    std::vector<std::string> names;
    for (const Session& session : live.sessions) names.push_back(session.id);
    return names;
}

TEST(LiveModelReading, WithoutTurnsNothingIsLive) {
    EXPECT_EQ(read({}), LiveModel{});
    EXPECT_EQ(read({}, 60).lookback, 60);
    EXPECT_EQ(read({{}}, 60).lookback, 60);
    EXPECT_FALSE(read({}).isLive());
}

TEST(LiveModelReading, LooksBackFortyFiveMinutes) {
    const CategoryWeights& weights = even;
    EXPECT_EQ((LiveModelQuestion{.weights = weights}.lookback), 2700);
}

TEST(LiveModelReading, TheEdgeOfTheLookbackIsOutAndNowIsIn) {
    const auto turns = [](double secondsAgo) { return read({{.secondsAgo = secondsAgo}}).turns; };
    EXPECT_EQ(turns(2700.001), 0);
    EXPECT_EQ(turns(2700), 0);
    EXPECT_EQ(turns(2699.999), 1);
    EXPECT_EQ(turns(0), 1);
    EXPECT_EQ(turns(-0.001), 0) << "the future";
    EXPECT_EQ(turns(-day), 0);
}

TEST(LiveModelReading, SeveralTurnsAtTheEdgeAreAllOut) {
    EXPECT_EQ(read({{.secondsAgo = 2700}, {.secondsAgo = 2700}, {.secondsAgo = 1}, {}, {}, {.secondsAgo = -1}}).turns,
              3);
}

TEST(LiveModelReading, WithoutALookbackThereIsNothing) {
    EXPECT_EQ(read({{}}, 0).turns, 0);
    EXPECT_EQ(read({{}, {.secondsAgo = 30}, {.secondsAgo = -30}}, -60).turns, 0);
    EXPECT_EQ(read({{}, {.secondsAgo = 1e9}}, 1e300).turns, 2);
}

TEST(LiveModelReading, TellsWhatOneSessionRuns) {
    EXPECT_EQ(read({{.secondsAgo = 5, .effort = EffortLevel::low, .input = 6, .output = 2}}),
              (LiveModel{.sessions = {{.id = "a",
                                       .modelClass = ModelClass::opus,
                                       .effort = EffortLevel::low,
                                       .lastTurn = now - 5,
                                       .weight = 8}},
                         .byClass = {{ModelClass::opus, 1.0}},
                         .byEffort = {{EffortLevel::low, 1.0}},
                         .outputShare = 0.25,
                         .weight = 8,
                         .turns = 1,
                         .lastTurn = now - 5}));
}

TEST(LiveModelReading, ASessionRunsItsLatestClassAndTheMixHoldsAll) {
    const LiveModel live = read({{.secondsAgo = 60, .modelClass = ModelClass::opus, .input = 3},
                                 {.secondsAgo = 30, .modelClass = ModelClass::sonnet, .input = 1}});
    ASSERT_EQ(live.sessions.size(), 1U);
    EXPECT_EQ(live.sessions[0].modelClass, ModelClass::sonnet);
    EXPECT_EQ(live.sessions[0].weight, 4);
    EXPECT_EQ(live.sessions[0].lastTurn, now - 30);
    EXPECT_EQ(live.byClass, (Classes{{ModelClass::opus, 0.75}, {ModelClass::sonnet, 0.25}}));
    EXPECT_EQ(live.lastTurn, now - 30);
}

TEST(LiveModelReading, AnEffortIsCarriedOverTurnsThatDeclareNone) {
    const LiveModel live = read({{.secondsAgo = 90, .effort = EffortLevel::low, .input = 1},
                                 {.secondsAgo = 60, .effort = EffortLevel::high, .input = 3},
                                 {.secondsAgo = 30, .input = 96}});
    EXPECT_EQ(live.sessions[0].effort, EffortLevel::high);
    EXPECT_EQ(live.byEffort, (Efforts{{EffortLevel::low, 0.25}, {EffortLevel::high, 0.75}}))
        << "turns that declare none are left out";
    EXPECT_EQ(live.weight, 100);
}

TEST(LiveModelReading, NoEffortDeclaredIsNone) {
    const LiveModel live = read({{}});
    EXPECT_FALSE(live.sessions[0].effort);
    EXPECT_EQ(live.byEffort, Efforts{});
}

TEST(LiveModelReading, EffortsThatWeighNothingTogetherAreNoMix) {
    EXPECT_EQ(read({{.effort = EffortLevel::low, .input = 0}, {}}).byEffort, Efforts{});
    EXPECT_EQ(read({{.effort = EffortLevel::low, .input = 0}, {}}).sessions[0].effort, EffortLevel::low);
    EXPECT_EQ(read({{.effort = EffortLevel::low, .input = -1}, {.input = 5}}).byEffort, Efforts{});
}

TEST(LiveModelReading, TheOrderOfTheEventsDoesNotMatter) {
    const Turn first{.secondsAgo = 90, .modelClass = ModelClass::haiku, .effort = EffortLevel::low, .input = 1};
    const Turn second{.secondsAgo = 60, .session = "b", .effort = EffortLevel::max, .input = 2};
    const Turn third{.secondsAgo = 30, .modelClass = ModelClass::fable, .input = 4};
    EXPECT_EQ(read({third, first, second}), read({first, second, third}));
    EXPECT_EQ(read({third, first, second}).sessions[0].effort, EffortLevel::low);
}

TEST(LiveModelReading, AtOneInstantTheLaterInTheListCounts) {
    const Turn low{.modelClass = ModelClass::opus, .effort = EffortLevel::low};
    const Turn high{.modelClass = ModelClass::sonnet, .effort = EffortLevel::high};
    EXPECT_EQ(read({low, high}).sessions[0].modelClass, ModelClass::sonnet);
    EXPECT_EQ(read({low, high}).sessions[0].effort, EffortLevel::high);
    EXPECT_EQ(read({high, low}).sessions[0].modelClass, ModelClass::opus);
    EXPECT_EQ(read({high, low}).sessions[0].effort, EffortLevel::low);
}

TEST(LiveModelReading, SessionsStandLatestFirstAndThenByName) {
    EXPECT_EQ(namesOf(read({{.secondsAgo = 9, .session = "b"},
                            {.secondsAgo = 5, .session = "d"},
                            {.secondsAgo = 9, .session = "a"},
                            {.secondsAgo = 1, .session = "z"},
                            {.secondsAgo = 9, .session = ""}})),
              (std::vector<std::string>{"z", "d", "", "a", "b"}));
}

TEST(LiveModelReading, ASessionStandsByItsLatestTurn) {
    EXPECT_EQ(
        namesOf(read(
            {{.secondsAgo = 9, .session = "b"}, {.secondsAgo = 5, .session = "a"}, {.secondsAgo = 1, .session = "b"}})),
        (std::vector<std::string>{"b", "a"}));
}

TEST(LiveModelReading, EachSessionHasItsOwnWeight) {
    const LiveModel live = read({{.secondsAgo = 3, .session = "a", .input = 5},
                                 {.secondsAgo = 2, .session = "b", .input = 7},
                                 {.secondsAgo = 1, .session = "a", .input = 11}});
    EXPECT_EQ(live.sessions[0].weight, 16);
    EXPECT_EQ(live.sessions[1].weight, 7);
    EXPECT_EQ(live.weight, 23);
    EXPECT_EQ(live.turns, 3);
    EXPECT_TRUE(live.isConcurrent());
}

TEST(LiveModelReading, OutputIsWeighedAsItsClassIs) {
    const LiveModel live = read({{.modelClass = ModelClass::opus, .input = 10, .output = 2},
                                 {.modelClass = ModelClass::fable, .input = 0, .output = 5}},
                                2700, CategoryWeights::priors(1.0));
    EXPECT_EQ(live.weight, 20 + 50);
    EXPECT_EQ(live.outputShare, (10.0 + 50.0) / 70.0);
}

TEST(LiveModelReading, TurnsThatWeighNothingAreCountedButNotLive) {
    const LiveModel nothing{.turns = 2, .lookback = 600};
    EXPECT_EQ(read({{.effort = EffortLevel::low, .input = 0}, {.input = 0}}, 600), nothing);
    EXPECT_EQ(read({{.input = 3}, {.input = -3}}, 600), nothing);
    EXPECT_EQ(read({{.input = 3, .output = 1}, {.input = -5}}, 600), nothing) << "less than nothing";
    EXPECT_FALSE(nothing.isLive());
}

TEST(LiveModelReading, AClassThatWeighsNothingIsInTheMix) {
    EXPECT_EQ(read({{}, {.modelClass = ModelClass::haiku, .input = 0}}).byClass,
              (Classes{{ModelClass::opus, 1.0}, {ModelClass::haiku, 0.0}}));
}

TEST(LiveModelReading, ADamagedTurnTakesItsWeightBack) {
    const LiveModel live =
        read({{.secondsAgo = 2, .input = 8}, {.session = "b", .modelClass = ModelClass::haiku, .input = -4}});
    EXPECT_EQ(live.weight, 4);
    EXPECT_EQ(live.byClass, (Classes{{ModelClass::opus, 2.0}, {ModelClass::haiku, -1.0}}));
    EXPECT_EQ(live.sessions[0].weight, -4);
}

TEST(LiveModelReading, AnUnknownModelIsNeverSettled) {
    const LiveModel live = read({{.modelClass = ModelClass::other}, {.modelClass = ModelClass::other}});
    EXPECT_EQ(live.byClass, (Classes{{ModelClass::other, 1.0}}));
    EXPECT_TRUE(live.isLive());
    EXPECT_FALSE(live.settledClass(LiveModel::consensus));
}

TEST(LiveModelReading, ManySessionsKeepTheirNames) {
    std::vector<UsageEvent> events;
    for (int i = 0; i < 5000; ++i)
        events.push_back({.ts = now - i % 50, .sessionId = "session " + std::to_string(i % 1000), .input = 1});
    const auto turns = weigh(events, even);
    const LiveModel live = readLiveModel({.events = events, .turns = turns, .weights = even, .now = now});
    ASSERT_EQ(live.sessions.size(), 1000U);
    EXPECT_EQ(live.weight, 5000);
    for (std::size_t i = 1; i < live.sessions.size(); ++i) {
        const auto order = [](const Session& session) { return std::pair(now - session.lastTurn, session.id); };
        ASSERT_LT(order(live.sessions[i - 1]), order(live.sessions[i]));
        ASSERT_EQ(live.sessions[i].weight, 5);
    }
}

} // namespace
} // namespace UsageEngine
