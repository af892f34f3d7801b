#include "HarrowlaneApp/Drawing/WeekChartCaptions.h"

#include <algorithm>

#include "HarrowlaneApp/Copy/WeekChartBars.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp::WeekChart {

namespace {

using HUDType::Weight;
using Role = Caption::Role;

constexpr double leftOfPanel = 8.0;
constexpr double apart = 4.0;

HUDFont fontOf(Role role) {
    switch (role) {
    case Role::tick: return HUDType::mono(9.5);
    case Role::barAxis: return HUDType::text(8.0, Weight::medium);
    case Role::day: return HUDType::text(9.5, Weight::medium);
    case Role::reference: return HUDType::display(7.5, 1.1);
    case Role::unspent: return HUDType::text(11.5, Weight::semibold);
    case Role::over:
    case Role::crossing: return HUDType::text(10.5, Weight::semibold);
    case Role::landing: return HUDType::text(12.0, Weight::bold);
    case Role::typical: return HUDType::text(11.0, Weight::medium);
    case Role::ghost: return HUDType::text(12.0, Weight::semibold);
    case Role::now: return HUDType::display(8.5, 0.6);
    case Role::reset: break;
    }
    return HUDType::display(8.0, 0.5);
}

QString fromText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Where a text is held: at which share of its width, from the left, it stands at `x`.
struct Anchor {
    double x = 0.0;
    double share = 0.0;
};

constexpr double atItsMiddle = 0.5;
constexpr double atItsEnd = 1.0;

Caption setAt(Role role, const QString& text, const Anchor& anchor, double baseline, const HUDFont& font) {
    const double width = font.inkWidth(text);
    const double left = anchor.x - anchor.share * width;
    const bool hangs = std::ranges::any_of(text, [](QChar c) { return QStringLiteral("gjpqy").contains(c); });
    const double top = baseline - font.capitalHeight();
    const double bottom = baseline + (hangs ? font.descent() : 0.0);
    return {.role = role,
            .text = text,
            .start = {.x = left, .y = baseline},
            .box = {.x = left, .y = top, .width = width, .height = bottom - top},
            .font = font};
}

Caption onBaseline(Role role, const QString& text, const Anchor& anchor, double baseline) {
    return setAt(role, text, anchor, baseline, fontOf(role));
}

/// With the middle of its capitals at a height.
Caption aroundMiddle(Role role, const QString& text, const Anchor& anchor, double middle) {
    const HUDFont font = fontOf(role);
    return setAt(role, text, anchor, middle + font.capitalHeight() / 2.0, font);
}

void addTicks(std::vector<Caption>& all, const Captioned& chart) {
    const Anchor anchor{.x = chart.geometry.top.panel.x - leftOfPanel, .share = atItsEnd};
    for (const Tick& tick : topTicks(chart.series, chart.geometry)) {
        all.push_back(aroundMiddle(Role::tick, QString::fromStdString(tick.label), anchor, tick.y));
    }
    const Rect& bars = chart.geometry.bottom.panel;
    all.push_back(aroundMiddle(Role::barAxis, fromText(barAxisCaption(chart.series.sessions)), anchor,
                               bars.y + bars.height / 2.0));
}

void addDays(std::vector<Caption>& all, const Captioned& chart) {
    for (const DayColumn& day : chart.days) {
        if (!day.label) continue;
        const Anchor anchor{.x = day.labelPlace.x, .share = atItsMiddle};
        all.push_back(aroundMiddle(Role::day, QString::fromStdString(*day.label), anchor, day.labelPlace.y));
    }
}

/// Above its line; below it where the line runs along the panel's top.
Caption referenceCaption(const Captioned& chart) {
    constexpr double fromAxis = 8.0;
    constexpr double fromLine = 6.5;
    const ReferenceLine line = referenceLine(chart.series, chart.geometry);
    const Rect& panel = chart.geometry.top.panel;
    const Anchor anchor{.x = panel.x + fromAxis};
    Caption above = onBaseline(Role::reference, fromText(line.name), anchor, line.y - fromLine);
    if (above.box.y > panel.y) return above;
    return onBaseline(Role::reference, fromText(line.name), anchor, line.y + fromLine + above.box.height);
}

void addWash(std::vector<Caption>& all, const Captioned& chart) {
    if (!chart.wash || !chart.wash->text) return;
    const Role role = chart.wash->kind == Wash::Kind::over ? Role::over : Role::unspent;
    const Anchor anchor{.x = chart.wash->textPlace.x, .share = atItsMiddle};
    all.push_back(aroundMiddle(role, QString::fromStdString(*chart.wash->text), anchor, chart.wash->textPlace.y));
}

Role roleOf(Readout::Role role) {
    switch (role) {
    case Readout::Role::landing: return Role::landing;
    case Readout::Role::typical: return Role::typical;
    case Readout::Role::ghost: break;
    }
    return Role::ghost;
}

/// A readout has the room between panel and view: a number too long for it is set smaller, and in the end cut.
Caption readoutCaption(const Readout& readout, const Captioned& chart) {
    constexpr double fromPanel = 15.0;
    constexpr double smallest = 8.0;
    const double left = chart.geometry.top.panel.right() + fromPanel;
    const double room = chart.view.width - left - 1.0;
    const QString text = QString::fromStdString(readout.text);
    HUDFont font = fontOf(roleOf(readout.role));
    const double width = font.inkWidth(text);
    if (width > room) font = HUDType::text(std::max(font.size() * room / width, smallest), Weight::semibold);
    const QString shown = font.inkWidth(text) > room ? font.elided(text, room) : text;
    return setAt(roleOf(readout.role), shown, {.x = left}, readout.y + font.capitalHeight() / 2.0, font);
}

void shift(Caption& caption, double distance) {
    caption.start.x += distance;
    caption.box.x += distance;
}

/// The present stands above its line and the reset before its own; where both would stand in one place, the reset goes
/// behind its line, and the present makes what room is wanting.
void addNowAndReset(std::vector<Caption>& all, const Captioned& chart) {
    constexpr double abovePanel = 5.0;
    const Rect& panel = chart.geometry.top.panel;
    const double baseline = panel.y - abovePanel;
    const Anchor nowAnchor{.x = chart.geometry.x(chart.series.now), .share = atItsMiddle};
    Caption now = onBaseline(Role::now, fromText(nowCaption), nowAnchor, baseline);
    const QString resetText = fromText(resetCaption(chart.series));
    Caption reset = onBaseline(Role::reset, resetText, {.x = panel.right(), .share = atItsEnd}, baseline);
    if (now.box.right() + apart > reset.box.x) {
        const double wanted = std::max(now.box.right() + apart, panel.right());
        shift(reset, std::min(wanted, chart.view.width - reset.box.width) - reset.box.x);
        shift(now, std::min(reset.box.x - apart - now.box.right(), 0.0));
    }
    all.push_back(std::move(now));
    all.push_back(std::move(reset));
}

Rect grown(const Rect& rect, double by) {
    return {.x = rect.x - by, .y = rect.y - by, .width = rect.width + 2 * by, .height = rect.height + 2 * by};
}

bool overlap(const Rect& a, const Rect& b) {
    return a.x < b.right() && b.x < a.right() && a.y < b.bottom() && b.y < a.bottom();
}

/// Where the plate may stand, the best place first; all within the panel if it is large enough.
std::vector<Rect> platePlaces(const Rect& usual, const CrossingMark& mark, const Rect& panel) {
    constexpr double besideMark = 9.0;
    constexpr double belowMark = 8.0;
    const double right = std::max(std::min(mark.centre.x + besideMark, panel.right() - usual.width), panel.x);
    const double below = std::min(mark.centre.y + belowMark, panel.bottom() - usual.height);
    std::vector<Rect> places;
    for (const double y : {usual.y, panel.y, below}) {
        for (const double x : {usual.x, right}) {
            places.push_back({.x = x, .y = y, .width = usual.width, .height = usual.height});
        }
    }
    return places;
}

} // namespace

