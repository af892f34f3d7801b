#include "Report/ReportJson.h"

#include <gmock/gmock.h>

#include "Report/SampleReport.h"
#include "UsageModel/Json.h"

namespace Report {
namespace {

using nlohmann::json;
using testing::UnorderedElementsAre;

std::vector<std::string> keys(const json& object) {
    std::vector<std::string> keys;
    for (const auto& [key, value] : object.items()) keys.push_back(key);
    return keys;
}

class ReportJsonTest : public testing::Test {
protected:
    json report = UsageModel::Json::parse(reportJson(sampleReport()));
};

TEST_F(ReportJsonTest, IsOneLine) {
    const std::string text = reportJson(sampleReport());
    EXPECT_EQ(text.find('\n'), text.size() - 1);
}

TEST_F(ReportJsonTest, NamesTheMomentItIsOf) {
    EXPECT_THAT(keys(report),
                UnorderedElementsAre("now", "timeZone", "logFiles", "helper", "official", "spans", "busiestDays"));
    EXPECT_EQ(report["now"], 1772360430.0);
    EXPECT_EQ(report["timeZone"], "UTC");
    EXPECT_EQ(report["logFiles"], 2);
    EXPECT_EQ(report["helper"], "installed");
}

TEST_F(ReportJsonTest, HoldsTheOfficialWindows) {
    EXPECT_EQ(report["official"], json::parse(R"({
        "capturedAt": 1772360190.0, "ageSeconds": 240.0, "source": "oauth",
        "windows": [{"window": "session5h", "usedPercentage": 42.0, "resetsAt": 1772368410.0},
                    {"window": "weeklyAll", "usedPercentage": 91.5}]})"));
}

TEST_F(ReportJsonTest, HoldsEverySpanByClass) {
    EXPECT_THAT(keys(report["spans"]), UnorderedElementsAre("fiveHours", "sevenDays", "allTime"));
    EXPECT_EQ(report["spans"]["fiveHours"]["seconds"], 18000.0);
    EXPECT_EQ(report["spans"]["sevenDays"]["seconds"], 604800.0);
    EXPECT_FALSE(report["spans"]["allTime"].contains("seconds"));
    EXPECT_THAT(keys(report["spans"]["fiveHours"]["byClass"]), UnorderedElementsAre("opus"));
    EXPECT_THAT(keys(report["spans"]["allTime"]["byClass"]), UnorderedElementsAre("opus", "haiku"));
    EXPECT_EQ(report["spans"]["allTime"]["total"]["turns"], 3);
}

TEST_F(ReportJsonTest, ATallyHasItsCategoriesAndTheirSum) {
    json tally = report["spans"]["fiveHours"]["byClass"]["opus"];
    EXPECT_DOUBLE_EQ(tally["units"].get<double>(), (1 + 5 * 2 + 1.25 * 3 + 0.1 * 4) * 1e-7);
    tally.erase("units");
    EXPECT_EQ(tally, json::parse(R"({"turns": 1, "input": 1, "output": 2, "cacheCreation": 3, "cacheRead": 4,
                                     "tokens": 10})"));
}

TEST_F(ReportJsonTest, ADayHasItsDateAndItsFirstInstant) {
    ASSERT_EQ(report["busiestDays"].size(), 3U);
    const json day = report["busiestDays"][0];
    EXPECT_THAT(keys(day), UnorderedElementsAre("date", "start", "turns", "input", "output", "cacheCreation",
                                                "cacheRead", "tokens", "units"));
    EXPECT_EQ(day["date"], "2026-02-28");
    EXPECT_EQ(day["start"], 1772236800.0);
}

TEST_F(ReportJsonTest, WithoutAReadingOfficialIsNull) {
    const auto empty = makeReport({.now = sampleNow, .calendar = UsageModel::Calendar::utc()});
    const json parsed = UsageModel::Json::parse(reportJson(empty));
    EXPECT_TRUE(parsed["official"].is_null());
    EXPECT_EQ(parsed["busiestDays"], json::array());
    EXPECT_EQ(parsed["spans"]["allTime"]["byClass"], json::object());
    EXPECT_EQ(parsed["spans"]["allTime"]["total"]["tokens"], 0);
}

} // namespace
} // namespace Report
