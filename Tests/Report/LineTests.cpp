#include "Report/Line.h"

#include <gmock/gmock.h>

namespace Report {
namespace {

using testing::ElementsAre;

std::vector<std::string> texts(const Lines& lines) {
    std::vector<std::string> texts;
    for (const Line& line : lines) texts.push_back(written(line, {.unicode = true}));
    return texts;
}

TEST(Line, PiecesOfOneInkAreOne) {
    const Line line = Line("a").add("b").add("c", Ink::strong).add("", Ink::faint);
    EXPECT_THAT(line.pieces(), ElementsAre(Piece{"ab"}, Piece{"c", Ink::strong}));
    EXPECT_EQ(line.columns(), 3U);
}

TEST(Line, IsPaddedToAColumnItHasNotReached) {
    EXPECT_EQ(Line("ab").padTo(4).add("c").columns(), 5U);
    EXPECT_EQ(Line("abcd").padTo(2).columns(), 4U);
}

TEST(Line, BreaksAtBlanks) {
    EXPECT_THAT(texts(wrapped(Line("one two three four"), 9)), ElementsAre("one two", "three", "four"));
    EXPECT_THAT(texts(wrapped(Line("one two"), 7)), ElementsAre("one two"));
    EXPECT_THAT(texts(wrapped(Line("  one   two  "), 20)), ElementsAre("one two"));
    EXPECT_THAT(texts(wrapped(Line(""), 5)), ElementsAre(""));
}

TEST(Line, CutsAWordThatIsTooLong) {
    EXPECT_THAT(texts(wrapped(Line("ab abcdefgh x"), 3)), ElementsAre("ab", "abc", "def", "gh", "x"));
    EXPECT_THAT(texts(wrapped(Line("大き"), 1)), ElementsAre("大き"));
}

TEST(Line, AChangeOfInkBreaksNoWord) {
    const Lines lines = wrapped(Line("lands at ").add("11", Ink::strong).add("2%, so"), 9);
    EXPECT_THAT(texts(lines), ElementsAre("lands at", "112%, so"));
    EXPECT_EQ(lines[1].pieces().front(), (Piece{"11", Ink::strong}));
}

TEST(Line, ItemsShareALineWhileTheyFit) {
    const std::vector<Line> items{Line("one two"), Line("three"), Line("four five six")};
    EXPECT_THAT(texts(arranged(items, 40)), ElementsAre("one two · three · four five six"));
    EXPECT_THAT(texts(arranged(items, 15)), ElementsAre("one two · three", "four five six"));
    EXPECT_THAT(texts(arranged(items, 9)), ElementsAre("one two", "three", "four five", "six"));
    EXPECT_THAT(arranged({}, 9), ElementsAre());
}

TEST(Line, ALabelStandsBeforeTheFirst) {
    EXPECT_THAT(texts(labelled(Line("name "), {Line("a"), Line("b")})), ElementsAre("name a", "     b"));
}

TEST(Line, BlocksStandBesideEachOther) {
    EXPECT_THAT(texts(sideBySide({Line("a"), Line(), Line("c")}, {Line("1"), Line("2")}, 3)),
                ElementsAre("a  1", "   2", "c"));
    EXPECT_THAT(texts(sideBySide({Line("a")}, {Line("1"), Line("2")}, 3)), ElementsAre("a  1", "   2"));
}

TEST(Line, IsClippedInAnyOfItsPieces) {
    const Line line = Line("abc").add("def", Ink::strong);
    EXPECT_EQ(clipped(line, 4), Line("abc").add("d", Ink::strong));
    EXPECT_EQ(clipped(line, 6), line);
    EXPECT_EQ(clipped(line, 0), Line());
}

TEST(Line, IsWrittenAsTheTerminalCanShowIt) {
    const Line line = Line("5h · ").add("×", Ink::critical).add("  ");
    EXPECT_EQ(written(line, {.colour = false, .unicode = true}), "5h · ×");
    EXPECT_EQ(written(line, {.colour = false, .unicode = false}), "5h - x");
    EXPECT_EQ(written(line, {.colour = true, .unicode = true}), "5h · \x1b[31m×\x1b[0m");
}

} // namespace
} // namespace Report