std::vector<Caption> captions(const Captioned& chart) {
    std::vector<Caption> all;
    addTicks(all, chart);
    addDays(all, chart);
    all.push_back(referenceCaption(chart));
    addWash(all, chart);
    for (const Readout& readout : chart.readouts) all.push_back(readoutCaption(readout, chart));
    addNowAndReset(all, chart);
    return all;
}

CrossingCaption crossingCaption(const CrossingMark& mark, const Geometry& geometry,
                                const std::vector<Caption>& others) {
    constexpr double lineHeight = 16.0;
    constexpr double fromLimit = 2.0;
    constexpr double clearance = 2.0;
    const QString text = QString::fromStdString(mark.caption);
    const Size measured{.width = fontOf(Role::crossing).inkWidth(text), .height = lineHeight};
    const Rect usual = captionPlate(mark, measured, geometry);
    const auto isFree = [&](const Rect& plate) {
        const bool isOnLimit = plate.y < mark.centre.y + fromLimit && plate.bottom() > mark.centre.y - fromLimit;
        return !isOnLimit && std::ranges::none_of(others, [&](const Caption& other) {
            return overlap(grown(plate, clearance), other.box);
        });
    };
    const std::vector<Rect> places = platePlaces(usual, mark, geometry.top.panel);
    const auto found = std::ranges::find_if(places, isFree);
    const Rect plate = found != places.end() ? *found : usual;
    const Anchor anchor{.x = plate.x + plate.width / 2.0, .share = atItsMiddle};
    return {.plate = plate, .caption = aroundMiddle(Role::crossing, text, anchor, plate.y + plate.height / 2.0)};
}

QColor captionColor(Role role, const Palette& palette, Tint tint, bool limitIsKnown) {
    switch (role) {
    case Role::tick:
    case Role::barAxis:
    case Role::day:
    case Role::reset: return palette.dim;
    case Role::reference: return withOpacity(limitIsKnown ? palette.crit : palette.dim, 0.90);
    case Role::unspent: return palette.good;
    case Role::over:
    case Role::crossing: return palette.crit;
    case Role::landing:
    case Role::ghost: return palette.*tint;
    case Role::typical: return palette.violet;
    case Role::now: break;
    }
    return withOpacity(palette.ink, 0.85);
}

} // namespace HarrowlaneApp::WeekChart
