#include "HarrowlaneApp/Samples/PreviewData.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "HarrowlaneApp/Samples/PreviewWeek.h"
#include "HarrowlaneApp/Samples/SineNoise.h"

namespace HarrowlaneApp::PreviewData {

namespace {

using UsageModel::Date;
using UsageModel::EffortLevel;
using UsageModel::ModelClass;
using UsageModel::Projection;
using UsageModel::SessionBlock;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;
using UsageModel::WindowState;

constexpr double hour = 3600.0;
constexpr double day = 86400.0;
constexpr double sessionGone = 10800.0;
// Its own window, which began before the other week.
constexpr double opusLeft = 3.0 * day + 1.5 * hour;
constexpr double opusUsed = 0.86;
constexpr double opusLanding = 1.05;
constexpr double opusDry = 14.0 * hour;
constexpr UsageModel::Confidence justRead{.anchored = true, .secondsSinceAnchor = 40.0, .estimatedError = 0.01};

WindowState session(Date now) {
    return {
        .kind = WindowKind::session5h,
        .used = sessions().back().fill,
        .windowStart = now - sessionGone,
        .resetsAt = now - sessionGone + sessionSeconds,
        .elapsedFraction = sessionGone / sessionSeconds,
        .baselineFraction = sessionGone / sessionSeconds,
        .paceVsBaseline = sessions().back().fill * sessionSeconds / sessionGone,
        .confidence = justRead,
    };
}

WindowState weekly(Date now) {
    const double gone = weekGoneSeconds / weekSeconds;
    return {
        .kind = WindowKind::weeklyAll,
        .used = weekUsed,
        .windowStart = now - weekGoneSeconds,
        .resetsAt = now - weekGoneSeconds + weekSeconds,
        .elapsedFraction = gone,
        .baselineFraction = gone * typicalTotal,
        .paceVsBaseline = weekUsed / (gone * typicalTotal),
        .confidence = justRead,
    };
}

WindowState weeklyOpus(Date now) {
    const double gone = 1.0 - opusLeft / weekSeconds;
    return {
        .kind = WindowKind::weeklyOpus,
        .used = opusUsed,
        .windowStart = now + opusLeft - weekSeconds,
        .resetsAt = now + opusLeft,
        .elapsedFraction = gone,
        .baselineFraction = gone,
        .paceVsBaseline = opusUsed / gone,
        .confidence = justRead,
    };
}

std::vector<Projection> projections(Date now, const UsageModel::WeekSeries& week) {
    return {
        {.window = WindowKind::session5h, .endFraction = 0.96},
        {.window = WindowKind::weeklyAll,
         .earliestEmpty = now + 2.6 * day,
         .likelyEmpty = week.crossing,
         .endFraction = weekLanding,
         .willBreachBeforeReset = true},
        {.window = WindowKind::weeklyOpus,
         .earliestEmpty = now + 0.7 * opusDry,
         .likelyEmpty = now + opusDry,
         .endFraction = opusLanding,
         .willBreachBeforeReset = true},
    };
}

UsageModel::Verdict verdict() {
    return {
        .headline = "Opus dry in ~14h",
        .consequence = UsageModel::Consequence::downgradeToSonnet,
        .severity = UsageModel::Severity::red,
        .subtext = "Drops to Sonnet-only, then resets in 3d. Weekly lockout not projected.",
    };
}

UsageModel::Recommendation recommendation() {
    return {
        .kind = UsageModel::Recommendation::Kind::easeOff,
        .title = "Route the rest to Sonnet",
        .detail = "Your Opus week is projected to hit 105% by reset; this lands it around 83%. Lowering effort alone "
                  "doesn't get you there.",
        .impact = "back inside the cap",
        .command = "/model sonnet",
    };
}

SessionBlock blockOf(const Session& session, Date now) {
    const Date start = now - session.secondsBack;
    SessionBlock block{
        .start = start,
        .end = start + sessionSeconds,
        .usedFraction = session.fill,
        .isCurrent = start + sessionSeconds > now,
    };
    for (const auto& [modelClass, share] : mixOf(session)) block.byModelClass.set(modelClass, share * session.fill);
    return block;
}

/// What the week's sessions add up to.
UsageModel::ModelBreakdown models() {
    UsageModel::ModelBreakdown sum;
    for (const Session& session : sessions()) {
        for (const auto& [modelClass, share] : mixOf(session)) {
            const double spent = share * session.cost * weekCapInLogUnits;
            sum.byClass.set(modelClass, sum.byClass.valueOr(modelClass, 0.0) + spent);
        }
    }
    return sum;
}

/// Eighteen weeks of working days, quiet weekends and a holiday, the later ones busier.
std::vector<UsageModel::DayCell> calendar(Date now) {
    constexpr int days = 126;
    constexpr double busiestDay = 0.6;
    constexpr int levels = 4;
    constexpr std::array<double, 7> rhythm{0.55, 0.75, 0.9, 0.7, 0.5, 0.0, 0.15}; // from Monday on
    constexpr int holidayBegan = 81;
    constexpr int holidayEnded = 72;
    const auto today = static_cast<std::int64_t>(std::floor(now.secondsSince1970 / day));
    std::vector<UsageModel::DayCell> cells;
    for (int back = days - 1; back >= 0; --back) {
        const double usual = rhythm.at(static_cast<std::size_t>((((today - back + 3) % 7) + 7) % 7));
        const double grown = 1.0 - 0.35 * back / days;
        const bool isOff = (back < holidayBegan && back >= holidayEnded) || usual <= 0.0;
        const double busy = isOff ? 0.0 : std::min(usual * grown + 0.4 * (sineNoise(back) - 0.5), 0.999);
        const auto level = busy > 0.0 ? 1 + static_cast<std::int64_t>(busy * levels) : 0;
        cells.push_back({.day = now - back * day, .weighted = std::max(busy, 0.0) * busiestDay, .level = level});
    }
    return cells;
}

UsageModel::LiveModel live(Date now) {
    const Date lastTurn = now - 95.0;
    return {
        .sessions = {{.id = "sample",
                      .modelClass = ModelClass::opus,
                      .effort = EffortLevel::high,
                      .lastTurn = lastTurn,
                      .weight = 0.05}},
        .byClass = mixOf(sessions().back()),
        .byEffort = {{EffortLevel::medium, 0.29}, {EffortLevel::high, 0.71}},
        .outputShare = 0.4,
        .weight = 0.05,
        .turns = 42,
        .lastTurn = lastTurn,
    };
}

} // namespace

UsageSnapshot overPace(Date now) {
    UsageSnapshot snapshot;
    snapshot.generatedAt = now;
    snapshot.meters = {session(now), weekly(now), weeklyOpus(now)};
    snapshot.binding = WindowKind::weeklyOpus;
    snapshot.verdict = verdict();
    snapshot.weekSeries = week(now);
    snapshot.projections = projections(now, *snapshot.weekSeries);
    snapshot.bindingProjection = snapshot.projections.back();
    for (const Session& each : sessions()) snapshot.weekSessions.push_back(blockOf(each, now));
    snapshot.sessionCapInLogUnits = sessions().front().cost / sessions().front().fill * weekCapInLogUnits;
    snapshot.models = models();
    snapshot.calendar = calendar(now);
    snapshot.recommendation = recommendation();
    snapshot.live = live(now);
    snapshot.ingest = UsageModel::IngestProgress::idle();
    return snapshot;
}

} // namespace HarrowlaneApp::PreviewData
