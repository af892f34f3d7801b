#include "UsageGauge/GaugeReader.h"

#include <gtest/gtest.h>

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
                                         R"({"capturedAt":"1","source":"statusLine","windows":{}})",
                                         R"({"capturedAt":1,"source":"statusLine","windows":{"five_)", "[]", "null",
                                         "\xEF\xBB\xBF{\"capturedAt\":1,\"source\":\"a\",\"windows\":{}}",
                                         R"({"capturedAt":1e400,"source":"a","windows":{}})"));

TEST(GaugeReader, MissingFileFolderAndHugeFileAreNone) {
    const TemporaryFolder folder;
    EXPECT_FALSE(GaugeReader{folder / "absent.json"}.read());
    EXPECT_FALSE(GaugeReader{folder.path()}.read());
    TestSupport::writeFile(folder / "gauge.json", std::string(good) + std::string(2 << 20, ' '));
    EXPECT_FALSE(GaugeReader{folder / "gauge.json"}.read());
}

TEST(GaugeReader, HasNoMemory) {
    const TemporaryFolder folder;
    const GaugeReader reader{folder / "gauge.json"};
    TestSupport::writeFile(folder / "gauge.json", good);
    EXPECT_TRUE(reader.read());
    TestSupport::writeFile(folder / "gauge.json", "{");
    EXPECT_FALSE(reader.read());
}

} // namespace
