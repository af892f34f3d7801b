#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Copy/ShownTexts.h"
#include "Pipeline/HeavyUser.h"
#include "Pipeline/MonthPromises.h"
#include "Pipeline/RunningProgram.h"
#include "UsageEngine/SnapshotChecks.h"
#include "UsageModel/LiveModel.h"
#include "UsageModel/Printing.h"

// A month of somebody who works at two machines, runs into limits, changes models, shuts the laptop for three days, and
// flies to another zone; and of the program that starts with the laptop every morning.
namespace Pipeline {
namespace {

using HarrowlaneApp::Banner;
using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::ModelClass;
using UsageModel::UsageEvent;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;

constexpr double hour = 3600;
constexpr double day = 24 * hour;

/// What is seen of the month: that all of it took place.
struct Course {
    std::set<std::string> zones;
    int starts = 0;
    int spoiltGauges = 0;
    int readings = 0;
    double longestSleep = 0;
    int looksAtTwoSessions = 0;
    int modelChanges = 0;
    std::optional<ModelClass> model;

    void look(const UsageSnapshot& snapshot) {
        looksAtTwoSessions += snapshot.live.isConcurrent() ? 1 : 0;
        const auto leading = UsageModel::topShare(snapshot.live.byClass);
        if (!leading) return;
        modelChanges += model && *model != leading->first ? 1 : 0;
        model = leading->first;
    }
};

class MonthOfAHeavyUser : public RunningProgram {
protected:
    const Calendar berlin = *Calendar::inZone("Europe/Berlin");
    const Calendar newYork = *Calendar::inZone("America/New_York");
    const Date end = berlin.instant(absl::CivilSecond(2026, 4, 12));
    const Date begin = end - 30 * day;
    /// On a Tuesday.
    const Date asleep = begin + 11.75 * day;
    const Date awake = asleep + 3 * day;
    HeavyUser user{{.begin = begin - 14 * day,
                    .heavyFrom = begin + day,
                    .end = end,
                    .home = berlin,
                    .abroad = newYork,
                    .flight = begin + 20 * day,
                    .asleep = asleep,
                    .awake = awake}};

    void SetUp() override {
        clock_->set(begin);
        user.liveUntil(begin, paths_.sessionLogs());
        start(begin);
    }

    void playUntilTheEnd() {
        for (Date now = begin; now <= end && !HasFailure(); now = next(now)) {
            SCOPED_TRACE(testing::PrintToString(now));
            course.longestSleep = std::max(course.longestSleep, now - clock_->now());
            live(now);
        }
    }

    MeterPromise meters{user};
    BannerPromise banners;
    Course course;

private:
    /// Every half an hour, but for the night.
    [[nodiscard]] Date next(Date now) const {
        const Date then = now + (user.calendar(now).hour(now) < 6 ? 2 : 0.5) * hour;
        return then > asleep && then < awake ? awake : then;
    }

    void start(Date now) {
        calendar_ = user.calendar(now);
        startIn(calendar_);
        course.zones.insert(calendar_.zoneName());
        ++course.starts;
    }

    void live(Date now) {
        arriveAt(now);
        user.liveUntil(now, paths_.sessionLogs());
        tellTheGauge(now);
        const bool isMorning = isAt(6, now) && now != begin;
        if (isMorning || user.calendar(now).zoneName() != calendar_.zoneName()) start(now);
        const UsageSnapshot& snapshot = look();
        UsageEngine::expectSound(snapshot);
        for (const std::string& text : TestSupport::shownTexts(snapshot, calendar_)) expectWellFormed(text);
        for (const auto& cell : snapshot.calendar) EXPECT_EQ(cell.day, calendar_.startOfDay(cell.day));
        meters.look(snapshot, now, reading_);
        course.look(snapshot);
    }

    /// The status line is told every other hour of a working day and soon after lunch, in a session that is young; and
    /// once a day the file goes bad until the next time.
    void tellTheGauge(Date now) {
        const Calendar& calendar = user.calendar(now);
        const int of = calendar.hour(now);
        const bool isWorking = of >= 9 && of < 21 && calendar.weekday(now) % 6 != 1;
        const bool isAfterLunch = of == 14 && !isAt(14, now);
        if (isWorking && ((of % 2 == 1 && isAt(of, now)) || isAfterLunch)) {
            reading_ = user.reading(now);
            Shim::storeGauge(*reading_, paths_.gaugeFile());
            ++course.readings;
        } else if (isWorking && isAt(16, now)) {
            TestSupport::writeFile(paths_.gaugeFile(), R"({"capturedAt":)");
            ++course.spoiltGauges;
        }
    }
    [[nodiscard]] bool isAt(int of, Date now) const {
        const Calendar& calendar = user.calendar(now);
        return calendar.hour(now) == of && calendar.settingMinuteToZero(now) == now;
    }

