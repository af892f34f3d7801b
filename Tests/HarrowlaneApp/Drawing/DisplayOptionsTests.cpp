#include "HarrowlaneApp/Drawing/DisplayOptions.h"

#include <functional>
#include <memory>
#include <utility>

#include <gtest/gtest.h>

namespace {

using namespace HarrowlaneApp;

/// What a test says the system wants.
struct Wishes {
    bool reduceTransparency = false;
    bool increaseContrast = false;
    std::function<void()> notice;
};

class FakeDisplay : public AccessibilityDisplay {
public:
    explicit FakeDisplay(std::shared_ptr<Wishes> wishes) : wishes_(std::move(wishes)) {}
    ~FakeDisplay() override { wishes_->notice = nullptr; }

    bool shouldReduceTransparency() const override { return wishes_->reduceTransparency; }
    bool shouldIncreaseContrast() const override { return wishes_->increaseContrast; }
    void observe(std::function<void()> onNotice) override { wishes_->notice = std::move(onNotice); }

private:
    std::shared_ptr<Wishes> wishes_;
};

class DisplayOptionsTest : public testing::Test {
protected:
    std::shared_ptr<Wishes> wishes = std::make_shared<Wishes>();
    int changes = 0;

    std::unique_ptr<DisplayOptions> make() {
        auto options = std::make_unique<DisplayOptions>(std::make_unique<FakeDisplay>(wishes));
        QObject::connect(options.get(), &DisplayOptions::changed, [this] { ++changes; });
        return options;
    }
};

TEST_F(DisplayOptionsTest, ReadsBothAtCreation) {
    wishes->increaseContrast = true;
    const auto options = make();
    EXPECT_FALSE(options->reduceTransparency());
    EXPECT_TRUE(options->increaseContrast());
    EXPECT_EQ(options->look(Appearance::dark), (Look{.appearance = Appearance::dark, .increaseContrast = true}));
}

TEST_F(DisplayOptionsTest, ReadsBothAgainOnEachNotice) {
    const auto options = make();
    wishes->reduceTransparency = true;
    wishes->increaseContrast = true;
    EXPECT_FALSE(options->reduceTransparency()) << "nothing is read without a notice";
    wishes->notice();
    EXPECT_TRUE(options->reduceTransparency());
    EXPECT_TRUE(options->increaseContrast());
    EXPECT_EQ(changes, 1);
    wishes->reduceTransparency = false;
    wishes->notice();
    EXPECT_FALSE(options->reduceTransparency());
    EXPECT_EQ(changes, 2);
}

TEST_F(DisplayOptionsTest, ANoticeWithoutAChangeRedrawsNothing) {
    const auto options = make();
    wishes->notice();
    EXPECT_EQ(changes, 0);
}

TEST_F(DisplayOptionsTest, EndsItsObservationWithItself) {
    make().reset();
    EXPECT_FALSE(wishes->notice);
}

} // namespace
