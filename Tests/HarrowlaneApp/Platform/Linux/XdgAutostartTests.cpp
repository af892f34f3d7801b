#include "HarrowlaneApp/Platform/Linux/XdgAutostart.h"

#include <system_error>

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"
#include "UsageModel/Files.h"

namespace HarrowlaneApp {

namespace {

class XdgAutostartTest : public testing::Test {
protected:
    [[nodiscard]] std::string execOf(const std::filesystem::path& program) const {
        XdgAutostart({.folder = place, .program = program}).setEnabled(true);
        const std::string text = UsageModel::readWholeFile(entry);
        const std::size_t start = text.find("Exec=");
        return text.substr(start + 5, text.find('\n', start) - start - 5);
    }

    TestSupport::TemporaryFolder folder;
    std::filesystem::path place = folder / "config/autostart";
    std::filesystem::path entry = place / "app.brindlewick.Brindlewick.desktop";
    XdgAutostart autostart{{.folder = place, .program = "/opt/meter"}};
};

TEST_F(XdgAutostartTest, IsOffUntilItIsSwitchedOn) {
    EXPECT_TRUE(autostart.isAvailable());
    EXPECT_FALSE(autostart.isEnabled());
    autostart.setEnabled(false);
    EXPECT_FALSE(std::filesystem::exists(place));
}

TEST_F(XdgAutostartTest, IsADesktopEntry) {
    autostart.setEnabled(true);
    EXPECT_TRUE(autostart.isEnabled());
    EXPECT_EQ(UsageModel::readWholeFile(entry),
              "[Desktop Entry]\nType=Application\nName=Brindlewick\nExec=\"/opt/meter\"\n"
              "Icon=app.brindlewick.Brindlewick\nTerminal=false\n");
    autostart.setEnabled(false);
    EXPECT_FALSE(autostart.isEnabled());
    EXPECT_TRUE(std::filesystem::is_empty(place));
}

TEST_F(XdgAutostartTest, IsOffWhereTheDesktopSwitchedItOff) {
    for (const char* line : {"Hidden=true", "Hidden = true ", "X-GNOME-Autostart-enabled=false"}) {
        autostart.setEnabled(true);
        TestSupport::appendFile(entry, std::string(line) + "\n");
        EXPECT_FALSE(autostart.isEnabled()) << line;
    }
    autostart.setEnabled(true);
    EXPECT_TRUE(autostart.isEnabled());
    TestSupport::appendFile(entry, "Hidden=false\nX-GNOME-Autostart-enabled=true\nComment=Hidden=true\n");
    EXPECT_TRUE(autostart.isEnabled());
}

struct Row {
    const char* program;
    const char* exec;
};

TEST_F(XdgAutostartTest, QuotesAPathOfAnyKind) {
    for (const Row& row : {Row{"/a b/c", R"("/a b/c")"}, Row{R"(/a"b)", R"("/a\\"b")"},
                           Row{"/a$b`c", R"("/a\\$b\\`c")"}, Row{R"(/a\b)", R"("/a\\\\b")"}, Row{"/a%f", R"("/a%%f")"},
                           Row{"/a\nHidden=true", R"("/a\nHidden=true")"}, Row{"/ä×", "\"/ä×\""}}) {
        EXPECT_EQ(execOf(row.program), row.exec);
    }
}

TEST_F(XdgAutostartTest, FailsAloud) {
    TestSupport::writeFile(folder / "config", "a file where the folder would be");
    EXPECT_THROW(autostart.setEnabled(true), std::system_error);
    EXPECT_FALSE(autostart.isEnabled());
}

} // namespace

} // namespace HarrowlaneApp
