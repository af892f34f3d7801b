#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text for a terminal before it is known whether that shows colours: lines of inked pieces, and how they are laid out.
namespace Report {

/// What a piece of text is; the terminal decides how that looks.
enum class Ink {
    plain,
    strong,
    faint,
    good,
    warning,
    critical,
    accent,
    typical,
    strongGood,
    strongWarning,
    strongCritical,
};

struct Piece {
    /// One line without control characters.
    std::string text;
    Ink ink = Ink::plain;

    friend bool operator==(const Piece&, const Piece&) = default;
};

class Line {
public:
    Line() = default;
    explicit Line(std::string_view text, Ink ink = Ink::plain) { add(text, ink); }

    /// Appends a text; of the same ink as the last piece it becomes part of that.
    Line& add(std::string_view text, Ink ink = Ink::plain);
    Line& add(const Line& line);
    /// Appends blanks up to a column, if there is room before it.
    Line& padTo(std::size_t column);

    [[nodiscard]] std::size_t columns() const;
    [[nodiscard]] const std::vector<Piece>& pieces() const { return pieces_; }

    friend bool operator==(const Line&, const Line&) = default;

private:
    std::vector<Piece> pieces_;
};

using Lines = std::vector<Line>;

void append(Lines& lines, const Lines& more);

/// The line broken at blanks into lines of at most `width` columns, which is at least 1; a word that is longer is cut.
/// Blanks at a break are dropped. One line at least.
[[nodiscard]] Lines wrapped(const Line& line, std::size_t width);

/// The items one after the other, a dot between two of a line; broken between items where that is enough.
[[nodiscard]] Lines arranged(const std::vector<Line>& items, std::size_t width);

/// The lines with `label` before the first, and as far in for the others.
[[nodiscard]] Lines labelled(const Line& label, const Lines& lines);

/// Two blocks beside each other, the right one from `column` on.
[[nodiscard]] Lines sideBySide(const Lines& left, const Lines& right, std::size_t column);

/// The line up to `width` columns.
[[nodiscard]] Line clipped(const Line& line, std::size_t width);

/// How the text of a page is written out.
struct Palette {
    /// Whether inks show, by the terminal's escape codes.
    bool colour = false;
    /// Whether it may hold characters beyond ASCII.
    bool unicode = false;

    friend bool operator==(const Palette&, const Palette&) = default;
};

/// The line as a terminal takes it, without blanks or a line end behind it.
[[nodiscard]] std::string written(const Line& line, const Palette& palette);

} // namespace Report
