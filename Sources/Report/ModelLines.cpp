#include "Report/ModelLines.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Report/Bar.h"
#include "Report/Text.h"
#include "UsageEngine/TimeText.h"

namespace Report {

namespace {

using UsageModel::LiveModel;
using UsageModel::ModelClass;

constexpr std::size_t gap = 2;
constexpr std::size_t modelColumns = 6;
constexpr std::size_t effortColumns = 6;
constexpr std::size_t agoColumns = 7;
constexpr std::size_t percentColumns = 4;
// Enough to compare shares by.
constexpr std::size_t longestBar = 40;
// A screen of sessions would push all else away; more than this are told as a number.
constexpr std::size_t mostSessions = 6;

std::vector<std::pair<ModelClass, double>> byShare(const UsageModel::ModelBreakdown& models) {
    std::vector<std::pair<ModelClass, double>> shares;
    for (const auto& [modelClass, units] : models.byClass) shares.emplace_back(modelClass, models.fraction(modelClass));
    std::ranges::stable_sort(shares, std::ranges::greater(), &std::pair<ModelClass, double>::second);
    return shares;
}

Line sessionLine(const View& view, const LiveModel::Session& session, std::size_t idColumns) {
    const LiveModel& live = view.snapshot.live;
    const std::string effort = session.effort ? std::string(label(*session.effort)) : "";
    const std::string ago = UsageEngine::TimeText::duration(view.snapshot.generatedAt - session.lastTurn) + " ago";
    const double share = live.weight > 0 ? session.weight / live.weight : 0.0;
    return Line(padded(shortened(oneLine(session.id), idColumns), idColumns + gap), Ink::faint)
        .add(padded(displayName(session.modelClass), modelColumns + gap))
        .add(padded(effort, effortColumns + gap))
        .add(rightAligned(ago, agoColumns))
        .add(rightAligned(percentText(share), gap + percentColumns), Ink::strong);
}

/// As many as the longest needs, where there is room for that.
std::size_t idColumns(const View& view) {
    constexpr std::size_t others = 4 * gap + modelColumns + effortColumns + agoColumns + percentColumns;
    std::size_t longest = 0;
    for (const LiveModel::Session& session : view.snapshot.live.sessions)
        longest = std::max(longest, columnsOf(oneLine(session.id)));
    return std::min(longest, view.width > others ? view.width - others : 1);
}

} // namespace

Lines modelLines(const View& view) {
    const UsageModel::ModelBreakdown& models = view.snapshot.models;
    if (!(models.total() > 0)) return {};
    Lines lines;
    for (const auto& [modelClass, share] : byShare(models)) {
        const std::size_t columns = std::min(view.width - modelColumns - percentColumns - 2 * gap, longestBar);
        const Bar bar{.columns = columns, .filled = share, .ink = Ink::accent};
        lines.push_back(Line(padded(displayName(modelClass), modelColumns + gap))
                            .add(drawn(bar))
                            .add(rightAligned(percentText(share), gap + percentColumns), Ink::strong));
    }
    return lines;
}

Lines liveLines(const View& view) {
    const auto& sessions = view.snapshot.live.sessions;
    Lines lines;
    for (std::size_t i = 0; i < std::min(sessions.size(), mostSessions); ++i)
        lines.push_back(sessionLine(view, sessions[i], idColumns(view)));
    if (sessions.size() > mostSessions)
        lines.emplace_back("and " + grouped(static_cast<std::int64_t>(sessions.size() - mostSessions)) + " more",
                           Ink::faint);
    return lines;
}

} // namespace Report
