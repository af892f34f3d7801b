#include "HarrowlaneApp/Copy/Spread.h"

#include <gmock/gmock.h>

namespace HarrowlaneApp {
namespace {

using testing::DoubleEq;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Spread, LeavesWhatIsFarEnoughApart) {
    EXPECT_THAT(spread({}, {.least = 0, .most = 100, .distance = 15}), IsEmpty());
    EXPECT_THAT(spread({50, 10, 80}, {.least = 0, .most = 100, .distance = 15}), ElementsAre(50, 10, 80));
}

TEST(Spread, MovesNeighboursApartEvenly) {
    EXPECT_THAT(spread({50, 50}, {.least = 0, .most = 100, .distance = 10}), ElementsAre(45, 55));
    EXPECT_THAT(spread({50, 58}, {.least = 0, .most = 100, .distance = 10}), ElementsAre(49, 59));
    EXPECT_THAT(spread({52, 50, 54}, {.least = 0, .most = 100, .distance = 10}), ElementsAre(52, 42, 62));
    EXPECT_THAT(spread({40, 50, 51}, {.least = 0, .most = 100, .distance = 15}),
                ElementsAre(DoubleEq(32), DoubleEq(47), DoubleEq(62)));
}

TEST(Spread, KeepsToItsRoom) {
    EXPECT_THAT(spread({0, 0, 0}, {.least = 0, .most = 100, .distance = 10}), ElementsAre(0, 10, 20));
    EXPECT_THAT(spread({100, 99}, {.least = 0, .most = 100, .distance = 10}), ElementsAre(100, 90));
    EXPECT_THAT(spread({0, 5, 9}, {.least = 0, .most = 10, .distance = 10}), ElementsAre(0, 10, 20))
        << "too little room: apart comes first";
}

} // namespace
} // namespace HarrowlaneApp
