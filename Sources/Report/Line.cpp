#include "Report/Line.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Report/Text.h"

namespace Report {

namespace {

std::string_view escapeCode(Ink ink) {
    switch (ink) {
    case Ink::plain: return "";
    case Ink::strong: return "\x1b[1m";
    case Ink::faint: return "\x1b[2m";
    case Ink::good: return "\x1b[32m";
    case Ink::warning: return "\x1b[33m";
    case Ink::critical: return "\x1b[31m";
    case Ink::accent: return "\x1b[36m";
    case Ink::typical: return "\x1b[35m";
    case Ink::strongGood: return "\x1b[1;32m";
    case Ink::strongWarning: return "\x1b[1;33m";
    case Ink::strongCritical: return "\x1b[1;31m";
    }
    return "";
}

/// The words of a line: each a line of its own, as a change of ink does not end a word.
std::vector<Line> wordsOf(const Line& line) {
    std::vector<Line> words(1);
    for (const Piece& piece : line.pieces()) {
        std::string_view rest = piece.text;
        for (std::size_t blank = rest.find(' '); blank != std::string_view::npos; blank = rest.find(' ')) {
            words.back().add(rest.substr(0, blank), piece.ink);
            words.emplace_back();
            rest.remove_prefix(blank + 1);
        }
        words.back().add(rest, piece.ink);
    }
    std::erase_if(words, [](const Line& word) { return word.pieces().empty(); });
    return words;
}

/// What `clipped` cuts off.
Line behind(const Line& line, std::size_t width) {
    Line rest;
    for (const Piece& piece : line.pieces()) {
        const std::string_view kept = beginning(piece.text, width);
        width -= columnsOf(kept);
        if (kept.size() == piece.text.size()) continue;
        width = 0;
        rest.add(std::string_view(piece.text).substr(kept.size()), piece.ink);
    }
    return rest;
}

class Wrapping {
public:
    explicit Wrapping(std::size_t width) : width_(width) {}

    void put(Line word) {
        const bool isFirst = lines_.back().pieces().empty();
        if (!isFirst && lines_.back().columns() + 1 + word.columns() > width_) lines_.emplace_back();
        if (!lines_.back().pieces().empty()) lines_.back().add(" ", word.pieces().front().ink);
        while (word.columns() > width_) {
            const Line part = clipped(word, width_);
            // A wide character in a single column: it cannot be cut.
            if (part.pieces().empty()) break;
            lines_.back().add(part);
            lines_.emplace_back();
            word = behind(word, width_);
        }
        lines_.back().add(word);
    }
    [[nodiscard]] Lines lines() && { return std::move(lines_); }

private:
    std::size_t width_;
    Lines lines_ = Lines(1);
};

} // namespace

Line& Line::add(std::string_view text, Ink ink) {
    if (text.empty()) return *this;
    if (pieces_.empty() || pieces_.back().ink != ink) pieces_.push_back({.ink = ink});
    pieces_.back().text.append(text);
    return *this;
}

Line& Line::add(const Line& line) {
    for (const Piece& piece : line.pieces()) add(piece.text, piece.ink);
    return *this;
}

Line& Line::padTo(std::size_t column) {
    return add(std::string(column - std::min(column, columns()), ' '));
}

std::size_t Line::columns() const {
    std::size_t columns = 0;
    for (const Piece& piece : pieces_) columns += columnsOf(piece.text);
    return columns;
}

void append(Lines& lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

Lines wrapped(const Line& line, std::size_t width) {
    Wrapping wrapping(width);
    for (Line& word : wordsOf(line)) wrapping.put(std::move(word));
    return std::move(wrapping).lines();
}

Lines arranged(const std::vector<Line>& items, std::size_t width) {
    constexpr std::string_view dot = " · ";
    Lines lines;
    for (const Line& item : items) {
        if (!lines.empty() && lines.back().columns() + columnsOf(dot) + item.columns() <= width) {
            lines.back().add(dot, Ink::faint).add(item);
        } else {
            append(lines, wrapped(item, width));
        }
    }
    return lines;
}

Lines labelled(const Line& label, const Lines& lines) {
    Lines whole;
    for (const Line& line : lines) {
        Line beginning = whole.empty() ? label : Line().padTo(label.columns());
        whole.push_back(beginning.add(line));
    }
    return whole;
}

Lines sideBySide(const Lines& left, const Lines& right, std::size_t column) {
    Lines lines;
    for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i) {
        Line line = i < left.size() ? left[i] : Line();
        if (i < right.size() && !right[i].pieces().empty()) line.padTo(column).add(right[i]);
        lines.push_back(std::move(line));
    }
    return lines;
}

Line clipped(const Line& line, std::size_t width) {
    Line kept;
    for (const Piece& piece : line.pieces()) {
        const std::string_view part = beginning(piece.text, width);
        kept.add(part, piece.ink);
        if (part.size() < piece.text.size()) break;
        width -= columnsOf(part);
    }
    return kept;
}

std::string written(const Line& line, const Palette& palette) {
    std::string text;
    for (const Piece& piece : line.pieces()) {
        const std::string plain = palette.unicode ? piece.text : asciiOf(piece.text);
        const std::string_view code = palette.colour ? escapeCode(piece.ink) : "";
        text.append(code).append(plain).append(code.empty() ? "" : "\x1b[0m");
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace Report
