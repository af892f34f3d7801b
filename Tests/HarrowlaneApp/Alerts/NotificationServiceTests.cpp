#include "HarrowlaneApp/Alerts/NotificationService.h"

#include <gtest/gtest.h>

namespace HarrowlaneApp {
namespace {

struct StatusRow {
    int number;
    const char* name;
    bool allows;
};

class Authorization : public testing::TestWithParam<StatusRow> {};

TEST_P(Authorization, HasItsNameAndAllowsBannersOrNot) {
    const auto status = static_cast<AuthorizationStatus>(GetParam().number);
    EXPECT_EQ(describe(status), GetParam().name);
    EXPECT_EQ(allowsBanners(status), GetParam().allows);
}

INSTANTIATE_TEST_SUITE_P(Numbers, Authorization,
                         testing::Values(StatusRow{0, "notDetermined", false}, StatusRow{1, "denied", false},
                                         StatusRow{2, "authorized", true}, StatusRow{3, "provisional", true},
                                         StatusRow{4, "ephemeral", false}, StatusRow{5, "unknown(5)", false},
                                         StatusRow{-1, "unknown(-1)", false}));

} // namespace
} // namespace HarrowlaneApp
