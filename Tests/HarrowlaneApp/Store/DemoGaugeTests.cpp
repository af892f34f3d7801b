#include "HarrowlaneApp/Store/DemoGauge.h"

#include <gtest/gtest.h>

namespace HarrowlaneApp {
namespace {

TEST(DemoGauge, IsWantedByOneTextAlone) {
    EXPECT_TRUE(wantsDemoGauge("1"));
    for (const char* text : {"", "0", "11", "1 ", " 1", "true", "yes"}) EXPECT_FALSE(wantsDemoGauge(text)) << text;
    EXPECT_FALSE(wantsDemoGauge(nullptr));
}

} // namespace
} // namespace HarrowlaneApp
