#include <sstream>
#include <streambuf>

#include <gmock/gmock.h>

#include "Conformance/Server.h"
#include "UsageModel/CategoryWeights.h"
#include "UsageModel/WeekSeries.h"

namespace Conformance {
namespace {

using namespace std::string_view_literals;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<json> answersTo(const std::string& requests) {
    std::istringstream in(requests);
    std::ostringstream out;
    serve(allOperations(), in, out);

    std::vector<json> answers;
    std::istringstream lines(out.str());
    for (std::string line; std::getline(lines, line);) answers.push_back(json::parse(line));
    return answers;
}

json ask(const std::string& operation, const json& arguments) {
    return answer(allOperations(), json{{"op", operation}, {"args", arguments}}.dump());
}

std::string errorOf(std::string_view request) {
    const json given = answer(allOperations(), request);
    return given.contains("ok") ? "an answer: " + given.dump() : given.at("error").get<std::string>();
}

TEST(Answer, GivesTheResultOfTheOperation) {
    EXPECT_EQ(ask("ModelClass.init", {{"rawModel", "claude-opus-4-fable"}}), (json{{"ok", "fable"}}));
}

TEST(Answer, GivesNullForAnAbsentResult) {
    EXPECT_EQ(ask("GaugeReading.decode", {{"text", "torn"}}), (json{{"ok", nullptr}}));
}

TEST(Answer, ToAnUnknownOperationSaysSo) {
    EXPECT_EQ(ask("ModelClass.end", json::object()), (json{{"error", "unknown operation"}}));
    EXPECT_EQ(ask("", json::object()), (json{{"error", "unknown operation"}}));
    EXPECT_EQ(errorOf(R"({"op":"nothing","args":5})"), "unknown operation") << "whatever its arguments";
}

TEST(Answer, ToALineThatIsNoRequestIsAnError) {
    for (const std::string_view line : {""sv, " "sv, "x"sv, "{"sv, "[]"sv, "5"sv, "null"sv, "{}"sv, R"({"op":5})"sv,
                                        R"({"op":null})"sv, "\xFF"sv, "{}\0"sv, R"({"op":"ModelClass.init"} x)"sv}) {
        EXPECT_FALSE(errorOf(line).empty()) << line;
        EXPECT_THAT(errorOf(line), testing::Not(HasSubstr("an answer"))) << line;
    }
}

TEST(Answer, ToArgumentsThatItCannotReadNamesThem) {
    EXPECT_THAT(errorOf(R"({"op":"ModelClass.init"})"), HasSubstr("rawModel"));
    EXPECT_THAT(errorOf(R"({"op":"ModelClass.init","args":{}})"), HasSubstr("rawModel"));
    EXPECT_THAT(errorOf(R"({"op":"ModelClass.init","args":{"rawModel":5}})"), HasSubstr("rawModel"));
    EXPECT_THAT(errorOf(R"({"op":"ModelClass.init","args":{"rawModel":null}})"), HasSubstr("rawModel"));
    EXPECT_THAT(errorOf(R"({"op":"ModelBreakdown.fraction","args":{"models":{"byClass":{}},"class":"gpt"}})"),
                HasSubstr("class"));
}

TEST(Answer, ToArgumentsThatAreNoObjectIsAnError) {
    for (const std::string_view arguments : {"[]", "5", "null", R"("x")"}) {
        EXPECT_EQ(errorOf(R"({"op":"AppPaths.isOurShim","args":)" + std::string(arguments) + "}"),
                  "the arguments are no object");
    }
}

TEST(Answer, WithoutArgumentsTakesThemAllAsAbsent) {
    EXPECT_EQ(answer(allOperations(), R"({"op":"AppPaths.isOurShim"})"), (json{{"ok", false}}));
}

TEST(Answer, TakesNullForAnAbsentArgument) {
    EXPECT_EQ(ask("AppPaths.isOurShim", {{"command", nullptr}}), (json{{"ok", false}}));
    EXPECT_EQ(ask("AppPaths.isOurShim", {{"command", "/x/brindlewick-statusline"}}), (json{{"ok", true}}));
}

TEST(Answer, SurvivesAnOperationThatThrows) {
    const Operations operations{{"fails", [](const Arguments&) -> json { throw std::runtime_error("went wrong"); }}};
    EXPECT_EQ(answer(operations, R"({"op":"fails"})"), (json{{"error", "went wrong"}}));
}

TEST(Answer, SurvivesDeepNesting) {
    const std::string deep = std::string(10'000, '[') + std::string(10'000, ']');
    EXPECT_EQ(answer(allOperations(), R"({"op":"AppPaths.isOurShim","args":{"x":)" + deep + "}}"),
              (json{{"ok", false}}));
    EXPECT_THAT(errorOf(deep), testing::Not(IsEmpty()));
}

TEST(Serve, AnswersNothingToNoInput) {
    EXPECT_THAT(answersTo(""), IsEmpty());
}

TEST(Serve, AnswersInOrder) {
    std::string requests;
    for (const char* model : {"opus", "fable", "sonnet", "haiku", "other"}) {
        requests += json{{"op", "ModelClass.init"}, {"args", {{"rawModel", model}}}}.dump() + "\n";
    }
    EXPECT_THAT(answersTo(requests), ElementsAre(json{{"ok", "opus"}}, json{{"ok", "fable"}}, json{{"ok", "sonnet"}},
                                                 json{{"ok", "haiku"}}, json{{"ok", "other"}}));
}

TEST(Serve, AnswersALastLineWithoutALineFeed) {
    EXPECT_THAT(answersTo(R"({"op":"a"})"), ElementsAre(json{{"error", "unknown operation"}}));
    EXPECT_THAT(answersTo("{\"op\":\"a\"}\n"), SizeIs(1));
}

TEST(Serve, AnswersEveryLineAlsoAnEmptyOne) {
    const std::vector<json> answers = answersTo("\n{\"op\":\"AppPaths.isOurShim\"}\n\nx\n{\"op\":\"a\"}");
    ASSERT_THAT(answers, SizeIs(5));
    EXPECT_TRUE(answers[0].contains("error"));
    EXPECT_EQ(answers[1], (json{{"ok", false}}));
    EXPECT_TRUE(answers[2].contains("error"));
    EXPECT_TRUE(answers[3].contains("error"));
    EXPECT_EQ(answers[4], (json{{"error", "unknown operation"}}));
}

TEST(Serve, TakesLinesThatEndWithACarriageReturn) {
    EXPECT_THAT(answersTo("{\"op\":\"AppPaths.isOurShim\"}\r\n"), ElementsAre(json{{"ok", false}}));
}

TEST(Serve, AnswersWithOneLineWhateverTheWords) {
    EXPECT_THAT(answersTo("{\"op\":\"ModelClass.init\",\"args\":{\"rawModel\":\"\xFF\xFE\"}}\nx\ty"), SizeIs(2));
}

/// An asker who writes the next request only when the last one was answered.
class PatientAsker : public std::streambuf {
public:
    PatientAsker(std::vector<std::string> requests, const std::ostringstream& answers)
        : requests_(std::move(requests)),
          answers_(answers) {}

    std::size_t answersSeen = 0;

protected:
    int_type underflow() override {
        const std::string soFar = answers_.str();
        answersSeen = static_cast<std::size_t>(std::count(soFar.begin(), soFar.end(), '\n'));
        if (answersSeen != next_ || next_ == requests_.size()) return traits_type::eof();
        std::string& request = requests_[next_++];
        setg(request.data(), request.data(), request.data() + request.size());
        return traits_type::to_int_type(*gptr());
    }

private:
    std::vector<std::string> requests_;
    std::size_t next_ = 0;
    const std::ostringstream& answers_;
};

/// Passes on what was written only when it is flushed.
class HoldingBuffer : public std::stringbuf {
public:
    explicit HoldingBuffer(std::ostream& flushed) : flushed_(flushed) {}

protected:
    int sync() override {
        flushed_ << str();
        str("");
        return 0;
    }

private:
    std::ostream& flushed_;
};

TEST(Serve, FlushesEachAnswerBeforeItReadsOn) {
    std::ostringstream flushed;
    HoldingBuffer holding(flushed);
    std::ostream out(&holding);
    PatientAsker asker({"{\"op\":\"a\"}\n", "x\n", "{\"op\":\"b\"}\n"}, flushed);
    std::istream in(&asker);
    serve(allOperations(), in, out);
    EXPECT_EQ(asker.answersSeen, 3U);
}

TEST(AllOperations, KnowWhatUsersRead) {
    const Operations operations = allOperations();
    for (const char* name :
         {"CalendarView.columns", "ChartTooltip.format", "ModelsView.note", "NowView.clockString", "NowView.timeLeft",
          "Pace.explanation", "Pace.status", "SessionBar.capText", "SessionDetail.plainText", "SessionDetail.weekCost",
          "WeekChart.accessibilitySummary", "WeekChart.barAxisTop", "WeekChart.geometry", "WeekCopy.compact",
          "WeekCopy.content", "WeekCopy.standing", "WhatIfPanel.texts"}) {
        EXPECT_TRUE(operations.contains(name)) << name;
    }
}

TEST(AllOperations, KnowTheRecordsAndTheLines) {
    const Operations operations = allOperations();
    for (const char* name : {"AppPaths.isOurShim",       "CategoryWeights.effective",
                             "CategoryWeights.priors",   "GaugeReading.anchors",
                             "GaugeReading.decode",      "IngestProgress.fraction",
                             "LiveModel.settledClass",   "LiveModel.settledEffort",
                             "LiveModel.space",          "ModelBreakdown.fraction",
                             "ModelClass.bucketed",      "ModelClass.init",
                             "SessionBar.capReadout",    "StatusLineInput.gaugeReading",
                             "WeekSeries.ghost",         "WeekSeries.ghostCrossing",
                             "WeekSeries.ghostLanding",  "WeekSeries.x",
                             "WhatIfSpace.applies",      "WhatIfSpace.cheapestCombination",
                             "WhatIfSpace.effortFactor", "WhatIfSpace.factor",
                             "WhatIfSpace.isEstimate",   "WhatIfSpace.modelFactor",
                             "LogLineParser.parse",      "TimeParsing.iso8601UTC"}) {
        EXPECT_TRUE(operations.contains(name)) << name;
    }
}

TEST(RecordOperations, PairsHaveTheirShapes) {
    EXPECT_EQ(ask("ModelClass.bucketed", {{"byClass", {{"opus", 1}, {"fable", 2}, {"haiku", 3}}}}),
              (json{{"ok", json::array({{"opusClass", 3.0}, {"sonnet", 0.0}, {"other", 3.0}})}}));
    const json space = {{"byFamily", json::object()},
                        {"familyMultiplier", {{"sonnet", 0.6}, {"opus", 1}}},
                        {"outputShare", 0.5},
                        {"effortMix", json::object()},
                        {"effortMultiplier", {{"low", 0.55}, {"high", 1}}}};
    EXPECT_EQ(ask("WhatIfSpace.cheapestCombination", {{"space", space}}),
              (json{{"ok", {{"model", "sonnet"}, {"effort", "low"}}}}));
}

TEST(RecordOperations, AReadoutNamesItsCaseAndCarriesItsValueWhereThereIsOne) {
    const auto readout = [](const char* basis, double fill) {
        const json bar = {{"start", 0},
                          {"end", 5},
                          {"fillFraction", fill},
                          {"weeklyCost", 0},
                          {"byModelClass", json::object()},
                          {"isCurrent", false},
                          {"capBasis", basis}};
        return ask("SessionBar.capReadout", {{"bar", bar}}).at("ok");
    };
    EXPECT_EQ(readout("liveGauge", 0.5), (json{{"case", "measured"}, {"value", 0.5}}));
    EXPECT_EQ(readout("learnedScale", 0.5), (json{{"case", "estimated"}, {"value", 0.5}}));
    EXPECT_EQ(readout("learnedScale", 1.5), (json{{"case", "atOrOverCap"}}));
    EXPECT_EQ(readout("uncalibrated", 0.5), (json{{"case", "unknown"}}));
}

TEST(RecordOperations, AStatusLineGivesAReading) {
    const json arguments = {{"text", R"({"rate_limits":{"five_hour":{"used_percentage":7}}})"},
                            {"capturedAt", 5},
                            {"source", "statusLine"}};
    EXPECT_EQ(ask("StatusLineInput.gaugeReading", arguments),
              (json{{"ok",
                     {{"capturedAt", 5.0},
                      {"source", "statusLine"},
                      {"windows", {{"five_hour", {{"usedPercentage", 7.0}}}}}}}}));
}

constexpr const char* turnLine =
    R"({"type":"assistant","timestamp":"2026-03-01T10:20:30.500Z","sessionId":"s","message":{"model":"claude-haiku-4-5","usage":{"input_tokens":7,"output_tokens":1}}})";

TEST(AlertOperations, AMachineGivesItsDecisionsAndItsStateAsStored) {
    const json steps = {{{"breaching", true}, {"severity", "amber"}, {"now", 978307200}},
                        {{"snooze", 978307210}},
                        {{"breaching", true}, {"severity", "red"}, {"now", 978307205}, {"secondsToEmpty", nullptr}}};
    const json answer =
        ask("NotificationFSM.run", {{"sustainSeconds", 5}, {"criticalWithinSeconds", 7}, {"steps", steps}});
    EXPECT_EQ(answer.at("ok").at("decisions"),
              (json{{{"level", 1}, {"fireBanner", false}}, {{"level", 3}, {"fireBanner", false}}}));
    EXPECT_EQ(answer.at("ok").at("state"), (json{{"sustainSeconds", 5.0},
                                                 {"criticalWithinSeconds", 7.0},
                                                 {"level", 3},
                                                 {"overSince", 0.0},
                                                 {"highestFired", 3},
                                                 {"snoozeUntil", 10.0}}));
}

TEST(AlertOperations, ThresholdsGiveTheAlertsOfEachStepWithTheirWords) {
    const json meter = {{"kind", "weeklyAll"},
                        {"used", 0.99},
                        {"windowStart", 978307200},
                        {"elapsedFraction", 0},
                        {"baselineFraction", 0},
                        {"paceVsBaseline", 0},
                        {"confidence", {{"anchored", true}, {"estimatedError", 0}}}};
    const json steps = {{{"meters", {meter}}, {"now", 978307200}}, {{"meters", json::array()}, {"now", 978307200}}};
    const json answer = ask("ThresholdAlerts.run", {{"thresholds", {90, 99}}, {"steps", steps}}).at("ok");
    const json alert = {{"window", "weeklyAll"},
                        {"threshold", 99},
                        {"used", 0.99},
                        {"title", "99% of your weekly limit used"},
                        {"body", "Hitting 100% locks you out until the weekly window resets at the next reset."},
                        {"isCritical", true}};
    EXPECT_EQ(answer.at("alerts"), json::array({json::array({alert}), json::array()}));
    EXPECT_EQ(answer.at("state"), (json{{"thresholds", {90, 99}},
                                        {"episodes", {{"weeklyAll", {{"windowStart", 0.0}, {"highestFired", 99}}}}}}));
}

TEST(LineOperations, ATurnIsAUsageWithItsEvent) {
    const json expected = {{"ts", 1772360430.5},    {"sessionId", "s"}, {"model", "claude-haiku-4-5"},
                           {"modelClass", "haiku"}, {"input", 7},       {"output", 1},
                           {"cacheCreation", 0},    {"cacheRead", 0}};
    EXPECT_EQ(ask("LogLineParser.parse", {{"line", turnLine}}),
              (json{{"ok", {{"case", "usage"}, {"value", expected}}}}));
}

TEST(LineOperations, AnIgnoredLineHasNoValue) {
    EXPECT_EQ(ask("LogLineParser.parse", {{"line", "torn"}}), (json{{"ok", {{"case", "ignored"}}}}));
}

TEST(LineOperations, BytesInBase64StandForTheLine) {
    EXPECT_EQ(ask("LogLineParser.parse", {{"line", turnLine}, {"lineBase64", "/w=="}}),
              (json{{"ok", {{"case", "ignored"}}}}));
    EXPECT_THAT(ask("LogLineParser.parse", {{"line", ""}, {"lineBase64", "!"}}).at("error").get<std::string>(),
                HasSubstr("lineBase64"));
}

TEST(LineOperations, ATimestampIsAnInstant) {
    EXPECT_EQ(ask("TimeParsing.iso8601UTC", {{"text", "1970-01-01T00:00:01.5Z"}}), (json{{"ok", 1.5}}));
    EXPECT_EQ(ask("TimeParsing.iso8601UTC", {{"text", "yesterday"}}), (json{{"ok", nullptr}}));
}

json emptyWeek() {
    return UsageModel::Json::encode(UsageModel::WeekSeries{});
}

TEST(CopyOperations, PanelsAreListsOfTheirSides) {
    const json arguments = {{"series", emptyWeek()}, {"width", 656}, {"height", 300}, {"date", 0}, {"value", 0}};
    EXPECT_EQ(ask("WeekChart.geometry", arguments).at("ok"), (json{{"topPanel", {42.0, 16.0, 556.0, 174.0}},
                                                                   {"bottomPanel", {42.0, 204.0, 556.0, 72.0}},
                                                                   {"x", 42.0},
                                                                   {"topY", 190.0},
                                                                   {"botY", 276.0}}));
}

TEST(CopyOperations, APanelWithoutASpaceOfChangesIsNull) {
    EXPECT_EQ(ask("WhatIfPanel.texts", {{"series", emptyWeek()}, {"timeZone", "UTC"}}), (json{{"ok", nullptr}}));
}

TEST(CopyOperations, ASessionIsOneLineInItsZone) {
    const json bar = {{"start", 0},
                      {"end", 18000},
                      {"fillFraction", 0.5},
                      {"weeklyCost", 0.1},
                      {"byModelClass", {{"haiku", 1}}},
                      {"isCurrent", true},
                      {"capBasis", "liveGauge"}};
    EXPECT_EQ(ask("SessionDetail.plainText", {{"bar", bar}, {"series", emptyWeek()}, {"timeZone", "Asia/Kolkata"}}),
              (json{{"ok", "Thu 5:30 AM – 10:30 AM — running  ·  10% of the week  ·  50% of the 5h cap  ·  "
                           "Haiku & other 100%"}}));
}

TEST(CopyOperations, AnUnknownZoneIsAnError) {
    EXPECT_THAT(ask("NowView.clockString", {{"isWeekly", true}, {"timeZone", "Mars/Olympus"}}).at("error"),
                HasSubstr("Mars/Olympus"));
}

} // namespace
} // namespace Conformance
