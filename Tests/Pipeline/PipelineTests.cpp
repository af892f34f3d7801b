#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "Pipeline/OfficialCount.h"
#include "Pipeline/RunningProgram.h"
#include "Pipeline/WatchedHome.h"
#include "UsageEngine/SnapshotChecks.h"
#include "UsageModel/Printing.h"

namespace Pipeline {
namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::UsageSnapshot;

constexpr double hour = 3600;
constexpr double day = 24 * hour;
constexpr double week = 7 * day;

struct Row {
    const char* name;
    const char* zone;
    /// Four weeks end here, within which the zone's clock changes.
    absl::CivilDay end;
};

class FourWeeks : public RunningProgram, public testing::WithParamInterface<Row> {
protected:
    const Calendar calendar = *Calendar::inZone(GetParam().zone);
    const Date end = calendar.instant(absl::CivilSecond(GetParam().end));
    const Date begin = end - 4 * week;
    WatchedHome home{paths_, end};

    void SetUp() override {
        clock_->set(begin);
        home.liveUntil(begin);
        startIn(calendar);
    }

    /// All that was spent is told, on days of the zone.
    void expectAllDays(const UsageSnapshot& snapshot) {
        double spent = 0;
        for (const auto& event : *home.events()) spent += weightOf(event);
        double told = 0;
        for (const auto& cell : snapshot.calendar) {
            told += cell.weighted;
            EXPECT_EQ(cell.day, calendar.startOfDay(cell.day));
        }
        EXPECT_NEAR(told, spent, 1e-9 * spent);
    }

    /// The models, the sessions and the line of the week tell the same.
    void expectOneWeek(const UsageSnapshot& snapshot) {
        const auto& series = *snapshot.weekSeries;
        double spent = 0;
        for (const auto& event : *home.events()) {
            if (event.ts >= series.windowStart && event.ts < snapshot.generatedAt) spent += weightOf(event);
        }
        EXPECT_NEAR(snapshot.models.total(), spent, 1e-9);
        const double unit = spent > 0 ? series.actual.back().used / spent : 0;
        double ofSessions = 0;
        for (const auto& bar : series.sessions) ofSessions += bar.weeklyCost;
        EXPECT_GE(ofSessions, unit * spent * (1 - 1e-9)) << "a session that began before the week counts whole";
    }

    /// Right after a reading the meters say what it says, and the line leads there.
    void expectReading(const UsageSnapshot& snapshot) {
        ASSERT_EQ(snapshot.meters.size(), 2U);
        for (const auto& meter : snapshot.meters) {
            EXPECT_TRUE(meter.confidence.anchored);
            EXPECT_EQ(std::fmod(meter.windowStart.secondsSince1970, nominalDuration(meter.kind)), 0);
            EXPECT_LE(meter.used, 1);
        }
        const auto& series = *snapshot.weekSeries;
        if (series.usedNow > 0) {
            EXPECT_NEAR(series.actual.back().used, series.usedNow, 1e-9);
        }
        for (const auto& bar : series.sessions) {
            EXPECT_TRUE(!bar.isCurrent || bar.capBasis != UsageModel::SessionCapBasis::liveGauge ||
                        bar.fillFraction == snapshot.meters.front().used)
                << "the running bar is the meter";
        }
    }
};

TEST_P(FourWeeks, EverySnapshotIsSound) {
    constexpr double step = 6 * hour;
    int anchored = 0;
    int stale = 0;
    int breaching = 0;
    double fullest = 0;
    for (Date now = begin; now <= end && !HasFailure(); now = now + step) {
        SCOPED_TRACE(testing::PrintToString(now));
        arriveAt(now);
        home.liveUntil(now);
        UsageSnapshot snapshot = look();
        // The person looks at the status line by day; at the weekend not at all.
        if (calendar.hour(now) >= 9 && calendar.weekday(now) % 6 != 1) {
            home.readGauge(clock_->now());
            snapshot = look();
            expectReading(snapshot);
        }
        UsageEngine::expectSound(snapshot);
        expectAllDays(snapshot);
        if (snapshot.weekSeries) expectOneWeek(snapshot);
        for (const auto& meter : snapshot.meters) {
            ++(meter.confidence.anchored ? anchored : stale);
            fullest = std::max(fullest, meter.used);
        }
        breaching += snapshot.bindingProjection.willBreachBeforeReset ? 1 : 0;
    }
    const auto records = recordsLeft();
    EXPECT_EQ(records->allEvents()->size(), home.turnsInAll());
    EXPECT_EQ(records->anchors().size(), home.limitMessagesInAll());
    EXPECT_GT(anchored, 0);
    EXPECT_GT(stale, 0);
    EXPECT_GT(breaching, 0) << "the limits must be near what is spent, else nothing is tested";
    EXPECT_GT(fullest, 0.5);
}

INSTANTIATE_TEST_SUITE_P(
    Zones, FourWeeks,
    testing::Values(Row{"even days", "UTC", absl::CivilDay(2026, 3, 20)},
                    Row{"an hour forward", "Europe/Berlin", absl::CivilDay(2026, 4, 12)},
                    Row{"an hour back", "Europe/Berlin", absl::CivilDay(2026, 11, 8)},
                    Row{"half an hour back", "Australia/Lord_Howe", absl::CivilDay(2026, 4, 19)},
                    Row{"half an hour forward", "Australia/Lord_Howe", absl::CivilDay(2026, 10, 18)},
                    Row{"a day that was skipped", "Pacific/Apia", absl::CivilDay(2012, 1, 15)},
                    Row{"a midnight that is skipped", "America/Havana", absl::CivilDay(2026, 3, 22)},
                    Row{"a midnight that comes twice", "America/Havana", absl::CivilDay(2026, 11, 15)}),
    [](const auto& row) {
        std::string name = row.param.name;
        std::ranges::replace(name, ' ', '_');
        return name;
    });

} // namespace
} // namespace Pipeline
