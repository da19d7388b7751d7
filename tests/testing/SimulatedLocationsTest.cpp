#include <gmock/gmock.h>

#include "Platform/contract/LocationRig.h"
#include "support/SimulatedTest.h"
#include "testing/SimulatedLocations.h"

namespace quorvane::testing {
namespace {

using platform::Location;
using platform::LocationAuthorization;
using platform::LocationManager;
using platform::contract::LocationListener;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Counts visits, and ends another manager when it is told a fix.
class Ender : public LocationListener {
public:
    void didVisit(const platform::Visit& visit) override { visits.push_back(visit); }
    void didUpdateLocations(const std::vector<Location>& locations) override {
        LocationListener::didUpdateLocations(locations);
        if (victim != nullptr) {
            victim->reset();
        }
    }

    std::vector<platform::Visit> visits;
    std::unique_ptr<LocationManager>* victim = nullptr;
};

class SimulatedLocationsTest : public SimulatedTest {
protected:
    SimulatedLocationsTest() {
        manager->setDelegate(&listener);
        phone->runUntilIdle();
    }

    [[nodiscard]] SimulatedLocations& services() { return phone->locationManagers(); }
    void settle() { phone->runUntilIdle(); }

    const Location here{{46.0, 14.5}, 5, 3, SimulatedClock::start};
    Ender listener;
    std::unique_ptr<LocationManager> manager = services().make();
};

TEST_F(SimulatedLocationsTest, RecordsWhatEachManagerWasAskedFor) {
    const auto other = services().make();
    manager->setDesiredAccuracy(platform::DesiredAccuracy::kilometer);
    manager->setDistanceFilter(3000);
    manager->setPausesLocationUpdatesAutomatically(false);
    manager->requestLocation();
    manager->requestLocation();
    other->setAllowsBackgroundLocationUpdates(true);
    other->setShowsBackgroundLocationIndicator(true);
    other->startUpdatingLocation();
    other->startMonitoringVisits();
    other->startMonitoringSignificantLocationChanges();

    ASSERT_EQ(services().managers().size(), 2U);
    const SimulatedLocations::Asked first = services().managers()[0];
    EXPECT_EQ(first.desiredAccuracy, 1000);
    EXPECT_EQ(first.distanceFilter, 3000);
    EXPECT_FALSE(first.pausesAutomatically);
    EXPECT_FALSE(first.allowsBackgroundUpdates);
    EXPECT_FALSE(first.showsBackgroundIndicator);
    EXPECT_FALSE(first.updates || first.visits || first.significantChanges);
    EXPECT_TRUE(first.hasOpenRequest);
    EXPECT_EQ(first.requests, 2);
    const SimulatedLocations::Asked second = services().managers()[1];
    EXPECT_EQ(second.desiredAccuracy, platform::DesiredAccuracy::best);
    EXPECT_EQ(second.distanceFilter, platform::noDistanceFilter);
    EXPECT_TRUE(second.pausesAutomatically);
    EXPECT_TRUE(second.allowsBackgroundUpdates);
    EXPECT_TRUE(second.showsBackgroundIndicator);
    EXPECT_TRUE(second.updates && second.visits && second.significantChanges);
    EXPECT_EQ(second.requests, 0);

    other->stopUpdatingLocation();
    other->stopMonitoringVisits();
    other->stopMonitoringSignificantLocationChanges();
    const SimulatedLocations::Asked then = services().managers()[1];
    EXPECT_FALSE(then.updates || then.visits || then.significantChanges);
    manager.reset();
    EXPECT_EQ(services().managers().size(), 1U);
}

TEST_F(SimulatedLocationsTest, ALocationThatIsSetIsKnownAtOnceAndToldToNobody) {
    manager->startUpdatingLocation();

    services().setLastLocation(here);

    EXPECT_EQ(manager->location(), here);
    settle();
    EXPECT_THAT(listener.told, IsEmpty());
    services().setLastLocation(std::nullopt);
    EXPECT_EQ(manager->location(), std::nullopt);
}

TEST_F(SimulatedLocationsTest, VisitsAreToldToThoseWhoMonitorThem) {
    const platform::Visit visit{here.coordinate, 20, here.timestamp};
    services().visit(visit);
    settle();
    EXPECT_THAT(listener.visits, IsEmpty());

    manager->startMonitoringVisits();
    services().visit(visit);
    EXPECT_THAT(listener.visits, IsEmpty());
    settle();

    EXPECT_THAT(listener.visits, ElementsAre(visit));
}

TEST_F(SimulatedLocationsTest, SignificantChangesAreToldToThoseWhoMonitorThem) {
    manager->startUpdatingLocation();
    services().receiveSignificantChange(here);
    settle();
    EXPECT_THAT(listener.told, IsEmpty());
    EXPECT_EQ(manager->location(), here);

    manager->startMonitoringSignificantLocationChanges();
    services().receiveSignificantChange(here);
    settle();

    EXPECT_THAT(listener.told, ElementsAre("fix"));
}

TEST_F(SimulatedLocationsTest, OnlyRegionsThatAreMonitoredAreCrossed) {
    manager->startMonitoring({"home", here.coordinate, 100});
    services().enter("home");
    services().exit("home");
    services().enter("office");
    services().exit("office");
    settle();

    EXPECT_THAT(listener.told, ElementsAre("monitors home", "not inside home", "enter home", "exit home"));
}

TEST_F(SimulatedLocationsTest, WhoeverIsAskedForPermissionGivesItUnlessTheTestSaysOtherwise) {
    services().setAuthorization(LocationAuthorization::notDetermined);
    manager->requestAuthorization(LocationManager::Permission::whenInUse);
    EXPECT_EQ(manager->authorization(), LocationAuthorization::whenInUse);
    manager->requestAuthorization(LocationManager::Permission::always);
    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);

    services().answerPermissionWith(LocationAuthorization::denied);
    manager->requestAuthorization(LocationManager::Permission::always);
    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);

    services().setAuthorization(LocationAuthorization::notDetermined);
    manager->requestAuthorization(LocationManager::Permission::always);
    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
    settle();
    EXPECT_THAT(listener.statuses, ElementsAre(LocationAuthorization::always, LocationAuthorization::notDetermined,
                                               LocationAuthorization::whenInUse, LocationAuthorization::always,
                                               LocationAuthorization::notDetermined, LocationAuthorization::denied));
}

TEST_F(SimulatedLocationsTest, AManagerThatEndsWhileAFixIsToldIsLeftOut) {
    LocationListener second;
    auto victim = services().make();
    victim->setDelegate(&second);
    settle();
    manager->startUpdatingLocation();
    victim->startUpdatingLocation();
    listener.victim = &victim;

    services().receive(here);
    settle();

    EXPECT_THAT(listener.told, ElementsAre("fix"));
    EXPECT_THAT(second.told, IsEmpty());
}

TEST_F(SimulatedLocationsTest, PermissionLocationAndRegionsOutlastALaunch) {
    manager->startMonitoring({"home", here.coordinate, 100});
    services().setLastLocation(here);
    services().setAuthorization(LocationAuthorization::whenInUse);
    manager.reset();

    phone.relaunch();

    manager = services().make();
    EXPECT_EQ(manager->authorization(), LocationAuthorization::whenInUse);
    EXPECT_EQ(manager->location(), here);
    ASSERT_EQ(manager->monitoredRegions().size(), 1U);
    EXPECT_EQ(manager->monitoredRegions()[0].identifier, "home");
    manager.reset();
}

} // namespace
} // namespace quorvane::testing
