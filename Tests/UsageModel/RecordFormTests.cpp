#include <gmock/gmock.h>

#include "UsageModel/Json.h"
#include "UsageModel/SampleRecords.h"

namespace UsageModel {
namespace {

using nlohmann::json;
using TestSupport::Names;
using TestSupport::Sample;

Names namesOf(const json& object) {
    Names names;
    for (const auto& [name, value] : object.items()) names.insert(name);
    return names;
}

/// A value that no field of the kind of `value` takes.
json ofAnotherKind(const json& value) {
    if (value.is_string()) return 5;
    if (value.is_number()) return "5";
    if (value.is_boolean()) return 1;
    return value.is_array() ? json::object() : json::array();
}

template <typename Record>
class RecordFormTest : public testing::Test {
protected:
    const Record full = Sample<Record>::full();
    const json form = Json::encode(full);
};

using EveryRecord =
    testing::Types<UsageEvent, CategoryWeights, Anchor, GaugeWindow, GaugeReading, StatusLineInput,
                   StatusLineInput::RateLimits, StatusLineInput::RL, IngestProgress, Confidence, WindowState,
                   Projection, Verdict, Recommendation, ModelBreakdown, DayCell, SessionBlock, SessionBar, SeriesPoint,
                   WeeklyNorm, WeekSeries, WhatIfSpace, ModelAndEffort, LiveModel, LiveModel::Session, UsageSnapshot>;
TYPED_TEST_SUITE(RecordFormTest, EveryRecord);

TYPED_TEST(RecordFormTest, HasExactlyTheFieldsAsMembers) {
    Names expected = Sample<TypeParam>::required();
    expected.merge(Sample<TypeParam>::optional());
    EXPECT_EQ(namesOf(this->form), expected);
}

TYPED_TEST(RecordFormTest, LeadsBackToTheRecord) {
    EXPECT_EQ(Json::decode<TypeParam>(this->form), this->full);
    EXPECT_EQ(Json::decodeText<TypeParam>(Json::toText(this->form)), this->full) << "by way of text";
}

TYPED_TEST(RecordFormTest, OfAnUnfilledRecordLeadsBackToIt) {
    const json unfilled = Json::encode(TypeParam{});
    EXPECT_EQ(namesOf(unfilled), Sample<TypeParam>::required()) << "absent optionals are left out";
    EXPECT_EQ(Json::decode<TypeParam>(unfilled), TypeParam{});
}

TYPED_TEST(RecordFormTest, IsTheSameAfterReadingAndWriting) {
    EXPECT_EQ(Json::encode(Json::decode<TypeParam>(this->form)), this->form);
}

TYPED_TEST(RecordFormTest, MayLackAnOptional) {
    for (const std::string& name : Sample<TypeParam>::optional()) {
        json without = this->form;
        without.erase(name);
        EXPECT_EQ(Json::encode(Json::decode<TypeParam>(without)), without) << name;
    }
}

TYPED_TEST(RecordFormTest, TakesNullForAnAbsentOptional) {
    for (const std::string& name : Sample<TypeParam>::optional()) {
        json without = this->form;
        without.erase(name);
        json withNull = this->form;
        withNull[name] = nullptr;
        EXPECT_EQ(Json::decode<TypeParam>(withNull), Json::decode<TypeParam>(without)) << name;
    }
}

TYPED_TEST(RecordFormTest, MustHaveEveryOtherMember) {
    for (const std::string& name : Sample<TypeParam>::required()) {
        json without = this->form;
        without.erase(name);
        EXPECT_THROW((void)Json::decode<TypeParam>(without), Json::Error) << name;
        without[name] = nullptr;
        EXPECT_THROW((void)Json::decode<TypeParam>(without), Json::Error) << name << " null";
    }
}

TYPED_TEST(RecordFormTest, RefusesAMemberOfAnotherKind) {
    for (const std::string& name : namesOf(this->form)) {
        json wrong = this->form;
        wrong[name] = ofAnotherKind(wrong[name]);
        EXPECT_THROW((void)Json::decode<TypeParam>(wrong), Json::Error) << name;
    }
}

TYPED_TEST(RecordFormTest, IgnoresMembersThatItDoesNotHave) {
    json more = this->form;
    more["somethingNew"] = {{"a", {1, nullptr, true}}};
    more[""] = 1;
    EXPECT_EQ(Json::decode<TypeParam>(more), this->full);
}

TYPED_TEST(RecordFormTest, IsAnObject) {
    for (const json& other : {json(), json(5), json("x"), json(true), json::array(), json::array({this->form})}) {
        EXPECT_THROW((void)Json::decode<TypeParam>(other), Json::Error) << other;
    }
}

} // namespace
} // namespace UsageModel
