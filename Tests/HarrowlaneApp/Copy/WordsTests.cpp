#include "HarrowlaneApp/Copy/Words.h"

#include <vector>

#include <gtest/gtest.h>

namespace HarrowlaneApp {
namespace {

TEST(LowerCase, LeavesOtherBytesAlone) {
    EXPECT_EQ(Words::lowerCase("X-High"), "x-high");
    EXPECT_EQ(Words::lowerCase("Ä \xFF"), "Ä \xFF");
    EXPECT_EQ(Words::lowerCase(""), "");
}

TEST(Joined, PutsTheSeparatorBetweenParts) {
    EXPECT_EQ(Words::joined({}, ", "), "");
    EXPECT_EQ(Words::joined(std::vector<std::string>{"a"}, ", "), "a");
    EXPECT_EQ(Words::joined(std::vector<std::string>{"a", "", "c"}, ", "), "a, , c");
}

} // namespace
} // namespace HarrowlaneApp
