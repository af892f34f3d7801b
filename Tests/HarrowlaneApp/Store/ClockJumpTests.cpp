// The machine sleeps and wakes, travels, and has its clock set: no burst of runs, no banner twice, no span below zero.

#include <set>

#include <gmock/gmock.h>

#include <QRegularExpression>

#include "HarrowlaneApp/Copy/ShownTexts.h"
#include "HarrowlaneApp/Store/StoreOnARealHome.h"

namespace HarrowlaneApp {
namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::UsageSnapshot;

constexpr double hour = 3600.0;
constexpr double day = 24.0 * hour;

class ClockJumps : public StoreOnARealHome {
protected:
    void SetUp() override {
        // Two weeks of work, so that there is a forecast to speak of.
        for (int back = 14 * 24; back > 0; --back) {
            TestSupport::appendFile(log(), TestSupport::loggedTurn(start - back * hour, ++turns_));
        }
        writeGauge(96.0, start + 2.0 * hour);
        openAndRun();
        expectSaneTexts();
        ASSERT_EQ(levelBanners().size(), 1U);
    }

    void expectSaneTexts(const Calendar& calendar = Calendar::utc()) {
        static const QRegularExpression belowZero(QStringLiteral(R"((^|[^0-9A-Za-z])(-|−)\s*[0-9])"));
        // How much of a week is over that is yet to begin: such a clock is wrong, and the figure says so.
        static const QRegularExpression shareOfTheWeek(QStringLiteral("-[0-9]+% (of the week )?elapsed"));
        std::vector<std::string> texts = TestSupport::shownTexts(store_->snapshot(), calendar);
        for (const Banner& banner : service_.posted) texts.insert(texts.end(), {banner.title, banner.body});
        for (const std::string& text : texts) {
            EXPECT_FALSE(QString::fromStdString(text).remove(shareOfTheWeek).contains(belowZero)) << text;
            EXPECT_EQ(text.find("nan"), std::string::npos) << text;
            EXPECT_EQ(text.find("inf"), std::string::npos) << text;
        }
    }

    /// One run for the waking and one that `runAfter` asks for, perhaps another for the state of the alerts, and none
    /// for what was slept through.
    void expectNoBurst(int runsBefore) const {
        EXPECT_GT(published_, runsBefore);
        EXPECT_LE(published_, runsBefore + 4);
    }

    void wakeAfter(double jump) {
        const Date set = clock_->now() + jump;
        SCOPED_TRACE(jump);
        const int runs = published_;
        clock_->set(set - 30.0);
        runAfter(30.0);
        expectNoBurst(runs);
        EXPECT_EQ(store_->snapshot().generatedAt, set);
        expectSaneTexts();
    }

    [[nodiscard]] std::vector<std::string> levelBanners() const {
        std::vector<std::string> titles;
        for (const Banner& banner : service_.posted) {
            if (banner.identifier.starts_with("hwl-level-")) titles.push_back(banner.title);
        }
        return titles;
    }
};

TEST_F(ClockJumps, EightHoursOfSleepAreOneRun) {
    const int runs = published_;
    runAfter(8.0 * hour);
    expectNoBurst(runs);
    EXPECT_EQ(store_->snapshot().generatedAt, start + 8.0 * hour);
    expectSaneTexts();
    EXPECT_EQ(levelBanners().size(), 1U) << "what the gauge said before the sleep is no news";
    runAfter(30.0);
    EXPECT_EQ(levelBanners().size(), 1U);
}

TEST_F(ClockJumps, AClockThatIsSetALittleBackAndForthPostsNothing) {
    const std::size_t before = service_.posted.size();
    for (const double jump : {-10.0 * 60.0, 10.0 * 60.0, -hour, hour}) wakeAfter(jump);
    EXPECT_EQ(service_.posted.size(), before);
}

TEST_F(ClockJumps, AClockThatIsSetADayBackAndForthRepeatsNoLevel) {
    for (const double jump : {-day, day, -day, day}) wakeAfter(jump);
    EXPECT_EQ(levelBanners(), std::vector<std::string>{"95% of your session limit used"});
    // A day before, the pace was fine; back again its breach begins anew, in the place of the banner that told it.
    std::set<std::string> identifiers;
    for (const Banner& banner : service_.posted) identifiers.insert(banner.identifier);
    EXPECT_EQ(identifiers.size(), 2U) << testing::PrintToString(identifiers);
}

TEST_F(ClockJumps, AClockThatIsFarOffSaysNothingAbsurd) {
    for (const double jump : {3.0 * 365.0 * day, -3.0 * 365.0 * day, -60.0 * day, 60.0 * day, -56.0 * 365.0 * day,
                              56.0 * 365.0 * day, 6.9 * day, -6.9 * day, 5.0 * hour, -5.0 * hour}) {
        wakeAfter(jump);
    }
    EXPECT_EQ(store_->lastError(), std::nullopt);
    EXPECT_EQ(store_->snapshot().generatedAt, start) << "and it finds back";
}

TEST_F(ClockJumps, ATripThroughZonesRepeatsNoBanner) {
    for (const char* zone : {"Pacific/Kiritimati", "Pacific/Pago_Pago", "Asia/Kathmandu", "Europe/Berlin"}) {
        store_.reset();
        published_ = 0;
        const Calendar calendar = Calendar::inZone(zone).value();
        open(calendar);
        ASSERT_TRUE(becomes([&] { return published_ > 0 && rests(); }));
        expectSaneTexts(calendar);
        EXPECT_EQ(levelBanners().size(), 1U) << zone;
        clock_->turn(0.0);
    }
}

TEST_F(ClockJumps, AZoneThatChangesUnderARunningStoreChangesNothing) {
    const UsageSnapshot before = store_->snapshot();
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "Pacific/Kiritimati");
    tzset();
    const int runs = published_;
    store_->refresh();
    EXPECT_TRUE(becomes([&] { return published_ > runs; }));
    EXPECT_EQ(store_->snapshot(), before);
    if (zone.isNull()) {
        qunsetenv("TZ");
    } else {
        qputenv("TZ", zone);
    }
    tzset();
}

} // namespace
} // namespace HarrowlaneApp
