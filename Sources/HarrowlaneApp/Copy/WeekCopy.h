#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HarrowlaneApp/Copy/Signal.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/Fields.h"
#include "UsageModel/UsageSnapshot.h"
#include "UsageModel/WeekSeries.h"

/// The one place where a week is turned into sentences. With a gauge they speak of the weekly cap; without one only of
/// a typical week, because the logs hold the shape of a week and not its ceiling.
namespace HarrowlaneApp::WeekCopy {

/// Where the week is heading.
enum class Standing { comfortable, close, over };

/// A figure with what it means. An absent standing is neutral.
struct Tile {
    std::string value;
    std::string unit;
    std::string label;
    std::optional<Standing> standing;

    friend bool operator==(const Tile&, const Tile&) = default;
};

/// For the dashboard.
struct Content {
    std::string headline;
    std::string detail;
    std::vector<Tile> tiles;

    friend bool operator==(const Content&, const Content&) = default;
};

struct Stat {
    std::string value;
    std::string label;

    friend bool operator==(const Stat&, const Stat&) = default;
};

/// For the small card in the popover.
struct Compact {
    std::string headline;
    std::string badge;
    std::string resetLine;
    std::vector<Stat> stats;
    Standing standing = Standing::comfortable;

    friend bool operator==(const Compact&, const Compact&) = default;
};

/// By the landing against the limit; against one typical week where no limit is known.
[[nodiscard]] Standing standing(const UsageModel::WeekSeries& series);
/// The colour that the standing is drawn in.
[[nodiscard]] Signal signal(Standing standing);
/// What a badge says it with: its calm state draws no eye.
[[nodiscard]] UsageModel::Severity severity(Standing standing);
/// The landing stays clearly under the limit, and enough weeks are known to say so.
[[nodiscard]] bool hasRoomToSpare(const UsageModel::WeekSeries& series);
/// The limit; 1 where none is known.
[[nodiscard]] double limit(const UsageModel::WeekSeries& series);
/// All that the dashboard's card says, and what the popover's says; of a week without points too.
[[nodiscard]] Content content(const UsageModel::WeekSeries& series, const UsageModel::Calendar& calendar);
[[nodiscard]] Compact compact(const UsageModel::WeekSeries& series, const UsageModel::Calendar& calendar);

template <UsageModel::FieldsOf<Tile> Self>
void visitFields(Self& self, auto&& visit) {
    visit("value", self.value);
    visit("unit", self.unit);
    visit("label", self.label);
    visit("standing", self.standing);
}

template <UsageModel::FieldsOf<Content> Self>
void visitFields(Self& self, auto&& visit) {
    visit("headline", self.headline);
    visit("detail", self.detail);
    visit("tiles", self.tiles);
}

template <UsageModel::FieldsOf<Stat> Self>
void visitFields(Self& self, auto&& visit) {
    visit("value", self.value);
    visit("label", self.label);
}

template <UsageModel::FieldsOf<Compact> Self>
void visitFields(Self& self, auto&& visit) {
    visit("headline", self.headline);
    visit("badge", self.badge);
    visit("resetLine", self.resetLine);
    visit("stats", self.stats);
    visit("standing", self.standing);
}

} // namespace HarrowlaneApp::WeekCopy

template <>
struct UsageModel::EnumNames<HarrowlaneApp::WeekCopy::Standing> {
    static constexpr std::array<std::string_view, 3> names{"comfortable", "close", "over"};
};
