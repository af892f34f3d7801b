#include "HarrowlaneApp/Platform/Linux/PortalAppearance.h"

#include <QApplication>
#include <QDBusMetaType>
#include <QPalette>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/Linux/PrivateBus.h"
#include "HarrowlaneApp/Platform/Linux/StubService.h"

namespace HarrowlaneApp {

namespace {

using Groups = QMap<QString, QVariantMap>;
constexpr const char* group = "org.freedesktop.appearance";

class StubPortal : public StubService {
public:
    explicit StubPortal(QDBusConnection bus, QVariantMap settings)
        : StubService(std::move(bus),
                      {.name = "org.freedesktop.portal.Desktop",
                       .path = "/org/freedesktop/portal/desktop",
                       .interface = "org.freedesktop.portal.Settings"},
                      [this](const QDBusMessage&) {
                          return Reply{.values = {QVariant::fromValue(Groups{{group, settings_}})}};
                      }),
          settings_(std::move(settings)) {}

    void set(const QString& key, const QVariant& value, const QString& ofGroup = group) {
        tell("SettingChanged", {ofGroup, key, QVariant::fromValue(QDBusVariant(value))});
    }

private:
    QVariantMap settings_;
};

class PortalAppearanceTest : public testing::Test {
protected:
    PortalAppearanceTest() { qDBusRegisterMetaType<Groups>(); }
    ~PortalAppearanceTest() override { QApplication::setPalette(QPalette()); }

    static void desktopIsDark() {
        QPalette palette;
        palette.setColor(QPalette::WindowText, Qt::white);
        palette.setColor(QPalette::Window, Qt::black);
        QApplication::setPalette(palette);
        QCoreApplication::setAttribute(Qt::AA_SetPalette, false);
    }

    [[nodiscard]] std::unique_ptr<PortalAppearance> make() {
        auto appearance = std::make_unique<PortalAppearance>(bus.connect());
        QObject::connect(appearance.get(), &DesktopAppearance::changed, [this] { ++changes; });
        return appearance;
    }

    PrivateBus bus;
    QDBusConnection desktop = bus.connect();
    int changes = 0;
};

TEST_F(PortalAppearanceTest, FollowsThePaletteWithoutAPortal) {
    EXPECT_EQ(make()->appearance(), Appearance::light);
    desktopIsDark();
    const auto appearance = make();
    EXPECT_EQ(appearance->appearance(), Appearance::dark);
    EXPECT_FALSE(appearance->increasesContrast());
    EXPECT_FALSE(appearance->reducesTransparency());
}

TEST_F(PortalAppearanceTest, TakesWhatThePortalSays) {
    const StubPortal portal(desktop, {{"color-scheme", 1U}, {"contrast", 1U}});
    const auto appearance = make();
    ASSERT_TRUE(becomes([&] { return appearance->appearance() == Appearance::dark; }));
    EXPECT_TRUE(appearance->increasesContrast());
    EXPECT_EQ(changes, 1);
}

TEST_F(PortalAppearanceTest, ThePortalOutweighsThePalette) {
    desktopIsDark();
    const StubPortal portal(desktop, {{"color-scheme", 2U}});
    const auto appearance = make();
    EXPECT_EQ(appearance->appearance(), Appearance::dark);
    EXPECT_TRUE(becomes([&] { return appearance->appearance() == Appearance::light; }));
}

TEST_F(PortalAppearanceTest, NoPreferenceLeavesItToThePalette) {
    desktopIsDark();
    StubPortal portal(desktop, {{"color-scheme", 2U}});
    const auto appearance = make();
    ASSERT_TRUE(becomes([&] { return appearance->appearance() == Appearance::light; }));
    portal.set("color-scheme", 0U);
    EXPECT_TRUE(becomes([&] { return appearance->appearance() == Appearance::dark; }));
}

TEST_F(PortalAppearanceTest, FollowsEachChange) {
    StubPortal portal(desktop, {{"color-scheme", 1U}});
    const auto appearance = make();
    ASSERT_TRUE(becomes([&] { return appearance->appearance() == Appearance::dark; }));
    portal.set("color-scheme", 2U);
    ASSERT_TRUE(becomes([&] { return appearance->appearance() == Appearance::light; }));
    portal.set("contrast", 1U);
    ASSERT_TRUE(becomes([&] { return appearance->increasesContrast(); }));
    EXPECT_EQ(changes, 3);
}

TEST_F(PortalAppearanceTest, TellsOnlyOfWhatLooksDifferent) {
    StubPortal portal(desktop, {{"color-scheme", 1U}});
    const auto appearance = make();
    ASSERT_TRUE(becomes([&] { return changes == 1; }));
    portal.set("color-scheme", 1U);
    portal.set("accent-color", 3U);
    portal.set("color-scheme", 2U, "org.example.other");
    portal.set("contrast", QString("not a number"));
    portal.set("contrast", 1U);
    ASSERT_TRUE(becomes([&] { return appearance->increasesContrast(); }));
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(appearance->appearance(), Appearance::dark);
}

TEST_F(PortalAppearanceTest, UnwrapsAValueThatIsWrappedTwice) {
    const StubPortal portal(desktop, {{"color-scheme", QVariant::fromValue(QDBusVariant(1U))}});
    const auto appearance = make();
    EXPECT_TRUE(becomes([&] { return appearance->appearance() == Appearance::dark; }));
}

TEST_F(PortalAppearanceTest, HoldsWhatWasSaidUntilTheNextPortalSpeaks) {
    auto portal = std::make_unique<StubPortal>(desktop, QVariantMap{{"color-scheme", 1U}});
    const auto appearance = make();
    ASSERT_TRUE(becomes([&] { return appearance->appearance() == Appearance::dark; }));
    portal.reset();
    portal = std::make_unique<StubPortal>(desktop, QVariantMap{{"contrast", 1U}});
    EXPECT_EQ(appearance->appearance(), Appearance::dark);
    EXPECT_TRUE(becomes([&] { return appearance->increasesContrast(); }));
    EXPECT_EQ(appearance->appearance(), Appearance::light);
}

TEST_F(PortalAppearanceTest, APortalThatHangsLeavesItToThePaletteUntilItAnswers) {
    StubPortal portal(desktop, {});
    portal.breakSilence([](const QDBusMessage&) -> std::optional<StubService::Reply> { return std::nullopt; });
    const auto appearance = make();
    ASSERT_TRUE(becomes([&] { return !portal.calls.isEmpty(); }));
    EXPECT_EQ(appearance->appearance(), Appearance::light);
    portal.breakSilence([](const QDBusMessage&) {
        return StubService::Reply{.values = {QVariant::fromValue(Groups{{group, {{"color-scheme", 1U}}}})}};
    });
    EXPECT_TRUE(becomes([&] { return appearance->appearance() == Appearance::dark; }));
}

TEST_F(PortalAppearanceTest, APortalWithoutTheseSettingsLeavesItToThePalette) {
    StubPortal portal(desktop, {});
    portal.breakSilence([](const QDBusMessage&) { return StubService::Reply{.values = {"a text", 7}}; });
    const auto appearance = make();
    ASSERT_TRUE(becomes([&] { return !portal.calls.isEmpty(); }));
    portal.set("contrast", 1U);
    EXPECT_TRUE(becomes([&] { return appearance->increasesContrast(); }));
    EXPECT_EQ(appearance->appearance(), Appearance::light);
}

} // namespace

} // namespace HarrowlaneApp
