#include <gmock/gmock.h>

#include "testing/PhoneTest.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;
using platform::DesiredAccuracy;
using platform::Location;
using platform::LocationAuthorization;
using platform::LocationManager;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PhoneLocationTest : public PhoneTest {
protected:
    /// A track of fixes, that many seconds after its first one and hundredths of a degree north of it.
    static Track track(const std::vector<std::pair<int, double>>& points) {
        Track result;
        for (const auto& [seconds, north] : points) {
            result.fixes.push_back(
                {{46 + north / 100, 14.5}, 5, -1, SimulatedClock::start + std::chrono::seconds(seconds)});
        }
        return result;
    }

    /// When each fix came, in seconds after the start.
    [[nodiscard]] std::vector<double> times() const {
        std::vector<double> result;
        for (const Location& fix : listener.fixes) {
            result.push_back(std::chrono::duration<double>(fix.timestamp - SimulatedClock::start).count());
        }
        return result;
    }
};

TEST_F(PhoneLocationTest, ARequestIsAnsweredAtOnceWithThePositionAtThatMoment) {
    phone.follow(track({{0, 0}, {100, 1}}));
    phone.advance(25s);
    EXPECT_THAT(told(), IsEmpty());

    manager().requestLocation();
    EXPECT_THAT(told(), ElementsAre("fix"));

    ASSERT_EQ(listener.fixes.size(), 1U);
    EXPECT_NEAR(listener.fixes[0].coordinate.latitude, 46.0025, 1e-9);
    EXPECT_EQ(listener.fixes[0].timestamp, SimulatedClock::start + 25s);
    EXPECT_EQ(listener.fixes[0].horizontalAccuracy, 5);
}

TEST_F(PhoneLocationTest, ATrackBeginsWhenItIsFollowed) {
    phone.advance(1h);
    phone.follow(track({{0, 0}, {100, 1}}));
    phone.advance(50s);

    EXPECT_NEAR(phone.position()->coordinate.latitude, 46.005, 1e-9);
    EXPECT_EQ(phone.position()->timestamp, SimulatedClock::start + 1h + 50s);
    phone.advance(1h);
    EXPECT_EQ(phone.position()->coordinate.latitude, 46.01);
}

TEST_F(PhoneLocationTest, ContinuousUpdatesComeAtEachFixOfTheTrackAndEveryTenSecondsBetween) {
    phone.follow(track({{0, 0}, {3, 1}, {4, 2}, {30, 3}, {31, 4}}));
    phone.advance(1s);
    manager().startUpdatingLocation();
    phone.advance(49s);

    EXPECT_THAT(times(), ElementsAre(1, 3, 4, 14, 24, 30, 31, 41));
}

TEST_F(PhoneLocationTest, AHappeningAtTheMomentOfAFixDoesNotLoseIt) {
    phone.follow(track({{0, 0}, {3, 1}, {6, 2}}));
    manager().startUpdatingLocation();
    phone.world().postAfter(3s, [this] {
        EXPECT_TRUE(phone.position());
        phone.setAccuracy(50);
    });
    phone.advance(6s);

    EXPECT_THAT(times(), ElementsAre(0, 3, 6));
    EXPECT_EQ(listener.fixes[1].horizontalAccuracy, 50);
}

TEST_F(PhoneLocationTest, NothingIsAskedOfTheReceiverWhileNobodyWantsAFix) {
    phone.follow(track({{0, 0}, {3, 1}, {400, 2}}));
    phone.advance(500s);

    EXPECT_EQ(manager().location(), std::nullopt);
    EXPECT_EQ(phone.usage().receiverTime, 0s);
}

TEST_F(PhoneLocationTest, FixesAreAsAccurateAsTheTestSaysForAsLongAsItSaysSo) {
    phone.moveTo(here, 8);
    phone.setAccuracy(1500);
    manager().requestLocation();
    told();
    phone.setAccuracy(std::nullopt);
    manager().requestLocation();
    told();

    EXPECT_EQ(listener.fixes.at(0).horizontalAccuracy, 1500);
    EXPECT_EQ(listener.fixes.at(1).horizontalAccuracy, 8);
}

TEST_F(PhoneLocationTest, WithoutSignalARequestFailsAfterTenSeconds) {
    phone.moveTo(here);
    phone.setSignal(false);
    manager().requestLocation();
    phone.advance(9999ms);
    EXPECT_THAT(told(), IsEmpty());

    phone.advance(1ms);
    EXPECT_THAT(told(), ElementsAre("fail"));
    phone.advance(1h);
    EXPECT_THAT(told(), IsEmpty());

    manager().requestLocation();
    phone.advance(10s);
    EXPECT_THAT(told(), ElementsAre("fail"));
}

