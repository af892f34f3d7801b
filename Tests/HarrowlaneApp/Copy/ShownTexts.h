#pragma once

#include <string>
#include <vector>

#include "HarrowlaneApp/Copy/ModelsTexts.h"
#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Copy/Pace.h"
#include "HarrowlaneApp/Copy/SessionDetail.h"
#include "HarrowlaneApp/Copy/WeekCopy.h"

/// All that the popover and the dashboard say of a snapshot to someone who looks at it when it is made.
namespace TestSupport {

inline void addWeekTexts(std::vector<std::string>& texts, const UsageModel::WeekSeries& series,
                         const UsageModel::Calendar& calendar) {
    const auto content = HarrowlaneApp::WeekCopy::content(series, calendar);
    const auto compact = HarrowlaneApp::WeekCopy::compact(series, calendar);
    texts.insert(texts.end(), {content.headline, content.detail, compact.headline, compact.badge, compact.resetLine,
                               HarrowlaneApp::NowTexts::accessibleWeek(compact)});
    for (const auto& tile : content.tiles) texts.push_back(tile.value + tile.unit + " " + tile.label);
    for (const auto& stat : compact.stats) texts.push_back(stat.value + " " + stat.label);
    for (const auto& bar : series.sessions) {
        namespace SessionDetail = HarrowlaneApp::SessionDetail;
        texts.insert(texts.end(), {SessionDetail::times(bar, calendar), SessionDetail::weekCost(bar, series)});
        if (const auto cap = SessionDetail::capText(bar)) texts.push_back(*cap);
    }
}

inline void addWindowTexts(std::vector<std::string>& texts, const HarrowlaneApp::NowTexts::WindowCard& card) {
    namespace Pace = HarrowlaneApp::Pace;
    texts.insert(texts.end(), {card.status.label, card.clock, card.timeLeft, Pace::explanation(card.shares),
                               Pace::accessibleRails(card.shares), Pace::ratioText(card.status.ratio)});
    if (const auto note = Pace::overspendNote(card.shares)) texts.push_back(*note);
}

inline std::vector<std::string> shownTexts(const UsageModel::UsageSnapshot& snapshot,
                                           const UsageModel::Calendar& calendar) {
    std::vector<std::string> texts{snapshot.verdict.headline, snapshot.verdict.subtext};
    if (const auto& advice = snapshot.recommendation)
        texts.insert(texts.end(), {advice->title, advice->detail, advice->impact});
    for (const auto& meter : snapshot.meters) {
        const bool isWeekly = meter.kind != UsageModel::WindowKind::session5h;
        addWindowTexts(texts, HarrowlaneApp::NowTexts::windowCard(
                                  {.meter = meter, .isWeekly = isWeekly, .now = snapshot.generatedAt}, calendar));
    }
    for (const auto& row : HarrowlaneApp::ModelsTexts::rows(snapshot.models))
        texts.push_back(row.name + " " + row.percentNumber + "%");
    if (snapshot.weekSeries) addWeekTexts(texts, *snapshot.weekSeries, calendar);
    return texts;
}

} // namespace TestSupport
