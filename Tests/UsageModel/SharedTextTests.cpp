#include "UsageModel/SharedText.h"

#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace UsageModel {
namespace {

using namespace std::string_view_literals;

TEST(SharedText, IsEmptyAtFirst) {
    const SharedText text;
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(text.view(), "");
    EXPECT_STREQ(text.c_str(), "");
}

TEST(SharedText, TheEmptyTextIsTheSameHoweverMade) {
    EXPECT_EQ(SharedText(""), SharedText());
    EXPECT_TRUE(SharedText(std::string()).empty());
    EXPECT_TRUE(SharedText(""sv).empty());
}

TEST(SharedText, HoldsACopyOfWhatItWasMadeFrom) {
    std::string words = "claude-opus";
    const SharedText text(words);
    words[0] = 'X';
    EXPECT_EQ(text.view(), "claude-opus");
    EXPECT_STREQ(text.c_str(), "claude-opus");
}

TEST(SharedText, MayHoldNULs) {
    const SharedText text("a\0b"sv);
    EXPECT_EQ(text.view(), "a\0b"sv);
    EXPECT_NE(text, SharedText("a"));
    EXPECT_FALSE(SharedText("\0"sv).empty());
}

TEST(SharedText, CopiesShareTheirWords) {
    const SharedText text("session");
    const SharedText copy = text; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.c_str(), text.c_str()) << "the same address";
    EXPECT_EQ(copy, text);
}

TEST(SharedText, ACopyOutlivesTheOriginal) {
    SharedText copy;
    {
        const SharedText text(std::string(1000, 'x'));
        copy = text;
    }
    EXPECT_EQ(copy.view(), std::string(1000, 'x'));
}

TEST(SharedText, MovingLeavesTheEmptyText) {
    SharedText text("session");
    const char* const words = text.c_str();
    const SharedText moved = std::move(text);
    EXPECT_EQ(moved.c_str(), words);
    EXPECT_TRUE(text.empty()); // NOLINT(bugprone-use-after-move)
    text = SharedText("again");
    EXPECT_EQ(text.view(), "again");
}

TEST(SharedText, AssignmentReplacesTheWordsOfThisOneOnly) {
    SharedText a("a");
    const SharedText copy = a;
    a = SharedText("b");
    EXPECT_EQ(a.view(), "b");
    EXPECT_EQ(copy.view(), "a");
    a = SharedText();
    EXPECT_TRUE(a.empty());
}

TEST(SharedText, AssigningItselfChangesNothing) {
    SharedText text("session");
    SharedText& itself = text;
    text = itself;
    EXPECT_EQ(text.view(), "session");
    text = std::move(itself);
    EXPECT_EQ(text.view(), "session");
}

TEST(SharedText, AssigningACopyOfItselfChangesNothing) {
    SharedText text("session");
    const SharedText copy = text;
    text = copy;
    EXPECT_EQ(text.view(), "session");
    EXPECT_EQ(copy.view(), "session");
}

TEST(SharedText, IsEqualAndOrderedByItsWords) {
    EXPECT_EQ(SharedText("a"), SharedText(std::string("a")));
    EXPECT_NE(SharedText("a"), SharedText("b"));
    EXPECT_NE(SharedText("a"), SharedText());
    EXPECT_LT(SharedText(), SharedText("a"));
    EXPECT_LT(SharedText("a"), SharedText("ab"));
    EXPECT_GT(SharedText("b"), SharedText("ab"));
}

TEST(SharedText, IsOnePointerWide) {
    EXPECT_EQ(sizeof(SharedText), sizeof(void*));
}

// The sanitizers are the judges here: a lost count frees the words under a reader, or never.
TEST(SharedText, CopiesMayBeMadeAndDroppedOnManyThreads) {
    constexpr int rounds = 20'000;
    SharedText text(std::string(100, 'x'));
    std::vector<int> intact(4, 0);
    {
        std::vector<std::jthread> threads;
        for (int& count : intact) {
            threads.emplace_back([mine = text, &count] {
                for (int round = 0; round < rounds; ++round) {
                    SharedText copy = mine;
                    const SharedText moved = std::move(copy);
                    count += moved.view().size() == 100 ? 1 : 0;
                }
            });
        }
        text = SharedText();
    }
    EXPECT_EQ(intact, std::vector<int>(4, rounds));
}

} // namespace
} // namespace UsageModel
