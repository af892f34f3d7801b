#include "HarrowlaneApp/Views/ModelsView.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Drawing/BucketColors.h"
#include "HarrowlaneApp/Drawing/Canvas.h"
#include "HarrowlaneApp/Views/Watching.h"

namespace {

using namespace HarrowlaneApp;
using namespace ViewTests;
using DrawingTests::Canvas;
using DrawingTests::near;
using testing::ElementsAre;
using UsageModel::ModelClass;

class Models : public testing::Test {
protected:
    ApplicationLook look{Look{.appearance = Appearance::dark}};
    ModelsView view{look};

    void showModels(const UsageModel::ModelBreakdown& models) {
        view.setModels(models);
        show(view, {680, 420});
    }

    static UsageModel::ModelBreakdown breakdown(double opus, double fable, double sonnet) {
        UsageModel::ModelBreakdown models;
        models.byClass[ModelClass::opus] = opus;
        models.byClass[ModelClass::fable] = fable;
        models.byClass[ModelClass::sonnet] = sonnet;
        return models;
    }
};

TEST_F(Models, TellsEachFamilysShareAndTheSharedCap) {
    showModels(breakdown(2.0, 1.0, 1.0));
    EXPECT_EQ(textOf(view, "modelsHeading"), "This week");
    EXPECT_THAT(heard(find<ModelBars>(view, "modelBars")),
                ElementsAre("Opus 50%", "Fable 25%", "Sonnet 25%", "Haiku 0%", "Other 0%"));
    EXPECT_EQ(textOf(view, "modelsNote"),
              "Opus and Fable share the same weekly cap — together they are 75% of this week.");
}

TEST_F(Models, SaysThatNothingWasUsed) {
    showModels({});
    EXPECT_FALSE(find<ModelBars>(view, "modelBars").isVisible());
    EXPECT_EQ(textOf(view, "modelsNote"), "No usage recorded this week yet.");
}

TEST_F(Models, HasNoNoteForOneOpusClassFamily) {
    showModels(breakdown(2.0, 0.0, 1.0));
    EXPECT_TRUE(find<ModelBars>(view, "modelBars").isVisible());
    EXPECT_EQ(textOf(view, "modelsNote"), "");
}

TEST_F(Models, BarsComeAndGoWithTheWeek) {
    showModels({});
    showModels(breakdown(0.0, 0.0, 3.0));
    EXPECT_TRUE(find<ModelBars>(view, "modelBars").isVisible());
    showModels({});
    EXPECT_TRUE(heard(find<ModelBars>(view, "modelBars")).empty());
}

TEST_F(Models, ABarIsAsLongAsItsShare) {
    showModels(breakdown(2.0, 1.0, 1.0));
    auto& bars = find<ModelBars>(view, "modelBars");
    const QImage image = picture(bars);
    // The bar spans 496 points from 102 on; the first row's middle lies at 32.
    EXPECT_TRUE(near(Canvas::pixel(image, 102 + 240, 32), bucketColor(ChartBucket::opus, Appearance::dark)));
    EXPECT_FALSE(near(Canvas::pixel(image, 102 + 256, 32), bucketColor(ChartBucket::opus, Appearance::dark), 20));
    EXPECT_TRUE(near(Canvas::pixel(image, 102 + 60, 80), bucketColor(ChartBucket::fable, Appearance::dark)));
}

TEST_F(Models, ShareInALightWindowIsDrawnInItsLightColour) {
    look.force(Appearance::light);
    showModels(breakdown(2.0, 1.0, 1.0));
    const QImage image = picture(find<ModelBars>(view, "modelBars"));
    EXPECT_TRUE(near(Canvas::pixel(image, 130, 32), bucketColor(ChartBucket::opus, Appearance::light)));
}

} // namespace
