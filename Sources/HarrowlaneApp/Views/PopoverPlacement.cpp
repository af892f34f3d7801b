#include "HarrowlaneApp/Views/PopoverPlacement.h"

#include <algorithm>
#include <array>

namespace HarrowlaneApp::PopoverPlacement {

namespace {

/// A stretch along one axis. QRect counts its last pixel in, which is one off wherever lengths are added.
struct Span {
    int start = 0;
    int length = 0;

    [[nodiscard]] int end() const { return start + length; }
    [[nodiscard]] int distance(int place) const { return std::max({start - place, place - end() + 1, 0}); }
};

Span across(const QRect& rect) {
    return {.start = rect.x(), .length = rect.width()};
}

Span down(const QRect& rect) {
    return {.start = rect.y(), .length = rect.height()};
}

int distance(const QRect& rect, const QPoint& point) {
    return across(rect).distance(point.x()) + down(rect).distance(point.y());
}

/// How far the click is from a side of the screen, and whether a panel takes the room between.
struct Side {
    Edge edge = Edge::top;
    int distance = 0;
    bool isTaken = false;
};

std::array<Side, 4> sides(const Screen& screen, const QPoint& click) {
    const Span x = across(screen.geometry);
    const Span y = down(screen.geometry);
    const Span freeX = across(screen.free);
    const Span freeY = down(screen.free);
    return {{
        {Edge::top, click.y() - y.start, click.y() < freeY.start},
        {Edge::bottom, y.end() - 1 - click.y(), click.y() >= freeY.end()},
        {Edge::left, click.x() - x.start, click.x() < freeX.start},
        {Edge::right, x.end() - 1 - click.x(), click.x() >= freeX.end()},
    }};
}

Edge panelEdge(const Screen& screen, const QPoint& click) {
    const auto all = sides(screen, click);
    // Of equals the first: most panels lie at the top or at the bottom.
    return std::ranges::min_element(all,
                                    [](const Side& a, const Side& b) {
                                        return a.isTaken != b.isTaken ? a.isTaken : a.distance < b.distance;
                                    })
        ->edge;
}

/// The room for a popover; all of the free area where a margin would leave nothing.
Span roomIn(const Span& free) {
    return free.length > 2 * gap ? Span{.start = free.start + gap, .length = free.length - 2 * gap} : free;
}

/// A stretch of `length` that begins at `wanted`, moved and shortened into the room.
Span heldIn(const Span& room, int wanted, int length) {
    const int held = std::min(length, room.length);
    return {.start = std::clamp(wanted, room.start, room.end() - held), .length = held};
}

QPoint heldIn(const QRect& rect, const QPoint& point) {
    return {std::clamp(point.x(), rect.left(), rect.right()), std::clamp(point.y(), rect.top(), rect.bottom())};
}

/// Where the popover's upper left corner would be if there were room everywhere.
QPoint wantedCorner(Edge edge, const QPoint& click, const QSize& size) {
    // Along a side panel the popover's header stands beside the click, and what grows, grows downwards.
    constexpr int halfHeader = 23;
    switch (edge) {
    case Edge::top: return {click.x() - size.width() / 2, click.y() + gap};
    case Edge::bottom: return {click.x() - size.width() / 2, click.y() - gap - size.height()};
    case Edge::left: return {click.x() + gap, click.y() - halfHeader};
    case Edge::right: break;
    }
    return {click.x() - gap - size.width(), click.y() - halfHeader};
}

} // namespace

Place place(const Question& question) {
    const auto nearest = std::ranges::min_element(
        question.screens, {}, [&](const Screen& screen) { return distance(screen.geometry, question.click); });
    if (nearest == question.screens.end()) {
        return {.box = {wantedCorner(Edge::top, question.click, question.size), question.size}};
    }
    const QPoint click = heldIn(nearest->geometry, question.click);
    const Edge edge = panelEdge(*nearest, click);
    const QPoint wanted = wantedCorner(edge, click, question.size);
    const Span x = heldIn(roomIn(across(nearest->free)), wanted.x(), question.size.width());
    const Span y = heldIn(roomIn(down(nearest->free)), wanted.y(), question.size.height());
    return {.box = {x.start, y.start, x.length, y.length}, .edge = edge};
}

} // namespace HarrowlaneApp::PopoverPlacement
