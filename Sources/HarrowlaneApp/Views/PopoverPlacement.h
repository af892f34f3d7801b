#pragma once

#include <span>

#include <QPoint>
#include <QRect>
#include <QSize>

/// Where a popover opens for a click on the desktop's panel. All places are those of the desktop, across its monitors.
namespace HarrowlaneApp::PopoverPlacement {

/// Between the popover and what it must not touch: the panel, the click, the sides of the screen.
inline constexpr int gap = 8;

/// A monitor.
struct Screen {
    QRect geometry;
    /// What panels and docks leave of it.
    QRect free;
};

/// The side of the screen along which the panel lies.
enum class Edge { top, bottom, left, right };

struct Question {
    QPoint click;
    /// The size that the popover wants.
    QSize size;
    std::span<const Screen> screens;
};

struct Place {
    /// Within the free area of one screen, and smaller than wanted where that has no more room.
    QRect box;
    /// The side that stays where it is when the popover grows or shrinks is the one at this edge; along a side panel it
    /// is the upper one.
    Edge edge = Edge::top;

    friend bool operator==(const Place&, const Place&) = default;
};

/// The panel is where the click is not free; where it is, as with a panel that hides, at the screen's nearest side. A
/// click beside all screens counts for the nearest one, and without any screen the popover stands below the click.
[[nodiscard]] Place place(const Question& question);

} // namespace HarrowlaneApp::PopoverPlacement
