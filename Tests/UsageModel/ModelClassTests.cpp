#include "UsageModel/ModelClass.h"

#include <limits>

#include <gmock/gmock.h>

#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

using testing::ElementsAre;
using testing::Pair;

struct NameRow : TestSupport::Named {
    std::string_view rawModel;
    ModelClass expected;
};

class ModelNameTest : public testing::TestWithParam<NameRow> {};

TEST_P(ModelNameTest, GivesTheClass) {
    EXPECT_EQ(modelClass(GetParam().rawModel), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Names, ModelNameTest,
                         testing::Values(NameRow{"opus", "claude-opus-4-5-20251101", ModelClass::opus},
                                         NameRow{"fable", "claude-fable-1", ModelClass::fable},
                                         NameRow{"sonnet", "claude-sonnet-4-5-20250929", ModelClass::sonnet},
                                         NameRow{"haiku", "claude-haiku-4-5", ModelClass::haiku},
                                         NameRow{"fable wins behind opus", "claude-opus-4-fable", ModelClass::fable},
                                         NameRow{"fable wins before opus", "claude-fable-opus", ModelClass::fable},
                                         NameRow{"opus wins over sonnet", "sonnet-opus", ModelClass::opus},
                                         NameRow{"sonnet wins over haiku", "haiku-sonnet", ModelClass::sonnet},
                                         NameRow{"fable wins over all", "haiku-sonnet-opus-fable", ModelClass::fable},
                                         NameRow{"upper case", "CLAUDE-SONNET", ModelClass::sonnet},
                                         NameRow{"mixed case", "oPuS", ModelClass::opus},
                                         NameRow{"no anchoring", "xxhaikuyy", ModelClass::haiku},
                                         NameRow{"the word alone", "fable", ModelClass::fable},
                                         NameRow{"empty", "", ModelClass::other},
                                         NameRow{"synthetic", "<synthetic>", ModelClass::other},
                                         NameRow{"foreign", "gpt-x", ModelClass::other},
                                         NameRow{"a word cut short", "claude-opu", ModelClass::other},
                                         NameRow{"a word with a gap", "op us", ModelClass::other},
                                         NameRow{"an accent makes another word", "ÖPUS", ModelClass::other},
                                         NameRow{"bytes that are no UTF 8", "\xFF\xFEopus\xC3", ModelClass::opus},
                                         NameRow{"behind a NUL", std::string_view("\0opus", 5), ModelClass::opus}),
                         TestSupport::rowName);

struct ClassRow : TestSupport::Named {
    ModelClass modelClass;
    std::string_view text;
    std::string_view displayName;
    ModelBucket bucket;
    bool isOpusClass;
};

class ModelClassTest : public testing::TestWithParam<ClassRow> {};

TEST_P(ModelClassTest, HasItsTextsAndItsBucket) {
    const ClassRow& row = GetParam();
    EXPECT_EQ(text(row.modelClass), row.text);
    EXPECT_EQ(fromText<ModelClass>(row.text), row.modelClass);
    EXPECT_EQ(displayName(row.modelClass), row.displayName);
    EXPECT_EQ(bucket(row.modelClass), row.bucket);
    EXPECT_EQ(isOpusClass(row.modelClass), row.isOpusClass);
}

INSTANTIATE_TEST_SUITE_P(
    Classes, ModelClassTest,
    testing::Values(ClassRow{"opus", ModelClass::opus, "opus", "Opus", ModelBucket::opusClass, true},
                    ClassRow{"fable", ModelClass::fable, "fable", "Fable", ModelBucket::opusClass, true},
                    ClassRow{"sonnet", ModelClass::sonnet, "sonnet", "Sonnet", ModelBucket::sonnet, false},
                    ClassRow{"haiku", ModelClass::haiku, "haiku", "Haiku", ModelBucket::other, false},
                    ClassRow{"other", ModelClass::other, "other", "Other", ModelBucket::other, false}),
    TestSupport::rowName);

TEST(ModelClass, AllClassesAreWalkedInTheirOrder) {
    EXPECT_THAT(allCases<ModelClass>, ElementsAre(ModelClass::opus, ModelClass::fable, ModelClass::sonnet,
                                                  ModelClass::haiku, ModelClass::other));
}

TEST(ModelBucket, HasTextsAndLabelsInItsOrder) {
    EXPECT_THAT(allCases<ModelBucket>, ElementsAre(ModelBucket::opusClass, ModelBucket::sonnet, ModelBucket::other));
    EXPECT_EQ(text(ModelBucket::opusClass), "opusClass");
    EXPECT_EQ(text(ModelBucket::sonnet), "sonnet");
    EXPECT_EQ(text(ModelBucket::other), "other");
    EXPECT_EQ(label(ModelBucket::opusClass), "Opus-class");
    EXPECT_EQ(label(ModelBucket::sonnet), "Sonnet");
    EXPECT_EQ(label(ModelBucket::other), "Haiku & other");
}

struct BucketRow : TestSupport::Named {
    EnumMap<ModelClass, double> byClass;
    double opusClass;
    double sonnet;
    double other;
};

class BucketedTest : public testing::TestWithParam<BucketRow> {};

TEST_P(BucketedTest, GivesThreeSumsInOrder) {
    const BucketRow& row = GetParam();
    EXPECT_THAT(bucketed(row.byClass),
                ElementsAre(Pair(ModelBucket::opusClass, row.opusClass), Pair(ModelBucket::sonnet, row.sonnet),
                            Pair(ModelBucket::other, row.other)));
}

INSTANTIATE_TEST_SUITE_P(
    Maps, BucketedTest,
    testing::Values(BucketRow{"nothing still gives three", {}, 0, 0, 0},
                    BucketRow{"opus and fable share one",
                              {{ModelClass::opus, 1}, {ModelClass::fable, 2}, {ModelClass::haiku, 3}},
                              3,
                              0,
                              3},
                    BucketRow{"sonnet stands alone", {{ModelClass::sonnet, 4}}, 0, 4, 0},
                    BucketRow{"haiku and other share one", {{ModelClass::haiku, 1}, {ModelClass::other, 2}}, 0, 0, 3},
                    BucketRow{"negative sums stay", {{ModelClass::opus, -1}, {ModelClass::fable, 0.5}}, -0.5, 0, 0}),
    TestSupport::rowName);

TEST(Bucketed, ValuesThatAreNoNumbersStayInTheirBucket) {
    const auto sums = bucketed({{ModelClass::opus, std::numeric_limits<double>::quiet_NaN()}, {ModelClass::haiku, 1}});
    EXPECT_TRUE(std::isnan(sums[0].second));
    EXPECT_EQ(sums[1].second, 0.0);
    EXPECT_EQ(sums[2].second, 1.0);
}

} // namespace
} // namespace UsageModel
