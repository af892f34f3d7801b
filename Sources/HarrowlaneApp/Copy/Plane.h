#pragma once

namespace HarrowlaneApp {

/// Places on a drawing, in points; y grows downwards.
struct Point {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0.0;
    double height = 0.0;

    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    [[nodiscard]] constexpr double right() const { return x + width; }
    [[nodiscard]] constexpr double bottom() const { return y + height; }
    /// Its edges belong to it.
    [[nodiscard]] constexpr bool contains(const Point& p) const {
        return p.x >= x && p.x <= right() && p.y >= y && p.y <= bottom();
    }

    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace HarrowlaneApp
