#include "HarrowlaneApp/Alerts/AlertStateFile.h"

#include <limits>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "HarrowlaneApp/Alerts/Snapshots.h"
#include "Support/TemporaryFolder.h"
#include "UsageModel/Files.h"

namespace HarrowlaneApp {
namespace {

namespace fs = std::filesystem;
using TestSupport::writeFile;
using UsageEngine::AlertLevel;
using UsageEngine::StoredInstant;
using UsageModel::readWholeFile;

constexpr const char* machine =
    R"({"sustainSeconds":60,"criticalWithinSeconds":70,"level":2,"overSince":794016000.5,"highestFired":2})";
constexpr const char* levels =
    R"({"thresholds":[80,99],"episodes":{"weeklyAll":{"windowStart":794016000,"highestFired":80}}})";

PersistedState told() {
    PersistedState state;
    state.fsm.level = AlertLevel::critical;
    state.fsm.highestFired = AlertLevel::critical;
    state.fsm.overSince = StoredInstant{moment};
    state.thresholds.episodes["weeklyAll"] = {.windowStart = {moment - 3600.0}, .highestFired = 95};
    return state;
}

class AlertStateFileTest : public testing::Test {
protected:
    TestSupport::TemporaryFolder folder;
    fs::path path = folder / "a folder/notification-state.json";
    AlertStateFile file{path};

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& entry : fs::directory_iterator(path.parent_path())) all.push_back(entry.path().filename());
        return all;
    }
    /// Whether `work` changes what the folder lists, be it for a moment.
    [[nodiscard]] bool touchesFolder(const std::function<void()>& work) const {
        // A clock that has not ticked since would tell nothing.
        const fs::file_time_type longAgo{};
        fs::last_write_time(path.parent_path(), longAgo);
        work();
        return fs::last_write_time(path.parent_path()) != longAgo;
    }
};

TEST_F(AlertStateFileTest, GivesBackWhatWasSaved) {
    file.save(told(), moment);
    EXPECT_EQ(AlertStateFile(path).load(), told());
}

TEST_F(AlertStateFileTest, IsANewStateWhereThereIsNone) {
    EXPECT_EQ(file.load(), PersistedState{});
    EXPECT_FALSE(fs::exists(path)) << "reading makes nothing";
}

TEST_F(AlertStateFileTest, HoldsTheTwoKeysWithInstantsFrom2001) {
    file.save(told(), moment);
    EXPECT_EQ(readWholeFile(path),
              R"({"fsm":{"criticalWithinSeconds":86400.0,"highestFired":3,"level":3,"overSince":794016000.75,)"
              R"("sustainSeconds":1800.0},"thresholds":{"episodes":{"weeklyAll":{"highestFired":95,)"
              R"("windowStart":794012400.75}},"thresholds":[90,95,99]}})");
}

TEST_F(AlertStateFileTest, IsTheOwnersAlone) {
    file.save(told(), moment);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(path.parent_path()).permissions(), fs::perms::owner_all);
}

TEST_F(AlertStateFileTest, LeavesNothingBesideIt) {
    file.save(told(), moment);
    file.save({}, moment);
    EXPECT_THAT(names(), testing::ElementsAre("notification-state.json"));
}

TEST_F(AlertStateFileTest, KeepsTheValuesThatItWasWrittenWith) {
    writeFile(path, std::string(R"({"fsm":)") + machine + R"(,"thresholds":)" + levels + "}");
    const PersistedState state = file.load();
    EXPECT_EQ(state.fsm.sustainSeconds, 60);
    EXPECT_EQ(state.fsm.criticalWithinSeconds, 70);
    EXPECT_EQ(state.fsm.overSince, StoredInstant{UsageModel::Date{794016000.5 + 978307200}});
    EXPECT_THAT(state.thresholds.thresholds, testing::ElementsAre(80, 99));
    EXPECT_EQ(state.thresholds.fired(UsageModel::WindowKind::weeklyAll), 80);
}

TEST_F(AlertStateFileTest, OfTheFormerFormGivesItsMachineAndNewThresholds) {
    writeFile(path, machine);
    const PersistedState state = file.load();
    EXPECT_EQ(state.fsm.sustainSeconds, 60);
    EXPECT_EQ(state.fsm.highestFired, AlertLevel::headsUp);
    EXPECT_EQ(state.thresholds, UsageEngine::ThresholdAlerts{});

    file.save(state, moment);
    const auto form = nlohmann::json::parse(readWholeFile(path));
    EXPECT_EQ(form.size(), 2U);
    EXPECT_EQ(form.at("fsm"), nlohmann::json::parse(machine));
    EXPECT_EQ(file.load(), state);
}

class CorruptState : public AlertStateFileTest, public testing::WithParamInterface<std::string> {};

TEST_P(CorruptState, IsIgnoredAndOverwritten) {
    writeFile(path, GetParam());
    EXPECT_EQ(file.load(), PersistedState{});
    file.save(told(), moment);
    EXPECT_EQ(file.load(), told());
}