    void seePublished() override {
        for (; judged_ < service_.posted.size(); ++judged_) banners.post(service_.posted[judged_], store_->snapshot());
        banners.publish(store_->snapshot());
    }

    Calendar calendar_ = berlin;
    std::optional<UsageModel::GaugeReading> reading_;
    std::size_t judged_ = 0;
};

/// What the program has kept of a month.
class MonthKept {
public:
    MonthKept(const UsageIngest::EventList& events, const HeavyUser& user, Date begin) {
        for (const UsageEvent& event : *events) {
            if (event.ts < begin) continue;
            const Calendar& calendar = user.calendar(event.ts);
            ++turns_[{calendar.startOfDay(event.ts).secondsSince1970, calendar.weekday(event.ts)}];
            classes_[std::string(event.sessionId.view())].insert(event.modelClass);
        }
    }

    /// How many days of a kind have so many turns.
    [[nodiscard]] std::ptrdiff_t days(bool atWeekend, int fewest, int most) const {
        return std::ranges::count_if(turns_, [=](const auto& entry) {
            return (entry.first.second % 6 == 1) == atWeekend && entry.second >= fewest && entry.second <= most;
        });
    }
    [[nodiscard]] std::ptrdiff_t sessionsOfSeveralModels() const {
        return std::ranges::count_if(classes_, [](const auto& entry) { return entry.second.size() > 1; });
    }

private:
    std::map<std::pair<double, int>, int> turns_;
    std::map<std::string, std::set<ModelClass>> classes_;
};

TEST_F(MonthOfAHeavyUser, HoldsWhatTheProgramPromises) {
    playUntilTheEnd();
    ASSERT_FALSE(HasFailure());

    const auto records = recordsLeft();
    const auto events = records->allEvents();
    EXPECT_EQ(events->size(), user.turns().size());
    const MonthKept kept(events, user, begin);
    EXPECT_GE(kept.days(false, 200, 1000), 15) << "hundreds of turns a day";
    EXPECT_GE(kept.days(true, 1, 100), 3);
    EXPECT_EQ(kept.days(true, 101, 10'000), 0) << "the weekends are calm";
    EXPECT_GE(kept.sessionsOfSeveralModels(), 20);

    const auto anchors = records->anchors();
    EXPECT_EQ(anchors.size(), user.ceilings().size());
    std::map<WindowKind, int> ceilings;
    for (const auto& anchor : anchors) ceilings[anchor.window] += anchor.ts >= begin ? 1 : 0;
    EXPECT_GE(ceilings[WindowKind::session5h], 5);
    EXPECT_GE(ceilings[WindowKind::weeklyAll], 1);
    EXPECT_GE(ceilings[WindowKind::weeklyOpus], 1);

    EXPECT_EQ(course.zones.size(), 2U);
    EXPECT_GE(course.starts, 28);
    EXPECT_GE(course.longestSleep, 3 * day - hour);
    EXPECT_GE(
        std::ranges::count_if(user.turns(), [&](const auto& turn) { return turn.at > asleep && turn.at < awake; }), 200)
        << "the other machine works on";
    EXPECT_GE(course.looksAtTwoSessions, 200);
    EXPECT_GE(course.modelChanges, 20);
    EXPECT_GE(course.readings, 80);
    EXPECT_GE(course.spoiltGauges, 15);

    EXPECT_GE(meters.occurrences(WindowKind::session5h), 30U);
    EXPECT_GE(meters.occurrences(WindowKind::weeklyAll), 4U);
    EXPECT_GE(meters.stepsByLogs(), 300);
    EXPECT_GE(meters.looksWithoutReading(), 100);
    EXPECT_GE(meters.looksWithHeldCap(), 1);
    for (const std::int64_t threshold : UsageEngine::ThresholdAlerts::defaultThresholds)
        EXPECT_GE(banners.told(threshold), 1) << threshold;
    EXPECT_GE(banners.told(Banner::Urgency::active), 1);
    EXPECT_GE(banners.told(Banner::Urgency::timeSensitive), 5);
}

} // namespace
} // namespace Pipeline
