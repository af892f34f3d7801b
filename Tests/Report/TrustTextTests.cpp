#include "Report/TrustText.h"

#include <sstream>

#include <gmock/gmock.h>

#include "Report/Text.h"

namespace Report {
namespace {

using testing::HasSubstr;
using testing::Not;
using UsageModel::Calendar;
using UsageModel::Date;

Trust sampleTrust(std::size_t weeks = 7) {
    constexpr Date first{1768953600}; // 2026-01-21
    constexpr double week = 604800;
    Trust trust;
    for (std::size_t i = 0; i < weeks; ++i) {
        const Date start = first + static_cast<double>(i) * week;
        trust.weeks.push_back({.start = start, .end = start + week});
    }
    trust.scores = {
        {Method::bottomUp, {84, 0.08, 0.21, 0.03, 0.61}}, {Method::composite, {84, 0.12, 0.4, -0.05, 0.4}},
        {Method::shape, {84, 0.15, 1.0, -0.004, 0.5}},    {Method::straightLine, {84, 0.22, 1e9, 1e9, 0.7}},
        {Method::lastWeek, {84, 0.31, 0.6, -0.9, 0.0}},
    };
    return trust;
}

std::string textOf(const Trust& trust, std::size_t columns = 80) {
    return trustText(trust, Calendar::utc(), {.columns = columns, .rows = {}, .palette = {.unicode = true}});
}

TEST(TrustText, AnswersFirst) {
    EXPECT_EQ(textOf(sampleTrust()), R"(How far may I trust the forecast?
Half the time the forecast that you see (bottom-up) missed the week's total
by less than 8%, one time in ten by more than 21%. That is better than a
straight line (22%).

                median     p90   signed   over
Bottom-up           8%     21%      +3%    61%
Composite          12%     40%      -5%    40%
Shape              15%    100%       0%    50%
Straight line      22%   >999%    >999%    70%
Last week          31%     60%     -90%     0%

Replayed: 7 completed weeks, from 2026-01-21 to 2026-03-11, at 12 instants
each.
An error is the part of the week's real total by which a method missed it.
Half of the errors lie below the median, nine of ten below p90. Signed is
the middle error with its sign, above 0 where a method says too much; over
is how often it did. Straight line and last week take no skill: what was
used so far, carried on, and the total of the week before.
)");
}

TEST(TrustText, TheTableFitsWhereItIsNarrow) {
    EXPECT_THAT(textOf(sampleTrust(), 40), HasSubstr(R"(
              median   p90 signed over
Bottom-up         8%   21%    +3%  61%
Composite        12%   40%    -5%  40%
Shape            15%  100%     0%  50%
Straight line    22% >999%  >999%  70%
Last week        31%   60%   -90%   0%
)"));
    for (std::size_t columns = 38; columns < 120; ++columns) {
        std::istringstream text(textOf(sampleTrust(), columns));
        for (std::string line; std::getline(text, line);) EXPECT_LE(columnsOf(line), columns) << line;
    }
}

TEST(TrustText, ASimpleWayThatIsNoWorseIsNamed) {
    Trust trust = sampleTrust();
    trust.scores[Method::lastWeek].medianAbsoluteError = 0.08;
    EXPECT_THAT(textOf(trust), HasSubstr("That is no better than\nlast week's total (8%)."));
}

TEST(TrustText, FewWeeksAreAFirstHint) {
    EXPECT_THAT(textOf(sampleTrust(1)), HasSubstr("1 completed week,"));
    EXPECT_THAT(textOf(sampleTrust(3)), HasSubstr("first hint"));
    EXPECT_THAT(textOf(sampleTrust(4)), Not(HasSubstr("first hint")));
}

TEST(TrustText, WeeksWithoutUseAreTold) {
    Trust trust = sampleTrust();
    trust.unusedWeeks = 2;
    EXPECT_THAT(textOf(trust), HasSubstr("Left out: 2 weeks without any use."));
}

TEST(TrustText, TooLittleHistorySaysSo) {
    EXPECT_EQ(textOf({}), R"(How far may I trust the forecast?
There is too little history: a week can be replayed once it is over, and
only if there is a whole week of history before it to learn from.
)");
    EXPECT_THAT(textOf({.weeks = {}, .unusedWeeks = 3, .scores = {}}), HasSubstr("nothing was used in the weeks"));
}

} // namespace
} // namespace Report
