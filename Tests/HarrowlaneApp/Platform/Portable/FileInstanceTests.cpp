#include "HarrowlaneApp/Platform/Portable/FileInstance.h"

#include <QElapsedTimer>
#include <QSysInfo>

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/ChildProcess.h"
#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {

namespace {

using Claim = SingleInstance::Claim;

class FileInstanceTest : public testing::Test {
protected:
    TestSupport::TemporaryFolder folder;
    std::filesystem::path place = folder / "support/instance";
};

TEST_F(FileInstanceTest, TheFirstIsTheFirst) {
    FileInstance first(place);
    EXPECT_EQ(first.claim(), Claim::first);
}

TEST_F(FileInstanceTest, TheSecondMakesTheFirstShowItself) {
    FileInstance first(place);
    int requests = 0;
    QObject::connect(&first, &SingleInstance::showRequested, [&requests] { ++requests; });
    ASSERT_EQ(first.claim(), Claim::first);
    for (int start = 1; start <= 3; ++start) {
        EXPECT_EQ(FileInstance(place).claim(), Claim::shownElsewhere);
        EXPECT_EQ(requests, start);
    }
    EXPECT_FALSE(std::filesystem::exists(place / "show"));
}

TEST_F(FileInstanceTest, APlaceIsFreeAgainOnceTheFirstHasEnded) {
    EXPECT_EQ(FileInstance(place).claim(), Claim::first);
    EXPECT_EQ(FileInstance(place).claim(), Claim::first);
}

TEST_F(FileInstanceTest, OtherPlacesAreOthers) {
    FileInstance first(place);
    FileInstance other(folder / "elsewhere");
    EXPECT_EQ(first.claim(), Claim::first);
    EXPECT_EQ(other.claim(), Claim::first);
}

TEST_F(FileInstanceTest, AFirstThatHangsIsWaitedForNoLongerThanTold) {
    // A lock that this very process holds without listening stands for a program that hangs.
    std::filesystem::create_directories(place);
    QLockFile lock(QString::fromStdString((place / "lock").string()));
    ASSERT_TRUE(lock.tryLock());
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(FileInstance(place).claim(), Claim::unanswered);
    EXPECT_GE(clock.elapsed(), static_cast<qint64>(SingleInstance::answerSeconds * 900))
        << "timers of this length are coarse";
    EXPECT_FALSE(std::filesystem::exists(place / "show")) << "the request would surprise a later start";
}

TEST_F(FileInstanceTest, ALockWhoseProcessWasKilledCountsForNothing) {
    ChildProcess gone({.program = "sleep", .arguments = {"1000"}, .variables = {}});
    ASSERT_TRUE(becomes([&] { return gone.isRunning(); }));
    const std::string pid = std::to_string(gone.processId());
    TestSupport::writeFile(place / "lock", pid + "\nsleep\n" + QSysInfo::machineHostName().toStdString() + "\n");
    gone.kill();
    EXPECT_EQ(FileInstance(place).claim(), Claim::first);
}

TEST_F(FileInstanceTest, ARequestThatWasLeftOverShowsNothing) {
    TestSupport::writeFile(place / "show", "");
    FileInstance first(place);
    int requests = 0;
    QObject::connect(&first, &SingleInstance::showRequested, [&requests] { ++requests; });
    EXPECT_EQ(first.claim(), Claim::first);
    EXPECT_FALSE(std::filesystem::exists(place / "show"));
    QCoreApplication::processEvents();
    EXPECT_EQ(requests, 0);
}

TEST_F(FileInstanceTest, TheLockIsTheOwnersAloneUnderAnyMask) {
    const mode_t before = umask(0);
    FileInstance first(place);
    EXPECT_EQ(first.claim(), Claim::first);
    umask(before);
    EXPECT_EQ(std::filesystem::status(place / "lock").permissions(), std::filesystem::perms{0600});
    EXPECT_EQ(std::filesystem::status(place).permissions(), std::filesystem::perms{0700});
}

TEST_F(FileInstanceTest, AFolderThatCannotBeMadeLocksNobodyOut) {
    TestSupport::writeFile(folder / "support", "a file where the folder would be");
    EXPECT_EQ(FileInstance(place).claim(), Claim::first);
}

} // namespace

} // namespace HarrowlaneApp
