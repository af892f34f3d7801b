#include <algorithm>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Alerts/AlertDecision.h"
#include "HarrowlaneApp/Copy/ShownTexts.h"
#include "Pipeline/WatchedHome.h"
#include "UsageEngine/SnapshotChecks.h"
#include "UsageModel/Json.h"
#include "UsageModel/Printing.h"

// A month of somebody who works at two machines, runs into limits, sleeps through a weekend, and flies to another zone.
namespace Pipeline {
namespace {

using HarrowlaneApp::Banner;
using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;
using UsageModel::WindowState;

constexpr double hour = 3600;
constexpr double day = 24 * hour;

void expectWellFormed(const std::string& text) {
    EXPECT_FALSE(text.empty());
    EXPECT_FALSE(text.starts_with(' ') || text.ends_with(' ')) << text;
    for (const char* odd : {"nan", "inf", "  ", "--", "%%", "{", "}"})
        EXPECT_EQ(text.find(odd), std::string::npos) << text;
    for (std::size_t at = text.find('-'); at != std::string::npos; at = text.find('-', at + 1))
        EXPECT_FALSE(at + 1 < text.size() && std::isdigit(static_cast<unsigned char>(text[at + 1])) != 0) << text;
}

/// Holds each step of the month against the one before.
class Month {
public:
    void step(const UsageSnapshot& snapshot, std::size_t events) {
        for (const auto& meter : snapshot.meters) expectCause(meter, events);
        last_ = snapshot.meters;
        lastEvents_ = events;
        alert(snapshot);
    }

    /// The gauge was read since the last step: meters may leap.
    void noteReading() { last_.clear(); }

    [[nodiscard]] std::size_t told(std::int64_t threshold) const {
        const auto found = told_.find(threshold);
        return found == told_.end() ? 0 : found->second.size();
    }
    [[nodiscard]] std::size_t episodes() const { return paceBanners_.size(); }

private:
    /// Between two readings a meter moves with the logs alone, and only up.
    void expectCause(const WindowState& meter, std::size_t events) const {
        if (!meter.confidence.anchored) return;
        const auto before = std::ranges::find(last_, meter.kind, &WindowState::kind);
        if (before == last_.end() || !before->confidence.anchored || before->windowStart != meter.windowStart) return;
        EXPECT_GE(meter.used, before->used);
        if (events == lastEvents_) {
            EXPECT_EQ(meter.used, before->used);
        }
    }

    void alert(const UsageSnapshot& snapshot) {
        // Every step could be the first after a restart.
        using HarrowlaneApp::PersistedState;
        state_ = UsageModel::Json::decode<PersistedState>(UsageModel::Json::encode(state_));
        const auto decision = HarrowlaneApp::decide({.state = state_,
                                                     .snapshot = snapshot,
                                                     .settings = {},
                                                     .bundle = HarrowlaneApp::Bundle::present,
                                                     .authorization = HarrowlaneApp::AuthorizationStatus::authorized});
        state_ = decision.state;
        for (const Banner& banner : decision.banners) {
            expectWellFormed(banner.title);
            expectWellFormed(banner.body);
            if (!countLevel(banner, snapshot)) countPace();
        }
    }

    /// Whether the banner tells a level, which no other one may tell in this occurrence of the window.
    bool countLevel(const Banner& banner, const UsageSnapshot& snapshot) {
        for (const auto& meter : snapshot.meters) {
            for (const std::int64_t threshold : UsageEngine::ThresholdAlerts::defaultThresholds) {
                const UsageEngine::ThresholdAlert alert{.window = meter.kind, .threshold = threshold};
                if (banner.title != alert.title()) continue;
                EXPECT_TRUE(meter.confidence.anchored);
                EXPECT_GE(meter.used, static_cast<double>(threshold) / 100);
                EXPECT_TRUE(told_[threshold].emplace(meter.kind, meter.windowStart.secondsSince1970).second)
                    << banner.title << " twice";
                return true;
            }
        }
        return false;
    }

    /// A breach is announced once at each of the two levels that speak.
    void countPace() {
        ASSERT_TRUE(state_.fsm.overSince);
        EXPECT_LE(++paceBanners_[state_.fsm.overSince->date.secondsSince1970], 2);
    }

    std::vector<WindowState> last_;
    std::size_t lastEvents_ = 0;
    HarrowlaneApp::PersistedState state_;
    std::map<std::int64_t, std::set<std::pair<WindowKind, double>>> told_;
    std::map<double, int> paceBanners_;
};

/// Every other hour of a working day.
bool looksAtTheStatusLine(Date now, const Calendar& calendar) {
    const auto of = calendar.hour(now);
    const bool isWorking = of >= 9 && of < 21 && calendar.weekday(now) % 6 != 1;
    return isWorking && of % 2 == 1 && calendar.settingMinuteToZero(now) == now;
}

TEST(MonthOfAHeavyUser, HoldsWhatTheProgramPromises) {
    const Calendar berlin = *Calendar::inZone("Europe/Berlin");
    const Calendar newYork = *Calendar::inZone("America/New_York");
    const Date end = berlin.instant(absl::CivilSecond(2026, 4, 12));
    const Date begin = end - 30 * day;
    WatchedHome home({.end = end, .calendar = berlin, .people = {5, 9}});
    Month month;
    std::size_t readings = 0;
    for (Date now = begin; now <= end && !testing::Test::HasFailure(); now = now + hour / 2) {
        SCOPED_TRACE(testing::PrintToString(now));
        const double gone = (now - begin) / day;
        if (gone > 11.8 && gone < 14.8) continue; // the lid is closed; the other machine works on
        const Calendar& calendar = gone < 20 ? berlin : newYork;
        home.travel(calendar);
        home.liveUntil(now);
        UsageSnapshot snapshot = home.refresh(now);
        if (looksAtTheStatusLine(now, calendar)) {
            home.readGauge(now);
            month.noteReading();
            ++readings;
            snapshot = home.refresh(now);
            for (const auto& meter : snapshot.meters) EXPECT_EQ(meter.used, home.lastRead(meter.kind, now));
        }
        UsageEngine::expectSound(snapshot);
        for (const std::string& text : TestSupport::shownTexts(snapshot, calendar)) expectWellFormed(text);
        month.step(snapshot, home.events()->size());
    }
    EXPECT_EQ(home.events()->size(), home.turnsInAll());
    EXPECT_EQ(home.limitMessages(), home.limitMessagesInAll());
    EXPECT_GT(readings, 80U);
    for (const std::int64_t threshold : UsageEngine::ThresholdAlerts::defaultThresholds)
        EXPECT_GT(month.told(threshold), 0U) << threshold;
    EXPECT_GT(month.episodes(), 0U);
}

} // namespace
} // namespace Pipeline
