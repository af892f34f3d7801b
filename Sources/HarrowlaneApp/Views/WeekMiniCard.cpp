#include "HarrowlaneApp/Views/WeekMiniCard.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "HarrowlaneApp/Copy/NowTexts.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/WeekMiniChartPainter.h"
#include "HarrowlaneApp/Views/HUDLabel.h"
#include "HarrowlaneApp/Views/Headings.h"

namespace HarrowlaneApp {

namespace {

using HUDType::Weight;

constexpr double radius = 12.0;
constexpr double topPadding = 12.0;
constexpr double sidePadding = 14.0;
constexpr double topLine = 20.0;
constexpr double chartHeight = 76.0;
constexpr double figureLine = 17.0;
constexpr double labelLine = 13.0;
constexpr double ruleHeight = 26.0;
constexpr double ruleGap = 12.0;
constexpr int usualWidth = 316;

/// A card in the making: what is placed goes below what was placed before.
struct Maker {
    WeekMiniCard::Layout layout;
    double left = sidePadding;
    double right = 0.0;
    double top = topPadding;

    [[nodiscard]] double room() const { return std::max(right - left, 1.0); }

    /// Places one line, cut where it is wider than the room; returns where it ends.
    double place(const WeekMiniCard::PlacedText& text, double width) {
        layout.texts.push_back(text);
        PlacedText& placed = layout.texts.back();
        placed.text = text.font.elided(text.text, width);
        return placed.box.left + placed.font.width(placed.text);
    }

    using PlacedText = WeekMiniCard::PlacedText;
};

void placeTopLine(Maker& card, const WeekCopy::Compact& words) {
    const TextStyle label = Headings::card();
    const double labelEnd = card.place({.text = shown(NowTexts::weekCardTitle),
                                        .font = label.font,
                                        .color = label.color,
                                        .box = {card.left, card.top, topLine}},
                                       card.room());
    const StatusBadge badge{.label = shown(words.badge), .severity = WeekCopy::severity(words.standing)};
    card.layout.badge = badge.within(card.right - labelEnd - ruleGap);
    const double width = card.layout.badge.size().width();
    card.layout.badgePlace = {card.right - width, card.top, width, StatusBadge::height};
    card.top += topLine;
}

void placeHeadline(Maker& card, const WeekCopy::Compact& words) {
    constexpr double gap = 5.0;
    constexpr double lineHeight = 22.0;
    const HUDFont font = HUDType::text(18, Weight::semibold);
    card.top += gap;
    for (const QString& line : font.wrapped(shown(words.headline), card.room())) {
        card.place({.text = line, .font = font, .box = {card.left, card.top, lineHeight}}, card.room());
        card.top += lineHeight;
    }
}

void placeChart(Maker& card) {
    constexpr double gap = 8.0;
    card.top += gap;
    card.layout.chart = {card.left, card.top, card.room(), chartHeight};
    card.top += chartHeight;
}

/// A figure above its label; returns where the wider of them ends.
double placeStat(Maker& card, const WeekCopy::Stat& stat, double left) {
    // Even two very long ones stand side by side.
    const double room = card.room() / 2.0 - 2.0 * ruleGap;
    const double valueEnd = card.place(
        {.text = shown(stat.value), .font = HUDType::text(15, Weight::bold), .box = {left, card.top, figureLine}},
        room);
    const double labelEnd = card.place({.text = shown(stat.label),
                                        .font = HUDType::text(10.5),
                                        .color = &Palette::dim,
                                        .box = {left, card.top + figureLine, labelLine}},
                                       room);
    return std::max(valueEnd, labelEnd);
}

double placeStats(Maker& card, const WeekCopy::Compact& words) {
    double end = card.left;
    for (const WeekCopy::Stat& stat : words.stats) {
        if (&stat == &words.stats.front()) {
            end = placeStat(card, stat, end);
            continue;
        }
        const double middle = (figureLine + labelLine - ruleHeight) / 2.0;
        card.layout.rule = {std::round(end + ruleGap), card.top + middle, 1.0, ruleHeight};
        end = placeStat(card, stat, card.layout.rule.right() + ruleGap);
    }
    return end;
}

/// On the line of the labels, or on lines of its own where that has no room left.
void placeResetLine(Maker& card, const WeekCopy::Compact& words, double statsEnd) {
    const HUDFont font = HUDType::text(11);
    const QString text = shown(words.resetLine);
    const double bottom = card.top + figureLine + labelLine;
    const bool fits = font.width(text) <= card.right - statsEnd - ruleGap;
    double top = fits ? card.top + figureLine : bottom + 4.0;
    for (const QString& line : fits ? QStringList{text} : font.wrapped(text, card.room())) {
        const double left = std::max(card.right - font.width(line), card.left);
        card.place({.text = line, .font = font, .color = &Palette::dim, .box = {left, top, labelLine}}, card.room());
        top += labelLine;
    }
    card.top = std::max(top, bottom);
}

QColor tintOf(WeekCopy::Standing standing, const Palette& palette) {
    switch (WeekCopy::signal(standing)) {
    case Signal::good: return palette.good;
    case Signal::warn: return palette.warn;
    case Signal::crit: break;
    }
    return palette.crit;
}

} // namespace

WeekMiniCard::WeekMiniCard(const ApplicationLook& look, QWidget* parent) : HUDButton(look, QString(), parent) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setCursor(Qt::PointingHandCursor);
    setToolTip(shown(NowTexts::weekCardHelp));
    setAccessibleDescription(toolTip());
}

void WeekMiniCard::setWeek(const WeekCopy::Compact& words, const UsageModel::WeekSeries& series) {
    words_ = words;
    series_ = series;
    setText(shown(NowTexts::accessibleWeek(words)));
    updateGeometry();
    update();
}

WeekMiniCard::Layout WeekMiniCard::layOut(const WeekCopy::Compact& words, int width) {
    constexpr double statsGap = 9.0;
    Maker card{.right = width - sidePadding};
    placeTopLine(card, words);
    placeHeadline(card, words);
    placeChart(card);
    card.top += statsGap;
    placeResetLine(card, words, placeStats(card, words));
    card.layout.height = static_cast<int>(std::ceil(card.top + topPadding));
    return card.layout;
}

QSize WeekMiniCard::sizeHint() const {
    return {usualWidth, heightForWidth(usualWidth)};
}

FocusRing::Outline WeekMiniCard::outline() const {
    return {.box = rect(), .radius = radius};
}

void WeekMiniCard::paintFace(QPainter& painter) {
    HUDPanel{.radius = radius}.paint(painter, rect(), look());
    if (hovered() > 0.0) strokeInside(painter, rect(), radius, withOpacity(colors().edgeStrong, hovered()));
    const Layout layout = layOut(words_, width());
    layout.badge.paint(painter, layout.badgePlace, look());
    for (const PlacedText& text : layout.texts) {
        painter.setPen(colors().*text.color);
        text.font.draw(painter, text.box, text.text);
    }
    painter.fillRect(layout.rule, withOpacity(colors().dim, 0.35));
    WeekMiniChart::paint(painter, {.series = series_, .tint = tintOf(words_.standing, colors()), .place = layout.chart},
                         look());
}

} // namespace HarrowlaneApp
