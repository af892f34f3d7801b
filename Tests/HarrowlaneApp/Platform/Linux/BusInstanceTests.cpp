#include "HarrowlaneApp/Platform/Linux/BusInstance.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/Desktop.h"
#include "HarrowlaneApp/Platform/Linux/PrivateBus.h"
#include "HarrowlaneApp/Platform/Linux/StubService.h"

namespace HarrowlaneApp {

namespace {

using Claim = SingleInstance::Claim;

class BusInstanceTest : public testing::Test {
protected:
    ~BusInstanceTest() override { qunsetenv("XDG_ACTIVATION_TOKEN"); }

    PrivateBus bus;
};

TEST_F(BusInstanceTest, TheFirstIsTheFirst) {
    BusInstance first(bus.connect());
    EXPECT_EQ(first.claim(), Claim::first);
}

TEST_F(BusInstanceTest, TheSecondMakesTheFirstShowItself) {
    BusInstance first(bus.connect());
    int requests = 0;
    QObject::connect(&first, &SingleInstance::showRequested, [&requests] { ++requests; });
    ASSERT_EQ(first.claim(), Claim::first);
    for (int start = 1; start <= 3; ++start) {
        EXPECT_EQ(BusInstance(bus.connect()).claim(), Claim::shownElsewhere);
        EXPECT_EQ(requests, start);
    }
}

TEST_F(BusInstanceTest, TheSecondDoesNotTakeThePlaceByEnding) {
    BusInstance first(bus.connect());
    ASSERT_EQ(first.claim(), Claim::first);
    EXPECT_EQ(BusInstance(bus.connect()).claim(), Claim::shownElsewhere);
    EXPECT_EQ(BusInstance(bus.connect()).claim(), Claim::shownElsewhere);
}

TEST_F(BusInstanceTest, ThePlaceIsFreeAgainOnceTheFirstHasEnded) {
    EXPECT_EQ(BusInstance(bus.connect()).claim(), Claim::first);
    EXPECT_EQ(BusInstance(bus.connect()).claim(), Claim::first);
}

TEST_F(BusInstanceTest, TheTokenOfTheSecondStartLetsTheFirstComeToTheFront) {
    BusInstance first(bus.connect());
    ASSERT_EQ(first.claim(), Claim::first);
    QByteArray token;
    QObject::connect(&first, &SingleInstance::showRequested, [&token] { token = qgetenv("XDG_ACTIVATION_TOKEN"); });
    qputenv("XDG_ACTIVATION_TOKEN", "from-the-second");
    BusInstance second(bus.connect());
    EXPECT_EQ(second.claim(), Claim::shownElsewhere);
    EXPECT_EQ(token, "from-the-second");
}

TEST_F(BusInstanceTest, AFirstThatHangsIsWaitedForNoLongerThanTold) {
    const QString name = Desktop::identifier;
    const StubService hanging(bus.connect(),
                              {.name = name, .path = '/' + QString(name).replace('.', '/'), .interface = {}},
                              [](const QDBusMessage&) -> std::optional<StubService::Reply> { return std::nullopt; });
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(BusInstance(bus.connect()).claim(), Claim::unanswered);
    EXPECT_GE(clock.elapsed(), static_cast<qint64>(SingleInstance::answerSeconds * 900))
        << "timers of this length are coarse";
    EXPECT_EQ(hanging.callsOf("Activate").size(), 1);
}

TEST_F(BusInstanceTest, ABusThatDiesLocksNobodyOut) {
    const QDBusConnection connection = bus.connect();
    bus.kill();
    EXPECT_EQ(BusInstance(connection).claim(), Claim::first);
}

} // namespace

} // namespace HarrowlaneApp
