#include "Pipeline/MonthPromises.h"

#include <algorithm>
#include <cctype>

#include <gtest/gtest.h>

#include "UsageEngine/ThresholdAlerts.h"
#include "UsageModel/Printing.h"

namespace Pipeline {

namespace {

using HarrowlaneApp::Banner;
using UsageModel::Date;
using UsageModel::GaugeReading;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;
using UsageModel::WindowState;

/// Sums in another order differ in their last digits; a turn moves a meter by a thousandth or so.
constexpr double tolerance = 1e-9;
constexpr double highestMeter = 1.5;

std::optional<std::int64_t> highestReached(double used) {
    std::optional<std::int64_t> highest;
    for (const std::int64_t threshold : UsageEngine::ThresholdAlerts::defaultThresholds) {
        if (100 * used >= static_cast<double>(threshold)) highest = threshold;
    }
    return highest;
}

} // namespace

void expectWellFormed(const std::string& text) {
    EXPECT_FALSE(text.empty());
    EXPECT_FALSE(text.starts_with(' ') || text.ends_with(' ')) << text;
    for (const char* odd : {"nan", "inf", "  ", "--", "%%", "{", "}"})
        EXPECT_EQ(text.find(odd), std::string::npos) << text;
    for (std::size_t at = text.find('-'); at != std::string::npos; at = text.find('-', at + 1))
        EXPECT_FALSE(at + 1 < text.size() && std::isdigit(static_cast<unsigned char>(text[at + 1])) != 0) << text;
}

void MeterPromise::look(const UsageSnapshot& snapshot, Date written, const std::optional<GaugeReading>& reading) {
    const bool isNewReading = reading && reading != reading_;
    const std::size_t ceilings = user_.ceilingsTold();
    writtenBefore_ = written_;
    written_ = written;
    reading_ = reading;
    expectNewsForTheCap(snapshot.sessionCapInLogUnits, isNewReading || ceilings > ceilings_);
    EXPECT_EQ(snapshot.meters.size(), UsageModel::caseCount<WindowKind>);
    for (const WindowState& meter : snapshot.meters) {
        SCOPED_TRACE(text(meter.kind));
        const Seen seen{.meter = meter, .scale = scaleInForce(meter)};
        expectExplained(seen, isNewReading);
        before_.insert_or_assign(meter.kind, seen);
    }
    ceilings_ = ceilings;
}

/// What a full session is worth is learnt from readings and ceilings alone, stays, and is near what the service grants:
/// a session that is told from the logs may begin some minutes apart from the official one.
void MeterPromise::expectNewsForTheCap(const std::optional<double>& cap, bool isNews) {
    if (!isNews) {
        EXPECT_EQ(cap.has_value(), cap_.has_value());
    }
    EXPECT_TRUE(cap || !cap_) << "what was learnt is forgotten";
    if (cap) {
        EXPECT_NEAR(*cap / HeavyUser::limit(WindowKind::session5h), 1, 0.2);
        EXPECT_NEAR(*cap, isNews ? *cap : cap_.value_or(*cap), tolerance);
    }
    cap_ = cap;
    constexpr double leastPercentToLearnFrom = 15;
    const bool isTold =
        user_.ceilingsTold() > 0 || !reading_ || percent(WindowKind::session5h) >= leastPercentToLearnFrom;
    looksWithHeldCap_ += cap && !isTold ? 1 : 0;
}

void MeterPromise::expectExplained(const Seen& seen, bool isNewReading) {
    const WindowState& meter = seen.meter;
    EXPECT_TRUE(meter.confidence.anchored || !isNewReading);
    if (!meter.confidence.anchored) {
        ++looksWithoutReading_;
        const double spent = user_.spent(meter.kind, meter.windowStart, written_);
        EXPECT_NEAR(meter.used, std::min(spent * seen.scale, highestMeter), tolerance);
        return;
    }
    expectNearTheTruth(meter);
    occurrences_[meter.kind].insert(meter.windowStart.secondsSince1970);
    if (isNewReading) {
        EXPECT_EQ(meter.used, percent(meter.kind) / 100) << "the gauge wins";
        return;
    }
    ++stepsByLogs_;
    expectMovedByLogs(seen);
}

/// A reading is a whole percent, and hides as much of what a turn is worth: of one of a few percent nearly all.
void MeterPromise::expectNearTheTruth(const WindowState& meter) const {
    if (percent(meter.kind) < 5) return;
    const double before = user_.spent(meter.kind, meter.windowStart, Date{reading_->capturedAt});
    const double by = user_.spent(meter.kind, meter.windowStart, written_);
    EXPECT_NEAR(meter.used, by / HeavyUser::limit(meter.kind), 0.01 * by / before);
}

/// By the new turns; and, where a ceiling has just told better what a turn is worth, by that difference for all turns
/// since the reading.
void MeterPromise::expectMovedByLogs(const Seen& seen) const {
    const WindowKind kind = seen.meter.kind;
    const auto found = before_.find(kind);
    ASSERT_TRUE(found != before_.end() && reading_) << "a reading that nobody took";
    const Seen& before = found->second;
    ASSERT_EQ(seen.meter.windowStart, before.meter.windowStart);
    if (user_.ceilingsTold() == ceilings_) {
        EXPECT_NEAR(seen.scale, before.scale, tolerance * before.scale);
    }
    const double byTurns = user_.spent(kind, writtenBefore_, written_) * seen.scale;
    const double byScale = user_.spent(kind, Date{reading_->capturedAt}, writtenBefore_) * (seen.scale - before.scale);
    EXPECT_NEAR(seen.meter.used - before.meter.used, byTurns + byScale, tolerance);
}

/// A session goes by what sessions were learnt to be worth; a week, and a session before that, by what the reading said
/// that the turns until then are worth, and, without one, by log units.
double MeterPromise::scaleInForce(const WindowState& meter) const {
    if (meter.kind == WindowKind::session5h && cap_) return 1 / *cap_;
    if (!meter.confidence.anchored || !reading_) return 1;
    const double spent = user_.spent(meter.kind, meter.windowStart, Date{reading_->capturedAt});
    const double read = percent(meter.kind) / 100;
    return spent > 0 && read > 0 ? read / spent : 1;
}

double MeterPromise::percent(WindowKind window) const {
    return reading_->windows.at(std::string(statusLineKey(window))).usedPercentage.value();
}

std::size_t MeterPromise::occurrences(WindowKind window) const {
    const auto found = occurrences_.find(window);
    return found == occurrences_.end() ? 0 : found->second.size();
}

void BannerPromise::post(const Banner& banner, const UsageSnapshot& snapshot) {
    SCOPED_TRACE(banner.identifier);
    expectWellFormed(banner.title);
    expectWellFormed(banner.body);
    if (banner.identifier.starts_with("hwl-pace-"))
        postPace(banner, snapshot);
    else
        postLevel(banner, snapshot);
}

void BannerPromise::postLevel(const Banner& banner, const UsageSnapshot& snapshot) {
    for (const WindowState& meter : snapshot.meters) {
        const auto reached = highestReached(meter.used);
        if (!reached || !meter.confidence.anchored) continue;
        if (banner.title != UsageEngine::ThresholdAlert{.window = meter.kind, .threshold = *reached}.title()) continue;
        std::int64_t& told = levels_[{meter.kind, meter.windowStart.secondsSince1970}];
        EXPECT_GT(*reached, told) << banner.title << " twice";
        told = *reached;
        ++toldLevels_[*reached];
        return;
    }
    ADD_FAILURE() << banner.title << ": no meter says so";
}

void BannerPromise::postPace(const Banner& banner, const UsageSnapshot& snapshot) {
    EXPECT_TRUE(snapshot.bindingProjection.willBreachBeforeReset);
    EXPECT_EQ(banner.title, snapshot.verdict.headline);
    EXPECT_TRUE(!pace_ || banner.urgency > *pace_) << banner.title << ": this level was told in this breach";
    pace_ = banner.urgency;
    ++toldPaces_[banner.urgency];
}

void BannerPromise::publish(const UsageSnapshot& snapshot) {
    if (!snapshot.bindingProjection.willBreachBeforeReset) pace_.reset();
    for (const WindowState& meter : snapshot.meters) {
        const auto reached = highestReached(meter.used);
        if (!reached || !meter.confidence.anchored) continue;
        const auto told = levels_.find({meter.kind, meter.windowStart.secondsSince1970});
        EXPECT_TRUE(told != levels_.end() && told->second >= *reached)
            << text(meter.kind) << " is at " << meter.used << ", and nobody was told";
    }
}

int BannerPromise::told(std::int64_t threshold) const {
    const auto found = toldLevels_.find(threshold);
    return found == toldLevels_.end() ? 0 : found->second;
}

int BannerPromise::told(Banner::Urgency pace) const {
    const auto found = toldPaces_.find(pace);
    return found == toldPaces_.end() ? 0 : found->second;
}

} // namespace Pipeline