TEST_F(PhoneLocationTest, ARequestIsAnsweredWhenTheSignalComesBackInTime) {
    phone.moveTo(here);
    phone.setSignal(false);
    manager().requestLocation();
    phone.advance(5s);
    phone.setSignal(true);

    EXPECT_THAT(told(), ElementsAre("fix"));
    phone.advance(1h);
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(PhoneLocationTest, ContinuousUpdatesFailOnceEachTimeTheSignalIsLostAndGoOnAfterwards) {
    phone.moveTo(here);
    manager().startUpdatingLocation();
    EXPECT_THAT(told(), ElementsAre("fix"));

    for (int i = 0; i < 2; ++i) {
        phone.setSignal(false);
        phone.advance(5min);
        EXPECT_THAT(told(), ElementsAre("fail"));
        phone.setSignal(true);
        EXPECT_THAT(told(), ElementsAre("fix"));
    }
}

TEST_F(PhoneLocationTest, APhoneThatIsNowhereHasNoFix) {
    manager().requestLocation();
    phone.advance(10s);

    EXPECT_THAT(told(), ElementsAre("fail"));
    EXPECT_EQ(phone.position(), std::nullopt);
}

TEST_F(PhoneLocationTest, AClockThatIsSetBackDatesFixesAndMovesNothing) {
    phone.follow(track({{0, 0}, {100, 1}}));
    phone.advance(50s);
    phone.setWallTime(SimulatedClock::start - 1h);
    phone.advance(25s);
    manager().requestLocation();
    told();

    EXPECT_NEAR(listener.fixes.at(0).coordinate.latitude, 46.0075, 1e-9);
    EXPECT_EQ(listener.fixes[0].timestamp, SimulatedClock::start - 1h + 25s);
}

TEST_F(PhoneLocationTest, RegionsVisitsAndSignificantChangesAreDerivedFromTheWay) {
    phone.follow(track({{0, 0}, {600, 0}, {1200, 1}, {1800, 1}, {1801, 0}}));
    manager().startMonitoring(home);
    manager().startMonitoringVisits();
    manager().startMonitoringSignificantLocationChanges();
    phone.advance(2000s);

    EXPECT_THAT(told(), ElementsAre("monitors home", "inside home", "arrival", "exit home", "departure", "fix", "fix",
                                    "arrival", "fix", "enter home", "departure"));
}

TEST_F(PhoneLocationTest, PermissionThatIsAskedForIsGivenUnlessTheUserSaysOtherwise) {
    phone.setAuthorization(LocationAuthorization::notDetermined);
    EXPECT_EQ(manager().authorization(), LocationAuthorization::notDetermined);
    manager().requestAuthorization(LocationManager::Permission::whenInUse);
    EXPECT_EQ(manager().authorization(), LocationAuthorization::whenInUse);
    manager().requestAuthorization(LocationManager::Permission::always);
    EXPECT_EQ(manager().authorization(), LocationAuthorization::always);
}

class PhoneRefusalTest : public PhoneTest {
protected:
    PhoneRefusalTest() : PhoneTest(refusing()) {}

    static PhoneOptions refusing() {
        PhoneOptions options;
        options.authorization = LocationAuthorization::notDetermined;
        options.permissionAnswer = LocationAuthorization::denied;
        return options;
    }
};

TEST_F(PhoneRefusalTest, AUserMayRefusePermission) {
    EXPECT_EQ(manager().authorization(), LocationAuthorization::notDetermined);
    manager().requestAuthorization(LocationManager::Permission::always);

    EXPECT_EQ(manager().authorization(), LocationAuthorization::denied);
    told();
    EXPECT_THAT(listener.statuses, ElementsAre(LocationAuthorization::notDetermined, LocationAuthorization::denied));
}

TEST_F(PhoneLocationTest, TheReceiverRunsForFineUpdatesAndFiveSecondsForARequest) {
    phone.moveTo(here);
    manager().requestLocation();
    told();
    EXPECT_EQ(phone.usage().receiverTime, 5s);

    manager().setDesiredAccuracy(DesiredAccuracy::kilometer);
    manager().requestLocation();
    manager().startUpdatingLocation();
    phone.advance(100s);
    EXPECT_EQ(phone.usage().receiverTime, 5s);

    manager().setDesiredAccuracy(DesiredAccuracy::hundredMeters);
    phone.advance(100s);
    manager().requestLocation();
    phone.advance(20s);
    EXPECT_EQ(phone.usage().receiverTime, 125s);
    manager().stopUpdatingLocation();
    phone.advance(100s);
    EXPECT_EQ(phone.usage().receiverTime, 125s);
    EXPECT_EQ(phone.usage().fixRequests, 3U);
}

TEST_F(PhoneLocationTest, FixesThatAreGivenAreCounted) {
    phone.moveTo(here);
    manager().requestLocation();
    manager().setDistanceFilter(500);
    manager().startUpdatingLocation();
    phone.advance(100s);
    phone.moveTo(there);
    phone.advance(100s);

    EXPECT_EQ(phone.usage().fixes, 2U);
    EXPECT_THAT(told(), ElementsAre("fix", "fix"));
}

} // namespace
} // namespace quorvane::testing
