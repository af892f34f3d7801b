#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>

#include <QImage>

#include <gtest/gtest.h>

#include "ProgramRun.h"
#include "Support/TemporaryFolder.h"

namespace {

using ShellTests::Outcome;
using ShellTests::runProgramIn;

Outcome runProgram(const std::string& arguments) {
    return runProgramIn("/", arguments);
}

struct Row {
    const char* arguments;
    const char* line;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.arguments;
}

class EntryPoint : public testing::TestWithParam<Row> {};

TEST_P(EntryPoint, SaysInOneLineWhatItCannotDoHere) {
    const Outcome outcome = runProgram(GetParam().arguments);
    EXPECT_EQ(outcome.output, std::string(GetParam().line) + "\n");
    EXPECT_EQ(outcome.status, 0);
}

constexpr const char* application = "no display to live on; brindlewick-report shows the numbers in a terminal";

INSTANTIATE_TEST_SUITE_P(
    Jobs, EntryPoint,
    testing::Values(Row{"", application}, Row{"--dump-chart", application}, Row{"--unknown", application},
                    Row{"--notify-test", "not bundled — run the binary inside Brindlewick.app"},
                    Row{"--notify-test --dump-ui x", "not bundled — run the binary inside Brindlewick.app"}));

TEST(Display, IsAskedBeforeTheProgramCountsOnIt) {
    const std::string line = std::string(application) + "\n";
    EXPECT_EQ(ShellTests::runProgramIn("/", "", "DISPLAY=").output, line);
    EXPECT_EQ(ShellTests::runProgramIn("/", "", "DISPLAY=:9999").output, line);
    EXPECT_EQ(ShellTests::runProgramIn("/", "", "WAYLAND_DISPLAY=nowhere-at-all").output, line);
}

class ImageJobs : public testing::Test {
protected:
    TestSupport::TemporaryFolder folder;

    void expectLine(const std::string& arguments, const std::string& line) const {
        const Outcome outcome = runProgramIn(folder.path(), arguments);
        EXPECT_EQ(outcome.output, line + "\n");
        EXPECT_EQ(outcome.status, 0);
    }

    [[nodiscard]] QImage image(const std::string& name) const {
        return QImage(QString::fromStdString((folder.path() / name).string()));
    }
};

TEST_F(ImageJobs, WriteTheMeterWithoutADisplay) {
    expectLine("--dump-meter a.png", "wrote a.png");
    EXPECT_GT(image("a.png").width(), 1000);
}

TEST_F(ImageJobs, RunOneAtATime) {
    expectLine("--dump-meter a.png --dump-ui b", "wrote a.png");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "b"));
}

TEST_F(ImageJobs, WriteTheMenuBarAtItsScale) {
    expectLine("--dump-menubar out.png --scale 1", "wrote out.png");
    const QImage one = image("out.png");
    ASSERT_FALSE(one.isNull());
    for (const char* fallback : {"", " --scale abc", " --scale"}) {
        expectLine(std::string("--dump-menubar out.png") + fallback, "wrote out.png");
        EXPECT_EQ(image("out.png").size(), one.size() * 4) << fallback;
    }
}

TEST_F(ImageJobs, HaveNoImageAtAScaleThatAllowsNone) {
    for (const char* scale : {"0", "-1", "1e300"}) {
        expectLine(std::string("--dump-menubar out.png --scale ") + scale,
                   "no image for out.png (needs a GUI session)");
        EXPECT_FALSE(std::filesystem::exists(folder.path() / "out.png")) << scale;
    }
}

TEST_F(ImageJobs, SayWhatCannotBeWritten) {
    expectLine("--dump-meter missing/a.png", "could not write missing/a.png");
    expectLine("--dump-meter .", "could not write .");
    expectLine("--dump-meter ''", "could not write ");
}

TEST_F(ImageJobs, WriteTheIconSetIntoANewFolder) {
    const Outcome outcome = runProgramIn(folder.path(), "--dump-iconset deep/er");
    EXPECT_EQ(outcome.output, "wrote icon_16x16.png\nwrote icon_16x16@2x.png\n"
                              "wrote icon_32x32.png\nwrote icon_32x32@2x.png\n"
                              "wrote icon_128x128.png\nwrote icon_128x128@2x.png\n"
                              "wrote icon_256x256.png\nwrote icon_256x256@2x.png\n"
                              "wrote icon_512x512.png\nwrote icon_512x512@2x.png\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(image("deep/er/icon_16x16.png").width(), 16);
    EXPECT_EQ(image("deep/er/icon_512x512@2x.png").width(), 1024);
}

TEST_F(ImageJobs, FailFileByFileWhereTheFolderCannotBeMade) {
    std::ofstream(folder.path() / "taken") << "a file";
    const Outcome outcome = runProgramIn(folder.path(), "--dump-iconset taken");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 10);
    EXPECT_TRUE(outcome.output.starts_with("could not write icon_16x16.png\n"));
}

TEST_F(ImageJobs, ReplaceWhatWasThere) {
    std::ofstream(folder.path() / "a.png") << std::string(5'000'000, 'x');
    expectLine("--dump-menubar a.png --scale 1", "wrote a.png");
    EXPECT_LT(std::filesystem::file_size(folder.path() / "a.png"), 100'000U);
}

} // namespace
