#include "HarrowlaneApp/Views/WhatIfPanel.h"

#include <QTest>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Samples/PreviewData.h"
#include "HarrowlaneApp/Views/Watching.h"

namespace {

using namespace HarrowlaneApp;
using namespace ViewTests;
using testing::ElementsAre;
using UsageModel::EffortLevel;
using UsageModel::ModelAndEffort;
using UsageModel::ModelClass;

class WhatIf : public testing::Test {
protected:
    ApplicationLook look{Look{.appearance = Appearance::dark}};
    UsageModel::Calendar calendar = UsageModel::Calendar::utc();
    UsageModel::WeekSeries week = *PreviewData::overPace(UsageModel::Date{1763648100}).weekSeries;
    ModelAndEffort choice;
    WhatIfPanel panel{look};

    void SetUp() override {
        QObject::connect(&panel, &WhatIfPanel::chosen, [this](const ModelAndEffort& chosen) { choose(chosen); });
        choose({});
        show(panel, {680, 147});
    }

    /// As the dashboard does.
    void choose(const ModelAndEffort& chosen) {
        choice = chosen;
        panel.setPanel(*WhatIfTexts::panel(week, choice, calendar), choice);
        QApplication::processEvents();
    }

    [[nodiscard]] std::vector<ChipButton*> chips(const char* axis) const {
        std::vector<ChipButton*> shownChips;
        for (auto* chip : find<AxisRow>(panel, axis).findChildren<ChipButton*>()) {
            if (chip->isVisibleTo(&panel)) shownChips.push_back(chip);
        }
        return shownChips;
    }

    [[nodiscard]] std::vector<std::string> labels(const char* axis) const {
        std::vector<std::string> texts;
        for (const auto* chip : chips(axis)) texts.push_back(chip->text().toStdString());
        return texts;
    }

    void click(const char* axis, const char* label) {
        for (auto* chip : chips(axis)) {
            if (chip->text() == QLatin1String(label)) return QTest::mouseClick(chip, Qt::LeftButton);
        }
        FAIL() << "there is no chip " << label;
    }
};

TEST_F(WhatIf, OffersModelsByPriceAndEffortsInTheirOrder) {
    EXPECT_THAT(labels("modelAxis"), ElementsAre("Haiku", "Sonnet", "Opus", "Fable"));
    EXPECT_THAT(labels("effortAxis"), ElementsAre("Low", "Medium", "High", "X-High", "Max"));
    EXPECT_EQ(textOf(panel, "whatIfLanding"),
              "Pick a model or an effort level to see where the week would land instead.");
    EXPECT_FALSE(find<TextButton>(panel, "whatIfReset").isVisible());
}

TEST_F(WhatIf, AClickChoosesAndASecondOneTakesItBack) {
    click("modelAxis", "Sonnet");
    EXPECT_EQ(choice, (ModelAndEffort{.model = ModelClass::sonnet}));
    EXPECT_TRUE(chips("modelAxis")[1]->isChecked());
    EXPECT_THAT(textOf(panel, "whatIfLanding"), testing::StartsWith("lands ≈"));
    EXPECT_EQ(textOf(panel, "whatIfConsequence"), "inside the cap");
    click("modelAxis", "Sonnet");
    EXPECT_EQ(choice, ModelAndEffort{});
    EXPECT_FALSE(chips("modelAxis")[1]->isChecked());
}

TEST_F(WhatIf, AChoiceMovesNothing) {
    const int height = panel.heightForWidth(680);
    EXPECT_EQ(height, 147);
    std::vector<QRect> before;
    for (const auto* chip : chips("modelAxis")) before.push_back(chip->geometry());
    click("modelAxis", "Sonnet");
    click("effortAxis", "Medium");
    EXPECT_EQ(panel.heightForWidth(680), height);
    std::vector<QRect> after;
    for (const auto* chip : chips("modelAxis")) after.push_back(chip->geometry());
    EXPECT_EQ(before, after);
}

TEST_F(WhatIf, ResetTakesBothBack) {
    click("modelAxis", "Sonnet");
    click("effortAxis", "Low");
    auto& reset = find<TextButton>(panel, "whatIfReset");
    ASSERT_TRUE(reset.isVisible());
    QTest::mouseClick(&reset, Qt::LeftButton);
    EXPECT_EQ(choice, ModelAndEffort{});
    EXPECT_FALSE(reset.isVisible());
}

TEST_F(WhatIf, AnEffortOtherThanTheCurrentOneIsMarkedAsAnEstimate) {
    auto& mark = find<EstimateMark>(panel, "whatIfEstimate");
    click("modelAxis", "Sonnet");
    EXPECT_FALSE(mark.isVisible());
    click("effortAxis", "Low");
    EXPECT_TRUE(mark.isVisible());
    EXPECT_TRUE(mark.toolTip().contains(QStringLiteral("so this is a floor")));
    click("effortAxis", "High");
    EXPECT_FALSE(mark.isVisible()) << "it is the current one";
}

TEST_F(WhatIf, HaikuHasNoEffortsAndKeepsTheChosenOneForLater) {
    click("effortAxis", "Low");
    const std::string withLow = textOf(panel, "whatIfLanding");
    click("modelAxis", "Haiku");
    EXPECT_TRUE(chips("effortAxis").empty());
    EXPECT_EQ(textOf(find<AxisRow>(panel, "effortAxis"), "axisNote"), "Not offered on Haiku");
    EXPECT_EQ(choice.effort, EffortLevel::low);
    EXPECT_FALSE(find<EstimateMark>(panel, "whatIfEstimate").isVisible());
    click("modelAxis", "Haiku");
    EXPECT_EQ(textOf(panel, "whatIfLanding"), withLow);
}

TEST_F(WhatIf, AChipTellsWhatItIsFor) {
    const auto models = chips("modelAxis");
    EXPECT_EQ(models[1]->toolTip(), QStringLiteral("Switch the rest of the week to Sonnet"));
    EXPECT_EQ(models[2]->toolTip(), QStringLiteral("Where your logs say you are now"));
    auto* accessible = QAccessible::queryAccessibleInterface(models[2]);
    EXPECT_EQ(accessible->role(), QAccessible::CheckBox);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Opus"));
    EXPECT_EQ(accessible->text(QAccessible::Description), QStringLiteral("Where your logs say you are now"));
}

TEST_F(WhatIf, AScreenReaderCanChooseToo) {
    auto* accessible = QAccessible::queryAccessibleInterface(chips("modelAxis")[0]);
    accessible->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(choice.model, ModelClass::haiku);
}

TEST_F(WhatIf, TheKeyboardKeepsItsPlaceThroughAChoice) {
    auto* chip = chips("modelAxis")[1];
    chip->setFocus(Qt::TabFocusReason);
    QTest::keyClick(chip, Qt::Key_Space);
    EXPECT_EQ(choice.model, ModelClass::sonnet);
    EXPECT_TRUE(chip->hasFocus());
    EXPECT_NE(panel.findChild<FocusRing*>(), nullptr);
}

TEST_F(WhatIf, NarrowItPutsAllChipsBelowTheirTitles) {
    show(panel, {480, panel.heightForWidth(480)});
    for (const char* axis : {"modelAxis", "effortAxis"}) {
        for (const auto* chip : chips(axis)) {
            EXPECT_GT(chip->y(), 0);
            EXPECT_LE(chip->geometry().right(), find<AxisRow>(panel, axis).width());
        }
    }
    EXPECT_EQ(chips("modelAxis")[0]->x(), 0);
}

} // namespace
