#include "UsageGauge/GaugeReader.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Support/TemporaryFolder.h"

namespace {

using TestSupport::TemporaryFolder;
using UsageGauge::GaugeReader;

constexpr const char* good =
    R"({"capturedAt":1790000000.5,"source":"statusLine","windows":)"
    R"({"five_hour":{"usedPercentage":42,"resetsAt":1790010000},"seven_day":{"usedPercentage":17.5}}})";

TEST(GaugeReader, ReadsWindowsAndAnchors) {
    const TemporaryFolder folder;
    TestSupport::writeFile(folder / "gauge.json", good);
    const GaugeReader reader{folder / "gauge.json"};
    const auto reading = reader.read();
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->capturedAt, 1790000000.5);
    EXPECT_EQ(reading->windows.at("five_hour").usedPercentage, 42.0);
    const auto anchors = reader.anchors();
    ASSERT_EQ(anchors.size(), 2U);
    EXPECT_EQ(anchors[0].window, UsageModel::WindowKind::session5h);
    EXPECT_EQ(anchors[0].resetsAt, UsageModel::Date{1790010000});
    EXPECT_EQ(anchors[1].usedFraction, 0.175);
    EXPECT_FALSE(anchors[1].resetsAt);
}

class NoReading : public testing::TestWithParam<const char*> {};

TEST_P(NoReading, IsNoneAndAssertsNothing) {
    const TemporaryFolder folder;
    TestSupport::writeFile(folder / "gauge.json", GetParam());
    const GaugeReader reader{folder / "gauge.json"};
    EXPECT_FALSE(reader.read());
    EXPECT_TRUE(reader.anchors().empty());
}

INSTANTIATE_TEST_SUITE_P(Contents, NoReading,
                         testing::Values("", R"({"capturedAt":1,"source":"statusLine"})",
                                         R"({"source":"a","windows":{}})", R"({"capturedAt":1,"windows":{}})",
                                         R"({"capturedAt":null,"source":"a","windows":{}})",
                                         R"({"capturedAt":1,"source":"a","windows":{"five_hour":42}})",
                                         R"({"capturedAt":1,"source":"a","windows":{"x":{"resetsAt":"5"}}})",
                                         R"({"capturedAt":1,"source":"a","windows":{}}{})",
                                         R"({"capturedAt":"1","source":"statusLine","windows":{}})",
                                         R"({"capturedAt":1,"source":"statusLine","windows":{"five_)", "[]", "null",
                                         "\xEF\xBB\xBF{\"capturedAt\":1,\"source\":\"a\",\"windows\":{}}",
                                         R"({"capturedAt":1e400,"source":"a","windows":{}})"));

TEST(GaugeReader, AMissingFileAndAFolderAreNoReading) {
    const TemporaryFolder folder;
    for (const auto& path : {folder / "absent.json", folder / "absent/gauge.json", folder.path()}) {
        const GaugeReader reader{path};
        EXPECT_FALSE(reader.read());
        EXPECT_TRUE(reader.anchors().empty());
    }
}

TEST(GaugeReader, TakesTheNameOfThePolledSource) {
    const TemporaryFolder folder;
    TestSupport::writeFile(folder / "gauge.json",
                           R"({"capturedAt":1,"source":"oauth","windows":)"
                           R"({"seven_day_opus":{"usedPercentage":0},"x":{"usedPercentage":1}}})");
    const auto anchors = GaugeReader{folder / "gauge.json"}.anchors();
    ASSERT_EQ(anchors.size(), 1U);
    EXPECT_EQ(anchors[0].source, UsageModel::AnchorSource::oauth);
    EXPECT_EQ(anchors[0].window, UsageModel::WindowKind::weeklyOpus);
}

TEST(GaugeReader, ReadsAReadingThatAssertsNothing) {
    const TemporaryFolder folder;
    TestSupport::writeFile(folder / "gauge.json",
                           R"({"capturedAt":1,"source":"a","windows":{"five_hour":{"resetsAt":5},"seven_day":{}}})");
    const GaugeReader reader{folder / "gauge.json"};
    EXPECT_TRUE(reader.read());
    EXPECT_TRUE(reader.anchors().empty());
}

TEST(GaugeReader, TakesAnOldReadingAsItIs) {
    const TemporaryFolder folder;
    TestSupport::writeFile(folder / "gauge.json", R"({"capturedAt":-1,"source":"a","windows":{}})");
    EXPECT_EQ(GaugeReader{folder / "gauge.json"}.read()->capturedAt, -1.0);
}

TEST(GaugeReader, DoesNotWaitForAPipe) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "gauge.json").c_str(), 0600), 0);
    EXPECT_FALSE(GaugeReader{folder / "gauge.json"}.read());
}

TEST(GaugeReader, RefusesWhatIsLargerThanAnyGauge) {
    constexpr std::size_t largest = 1 << 20;
    const TemporaryFolder folder;
    const GaugeReader reader{folder / "gauge.json"};
    std::string padded = good;
    padded.resize(largest, ' ');
    TestSupport::writeFile(reader.url, padded);
    EXPECT_TRUE(reader.read());
    TestSupport::writeFile(reader.url, padded + ' ');
    EXPECT_FALSE(reader.read());
    // Were it read before it is refused, this would take all memory there is.
    std::filesystem::resize_file(reader.url, std::uintmax_t{1} << 40);
    EXPECT_FALSE(reader.read());
}

TEST(GaugeReader, SurvivesDeepNesting) {
    const TemporaryFolder folder;
    const std::string depth(250000, '[');
    const GaugeReader reader{folder / "gauge.json"};
    TestSupport::writeFile(reader.url, depth);
    EXPECT_FALSE(reader.read());
    TestSupport::writeFile(reader.url, R"({"capturedAt":1,"source":"a","windows":{},"more":)" + depth +
                                           std::string(depth.size(), ']') + "}");
    EXPECT_TRUE(reader.read());
}

TEST(GaugeReader, HasNoMemory) {
    const TemporaryFolder folder;
    const GaugeReader reader{folder / "gauge.json"};
    TestSupport::writeFile(folder / "gauge.json", good);
    EXPECT_TRUE(reader.read());
    TestSupport::writeFile(folder / "gauge.json", "{");
    EXPECT_FALSE(reader.read());
    TestSupport::writeFile(folder / "gauge.json", good);
    EXPECT_TRUE(reader.read());
}

} // namespace
