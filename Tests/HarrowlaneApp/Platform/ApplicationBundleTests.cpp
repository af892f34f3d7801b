#include "HarrowlaneApp/Platform/ApplicationBundle.h"

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {

namespace {

std::string propertyList(const std::string& content) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">)" +
           content + "</plist>\n";
}

const std::string named = propertyList("<dict><key>CFBundleName</key><string>Meter</string>"
                                       "<key>CFBundleIdentifier</key><string>org.example.Meter</string></dict>");

class ApplicationBundleTest : public testing::Test {
protected:
    [[nodiscard]] std::optional<ApplicationBundle> bundleWith(const std::string& list) {
        TestSupport::writeFile(folder / "Meter.app/Contents/Info.plist", list);
        return ApplicationBundle::containing(folder / "Meter.app/Contents/MacOS/Meter");
    }

    TestSupport::TemporaryFolder folder;
};

TEST_F(ApplicationBundleTest, IsFoundByWhereTheExecutableLies) {
    const auto bundle = bundleWith(named);
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->identifier, "org.example.Meter");
}

TEST_F(ApplicationBundleTest, IsNotTakenFromAFolderOfAnotherShape) {
    for (const char* contents :
         {"Meter/Contents", "Meter.app/Content", "Meter.application/Contents", ".app/Contents"}) {
        TestSupport::writeFile(folder / contents / "Info.plist", named);
        EXPECT_FALSE(ApplicationBundle::containing(folder / contents / "MacOS/Meter")) << contents;
    }
    TestSupport::writeFile(folder / "Meter.app/Contents/Info.plist", named);
    EXPECT_FALSE(ApplicationBundle::containing(folder / "Meter.app/Contents/Helpers/Meter"));
    EXPECT_FALSE(ApplicationBundle::containing(folder / "Meter.app/Contents/MacOS/deeper/Meter"));
    EXPECT_FALSE(ApplicationBundle::containing("Meter"));
    EXPECT_FALSE(ApplicationBundle::containing(""));
}

TEST_F(ApplicationBundleTest, NeedsAnIdentifier) {
    EXPECT_FALSE(ApplicationBundle::containing(folder / "Meter.app/Contents/MacOS/Meter")) << "no list at all";
    EXPECT_FALSE(bundleWith(""));
    EXPECT_FALSE(bundleWith("bplist00"));
    EXPECT_FALSE(bundleWith(propertyList("<dict/>")));
    EXPECT_FALSE(bundleWith(propertyList("<dict><key>CFBundleIdentifier</key><string></string></dict>")));
    EXPECT_FALSE(bundleWith(propertyList("<dict><key>CFBundleIdentifier</key><string> \n</string></dict>")));
    EXPECT_FALSE(bundleWith(propertyList("<dict><key>CFBundleIdentifier</key><integer>7</integer></dict>")));
    EXPECT_FALSE(bundleWith(propertyList("<dict><key>CFBundleIdentifier</key></dict>")));
    EXPECT_FALSE(bundleWith(propertyList("<array><string>CFBundleIdentifier</string></array>")));
}

TEST_F(ApplicationBundleTest, TakesTheIdentifierOfTheListItselfNotOfAnInnerOne) {
    const std::string inner = "<key>Inner</key><dict><key>CFBundleIdentifier</key><string>inner</string></dict>";
    EXPECT_FALSE(bundleWith(propertyList("<dict>" + inner + "</dict>")));
    const auto bundle =
        bundleWith(propertyList("<dict>" + inner + "<key>CFBundleIdentifier</key><string>outer</string></dict>"));
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->identifier, "outer");
}

TEST_F(ApplicationBundleTest, GivesUpOnAListThatIsTorn) {
    for (std::size_t length = 0; length < named.find("</string></dict>"); ++length) {
        EXPECT_FALSE(bundleWith(named.substr(0, length))) << length;
    }
}

TEST(ApplicationBundleOfThisProcess, IsAbsentForABareTestProgram) {
    EXPECT_FALSE(ApplicationBundle::ofThisProcess());
}

} // namespace

} // namespace HarrowlaneApp