INSTANTIATE_TEST_SUITE_P(
    Contents, CorruptState,
    testing::Values("", " ", "null", "[]", "7", "{}", "{", "\xFF\xFE", std::string(5, '\0'),
                    std::string(R"({"fsm":)") + machine + "}", std::string(R"({"thresholds":)") + levels + "}",
                    std::string(R"({"fsm":)") + machine + R"(,"thresholds":)" + levels + "}x",
                    std::string(R"({"fsm":)") + machine + R"(,"thresholds":)" + levels,
                    std::string(R"({"fsm":{},"thresholds":)") + levels + "}",
                    std::string(R"({"fsm":)") + machine + R"(,"thresholds":null})",
                    std::string("\xEF\xBB\xBF") + R"({"fsm":)" + machine + R"(,"thresholds":)" + levels + "}",
                    std::string(300000, '['),
                    R"({"sustainSeconds":60,"criticalWithinSeconds":70,"level":9,"highestFired":2})"));

TEST_F(AlertStateFileTest, TornAnywhereIsAStateAllTheSame) {
    file.save(told(), moment);
    const std::string whole = readWholeFile(path);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        writeFile(path, whole.substr(0, length));
        EXPECT_EQ(file.load(), PersistedState{}) << length;
    }
}

TEST_F(AlertStateFileTest, ThatIsTooLargeForOneIsNotRead) {
    file.save(told(), moment);
    constexpr std::size_t largest = 1 << 20;
    std::string padded = readWholeFile(path);
    padded.resize(largest, ' ');
    writeFile(path, padded);
    EXPECT_EQ(file.load(), told());
    writeFile(path, padded + ' ');
    EXPECT_EQ(file.load(), PersistedState{});
    // Were it read before it is refused, this would take all memory there is.
    fs::resize_file(path, std::uintmax_t{1} << 40);
    EXPECT_EQ(file.load(), PersistedState{});
    file.save(told(), moment);
    EXPECT_EQ(file.load(), told());
}

TEST_F(AlertStateFileTest, IsNotTakenFromAPipeWhichMightNeverEnd) {
    fs::create_directories(path.parent_path());
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(file.load(), PersistedState{});
    file.save(told(), moment);
    EXPECT_EQ(file.load(), told());
}

TEST_F(AlertStateFileTest, IsNotTouchedWhileItHoldsTheStateAlready) {
    file.save(told(), moment);
    const auto before = UsageModel::fileStat(path);
    EXPECT_FALSE(touchesFolder([&] { file.save(told(), moment + 30.0); })) << "that would ask for the next refresh";
    EXPECT_EQ(UsageModel::fileStat(path), before);
    EXPECT_TRUE(touchesFolder([&] { file.save({}, moment + 60.0); }));
}

TEST_F(AlertStateFileTest, ComesBackWhereSomebodyRemovedIt) {
    file.save(told(), moment);
    fs::remove(path);
    file.save(told(), moment + 30.0);
    EXPECT_EQ(file.load(), told());
}

TEST_F(AlertStateFileTest, IsReplacedAsAWhole) {
    file.save(told(), moment);
    const fs::path kept = folder / "kept";
    fs::create_hard_link(path, kept);
    file.save({}, moment);
    EXPECT_EQ(AlertStateFile(kept).load(), told()) << "whoever had it open still reads the old state";
    EXPECT_EQ(file.load(), PersistedState{});
}

TEST_F(AlertStateFileTest, ThatCannotBeReplacedIsLeftAloneForAWhile) {
    fs::create_directories(path / "in the way");
    file.save(told(), moment);
    EXPECT_THAT(names(), testing::ElementsAre("notification-state.json")) << "nothing is left of the attempt";
    EXPECT_EQ(file.load(), PersistedState{});

    EXPECT_FALSE(touchesFolder([&] { file.save(told(), moment + 19.0); })) << "that would ask for the next refresh";
    EXPECT_FALSE(touchesFolder([&] { file.save(told(), moment - 19.0); }));
    EXPECT_TRUE(touchesFolder([&] { file.save(told(), moment + 20.0); }));

    fs::remove_all(path);
    file.save(told(), moment + 40.0);
    EXPECT_EQ(file.load(), told());
    file.save({}, moment + 25.0);
    EXPECT_EQ(file.load(), PersistedState{}) << "a success ends the pause, also for a clock that was set back";
}

TEST_F(AlertStateFileTest, DoesNotWaitForAClockThatWasSetBackForLong) {
    fs::create_directories(path);
    file.save(told(), moment);
    fs::remove(path);
    file.save(told(), moment - 86400.0);
    EXPECT_EQ(file.load(), told());
}

TEST_F(AlertStateFileTest, WithoutAFolderThatCanBeMadeIsNotWritten) {
    writeFile(folder / "a folder", "a file");
    file.save(told(), moment);
    EXPECT_EQ(file.load(), PersistedState{});
    EXPECT_EQ(readWholeFile(folder / "a folder"), "a file");
}

TEST_F(AlertStateFileTest, KeepsTheLastStateThatCouldBeWritten) {
    file.save(told(), moment);
    PersistedState impossible;
    impossible.fsm.overSince = StoredInstant{UsageModel::Date{std::numeric_limits<double>::infinity()}};
    file.save(impossible, moment + 30.0);
    EXPECT_EQ(file.load(), told());
}

} // namespace
} // namespace HarrowlaneApp
