#include <gmock/gmock.h>

#include "Platform/FakeTime.h"
#include "Platform/Support/DerivedLocations.h"
#include "Platform/contract/LocationRig.h"

namespace quorvane::platform {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Services over a receiver that is the test.
class Services : public DerivedLocations {
public:
    using DerivedLocations::DerivedLocations;

    int demandChanges = 0;
    bool isSilent = false;
    std::vector<Permission> asked;

private:
    void demandChanged() override { ++demandChanges; }
    void askForPermission(Permission permission) override { asked.push_back(permission); }
    [[nodiscard]] bool isSilentWhenStill() const override { return isSilent; }
};

/// Writes down what it is told, under its name.
class Listener : public contract::LocationListener {
public:
    Listener(std::string theName, std::vector<std::string>& theLog) : name(std::move(theName)), log(theLog) {}

    void didUpdateLocations(const std::vector<Location>& locations) override {
        LocationListener::didUpdateLocations(locations);
        write("fix");
        if (onFix) {
            onFix();
        }
    }
    void didVisit(const Visit& visit) override {
        write(visit.departureDate == distantFuture ? "arrival" : "departure");
    }
    void didEnterRegion(const CircularRegion& region) override { write("enter " + region.identifier); }
    void didExitRegion(const CircularRegion& region) override { write("exit " + region.identifier); }
    void didFail(const LocationError& error) override {
        write(error.kind == LocationError::Kind::denied ? "denied" : "fail");
    }
    void didDetermineState(const CircularRegion& region, RegionState state) override {
        write((state == RegionState::inside ? "inside " : "outside ") + region.identifier);
    }
    void monitoringDidFail(const CircularRegion& region, const LocationError& error) override {
        write("no " + region.identifier + ": " + error.message);
    }

    std::function<void()> onFix;

private:
    void write(const std::string& what) { log.push_back(name + ": " + what); }

    const std::string name;
    std::vector<std::string>& log;
};

class DerivedLocationsTest : public ::testing::Test {
protected:
    DerivedLocationsTest() {
        kept->authorization = LocationAuthorization::always;
        first->setDelegate(&firstListener);
        second->setDelegate(&secondListener);
    }
    ~DerivedLocationsTest() override {
        first.reset();
        second.reset();
    }

    DerivedLocations::Outcome fixAt(double metres, double accuracy = 5) {
        return services.receive({{46 + metres / 111'195.08, 14.5}, accuracy, -1, time.now()});
    }

    /// What was told since the last question.
    std::vector<std::string> told() {
        time.runDue();
        return std::exchange(log, {});
    }

    FakeTime time;
    std::shared_ptr<DerivedLocations::Kept> kept = std::make_shared<DerivedLocations::Kept>();
    Services services{time, time, kept};
    std::vector<std::string> log;
    Listener firstListener{"first", log};
    Listener secondListener{"second", log};
    std::unique_ptr<LocationManager> first = services.make();
    std::unique_ptr<LocationManager> second = services.make();
    const CircularRegion home{"home", {46, 14.5}, 100};
};

TEST_F(DerivedLocationsTest, AFixIsToldInTheOrderOfMakingAndBeforeTheCrossingsThatItCauses) {
    second->startMonitoring(home);
    fixAt(0);
    EXPECT_THAT(told(), ElementsAre("second: inside home"));
    second->requestLocation();
    first->startUpdatingLocation();

    const DerivedLocations::Outcome outcome = fixAt(1000);

    EXPECT_EQ(outcome.receivers, 2U);
    EXPECT_EQ(outcome.events, 1U);
    EXPECT_THAT(told(), ElementsAre("first: fix", "second: fix", "first: exit home", "second: exit home"));
}

TEST_F(DerivedLocationsTest, VisitsAreToldToThoseWhoMonitorThem) {
    second->startMonitoringVisits();
    for (int i = 0; i < 6; ++i) {
        fixAt(0);
        time.pass(1min);
    }
    EXPECT_THAT(told(), ElementsAre("second: arrival"));

    EXPECT_EQ(fixAt(1000).events, 1U);
    EXPECT_THAT(told(), ElementsAre("second: departure"));

    second->stopMonitoringVisits();
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(fixAt(0).events, 0U);
        time.pass(1min);
    }
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(DerivedLocationsTest, AVisitBeginsNoEarlierThanItsMonitoring) {
    first->startMonitoringVisits();
    for (int i = 0; i < 5; ++i) {
        fixAt(0);
        time.pass(1min);
    }
    first->stopMonitoringVisits();
    first->startMonitoringVisits();

    EXPECT_EQ(fixAt(0).events, 0U);
}

class SilentLocationsTest : public DerivedLocationsTest {
protected:
    SilentLocationsTest() {
        services.isSilent = true;
        first->startMonitoringVisits();
        fixAt(0);
    }

    /// What is told after so much time without a fix.
    std::vector<std::string> toldAfter(std::chrono::nanoseconds silence) {
        time.advance(silence);
        return told();
    }
};

TEST_F(SilentLocationsTest, AStayOfWhichNothingMoreIsHeardIsAVisitAfterFiveMinutesAndOnce) {
    EXPECT_THAT(toldAfter(5min - 1ns), IsEmpty());
    EXPECT_THAT(toldAfter(1ns), ElementsAre("first: arrival"));
    EXPECT_THAT(toldAfter(24h), IsEmpty());
    fixAt(1000);
    EXPECT_THAT(told(), ElementsAre("first: departure"));
    EXPECT_THAT(toldAfter(5min), ElementsAre("first: arrival"));
}

TEST_F(SilentLocationsTest, TimeThatTheDeviceHasSleptCounts) {
    time.pass(6min);

    EXPECT_THAT(told(), ElementsAre("first: arrival"));
}

TEST_F(SilentLocationsTest, AStayIsNoVisitAfterAFailureUntilTheNextFix) {
    services.fail({LocationError::Kind::unknown, "No signal."});
    EXPECT_THAT(toldAfter(1h), IsEmpty());

    fixAt(1);

    EXPECT_THAT(told(), ElementsAre("first: arrival"));
}

TEST_F(SilentLocationsTest, AStayIsNoVisitWhileTheLastFixLayOutside) {
    fixAt(150, 60);
    EXPECT_THAT(toldAfter(1h), IsEmpty());
    fixAt(150, 60);
    EXPECT_THAT(toldAfter(5min), ElementsAre("first: arrival"));
}

TEST_F(SilentLocationsTest, AStayIsNoVisitWhereNobodyMonitorsVisitsOrPermissionHasEnded) {
    first->stopMonitoringVisits();
    EXPECT_THAT(toldAfter(1h), IsEmpty());

    first->startMonitoringVisits();
    fixAt(1000);
    services.setAuthorization(LocationAuthorization::denied);
    EXPECT_THAT(toldAfter(1h), IsEmpty());
}

TEST_F(DerivedLocationsTest, WithAReceiverThatIsNotSilentSilenceIsNoStay) {
    first->startMonitoringVisits();
    fixAt(0);
    time.advance(1h);
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(DerivedLocationsTest, ASignificantChangeIsAFixAndIsToldOnce) {
    first->startMonitoringSignificantLocationChanges();
    first->startUpdatingLocation();
    second->startMonitoringSignificantLocationChanges();
    fixAt(0);
    EXPECT_THAT(told(), ElementsAre("first: fix"));

    const DerivedLocations::Outcome outcome = fixAt(1000);

    EXPECT_EQ(outcome.receivers, 2U);
    EXPECT_EQ(outcome.events, 1U);
    EXPECT_THAT(told(), ElementsAre("first: fix", "second: fix"));
}

TEST_F(DerivedLocationsTest, WhatANewLaunchHasSaidNothingOfIsToldToAll) {
    first->startMonitoringVisits();
    first->startMonitoringSignificantLocationChanges();
    fixAt(0);
    services.endLaunch();
    first.reset();
    second.reset();
    EXPECT_TRUE(kept->keepsVisits);
    EXPECT_TRUE(kept->keepsSignificantChanges);

    first = services.make();
    first->setDelegate(&firstListener);
    time.pass(6min);
    fixAt(0);
    fixAt(1000);
    EXPECT_THAT(told(), ElementsAre("first: arrival", "first: fix", "first: departure"));

    first->stopMonitoringVisits();
    first->stopMonitoringSignificantLocationChanges();
    EXPECT_FALSE(services.demand().monitoring);
}

TEST_F(DerivedLocationsTest, ARegionBeginsInTheStateOfAFreshFix) {
    fixAt(0);
    time.pass(60s);
    first->startMonitoring(home);
    EXPECT_THAT(told(), ElementsAre("first: inside home"));

    time.pass(1s);
    second->startMonitoring(home);
    EXPECT_THAT(told(), IsEmpty());
    fixAt(1000);
    EXPECT_THAT(told(), ElementsAre("second: outside home"));
}

TEST_F(DerivedLocationsTest, ARequestWhoseFixComesAsPermissionEndsFails) {
    first->requestLocation();
    fixAt(0);
    services.setAuthorization(LocationAuthorization::denied);
    EXPECT_THAT(told(), ElementsAre("first: denied"));
}

TEST_F(DerivedLocationsTest, AFixThatIsToldAgainIsNoSecondWitnessOfACrossing) {
    fixAt(0);
    first->startMonitoring(home);
    EXPECT_THAT(told(), ElementsAre("first: inside home"));
    time.pass(10s);
    // It strays, and its accuracy circle reaches back inside.
    const Location straying{{46 + 120 / 111'195.08, 14.5}, 50, -1, time.now()};
    services.receive(straying);

    first->requestLocation();
    services.receive(straying);

    EXPECT_THAT(told(), ElementsAre("first: fix"));
    time.pass(10s);
    fixAt(120, 50);
    EXPECT_THAT(told(), ElementsAre("first: exit home", "second: exit home"));
}

TEST_F(DerivedLocationsTest, TheStateOfARegionWhoseManagerHasEndedIsToldToNobody) {
    second->startMonitoring(home);
    second.reset();

    fixAt(0);
    EXPECT_THAT(told(), IsEmpty());
    fixAt(1000);
    EXPECT_THAT(told(), ElementsAre("first: exit home"));
}

TEST_F(DerivedLocationsTest, ThereAreTwentyRegionsAtTheMost) {
    for (int i = 0; i < 20; ++i) {
        first->startMonitoring({"r" + std::to_string(i), {46, 14.5}, 100});
    }
    first->startMonitoring({"r7", {46, 14.5}, 200});
    EXPECT_THAT(told(), IsEmpty());

    first->startMonitoring(home);

    EXPECT_THAT(told(), ElementsAre("first: no home: There are too many regions."));
    EXPECT_EQ(first->monitoredRegions().size(), 20U);
}

TEST_F(DerivedLocationsTest, AFixThatIsNotValidIsToldAndCrossesNothing) {
    first->startMonitoring(home);
    fixAt(0);
    told();
    first->startUpdatingLocation();

    EXPECT_EQ(fixAt(1000, -1).events, 0U);
    EXPECT_EQ(services.receive({{200, 14.5}, 5}).events, 0U);

    EXPECT_THAT(told(), ElementsAre("first: fix", "first: fix"));
    EXPECT_EQ(first->location()->coordinate.latitude, 200);
}

TEST_F(DerivedLocationsTest, UpdatesAreHeldBackInTheBackgroundButForManagersThatAllowThem) {
    first->startUpdatingLocation();
    second->setAllowsBackgroundLocationUpdates(true);
    second->startUpdatingLocation();
    services.setInBackground(true);

    EXPECT_EQ(fixAt(0).receivers, 1U);
    EXPECT_THAT(told(), ElementsAre("second: fix"));

    services.setInBackground(false);
    EXPECT_EQ(fixAt(0).receivers, 2U);
}

TEST_F(DerivedLocationsTest, AFixThatIsUnderWayIsNotToldToAManagerThatHasStoppedMeanwhile) {
    first->startUpdatingLocation();
    second->startUpdatingLocation();
    firstListener.onFix = [this] { second.reset(); };
    fixAt(0);
    EXPECT_THAT(told(), ElementsAre("first: fix"));

    firstListener.onFix = nullptr;
    fixAt(0);
    first->stopUpdatingLocation();
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(DerivedLocationsTest, WhoeverWaitsIsToldThatPermissionIsGone) {
    first->startUpdatingLocation();
    second->requestLocation();
    first->startMonitoring(home);
    fixAt(0);
    told();
    second->requestLocation();

    services.setAuthorization(LocationAuthorization::denied);

    EXPECT_THAT(told(), ElementsAre("first: denied", "second: denied"));
    EXPECT_EQ(services.demand(), DerivedLocations::Demand());
    EXPECT_EQ(fixAt(1000).receivers, 0U);
    EXPECT_THAT(told(), IsEmpty());
    EXPECT_EQ(first->monitoredRegions().size(), 1U);

    services.setAuthorization(LocationAuthorization::whenInUse);
    fixAt(1000);
    EXPECT_THAT(told(), ElementsAre("first: fix"));
    fixAt(0);
    EXPECT_THAT(told(), ElementsAre("first: fix", "first: enter home", "second: enter home"));
}

TEST_F(DerivedLocationsTest, AFailureIsToldToThoseWhoWantAFixNow) {
    first->startMonitoringVisits();
    services.fail({LocationError::Kind::unknown, "No signal."});
    EXPECT_THAT(told(), IsEmpty());

    first->startUpdatingLocation();
    second->requestLocation();
    services.fail({LocationError::Kind::unknown, "No signal."});
    services.fail({LocationError::Kind::unknown, "No signal."});

    EXPECT_THAT(told(), ElementsAre("first: fail", "second: fail", "first: fail"));
}

TEST_F(DerivedLocationsTest, TheDemandIsWhatTheManagersWantTogether) {
    EXPECT_EQ(services.demand(), DerivedLocations::Demand());

    first->setDesiredAccuracy(DesiredAccuracy::kilometer);
    first->requestLocation();
    first->setDesiredAccuracy(DesiredAccuracy::hundredMeters);
    EXPECT_TRUE(services.demand().request);
    EXPECT_EQ(services.demand().requestAccuracy, DesiredAccuracy::kilometer);
    fixAt(0);
    EXPECT_FALSE(services.demand().request);

    first->startUpdatingLocation();
    second->setDesiredAccuracy(DesiredAccuracy::threeKilometers);
    second->startUpdatingLocation();
    EXPECT_TRUE(services.demand().updates);
    EXPECT_EQ(services.demand().updatesAccuracy, DesiredAccuracy::hundredMeters);
    EXPECT_FALSE(services.demand().backgroundUpdates);
    second->setAllowsBackgroundLocationUpdates(true);
    EXPECT_TRUE(services.demand().backgroundUpdates);
    first.reset();
    EXPECT_EQ(services.demand().updatesAccuracy, DesiredAccuracy::threeKilometers);

    EXPECT_FALSE(services.demand().monitoring);
    second->startMonitoring(home);
    EXPECT_TRUE(services.demand().monitoring);
    second->stopMonitoring(home);
    EXPECT_FALSE(services.demand().monitoring);
    second->startMonitoringSignificantLocationChanges();
    EXPECT_TRUE(services.demand().monitoring);
}

TEST_F(DerivedLocationsTest, EveryChangeOfTheDemandIsTold) {
    const auto changes = [this](const std::function<void()>& act) {
        const int before = services.demandChanges;
        act();
        return services.demandChanges > before;
    };
    EXPECT_TRUE(changes([this] { first->requestLocation(); }));
    EXPECT_TRUE(changes([this] { first->startUpdatingLocation(); }));
    EXPECT_TRUE(changes([this] { first->setDesiredAccuracy(100); }));
    EXPECT_TRUE(changes([this] { first->setAllowsBackgroundLocationUpdates(true); }));
    EXPECT_TRUE(changes([this] { first->stopUpdatingLocation(); }));
    EXPECT_TRUE(changes([this] { first->startMonitoringVisits(); }));
    EXPECT_TRUE(changes([this] { first->startMonitoringSignificantLocationChanges(); }));
    EXPECT_TRUE(changes([this] { first->startMonitoring(home); }));
    EXPECT_TRUE(changes([this] { first->stopMonitoring(home); }));
    EXPECT_TRUE(changes([this] { services.setAuthorization(LocationAuthorization::denied); }));
    EXPECT_TRUE(changes([this] { services.setInBackground(true); }));
    EXPECT_TRUE(changes([this] { first.reset(); }));
}

TEST_F(DerivedLocationsTest, PermissionIsAskedForWhereThereIsMoreToGive) {
    using Permission = LocationManager::Permission;
    first->requestAuthorization(Permission::always);
    EXPECT_THAT(services.asked, IsEmpty());

    services.setAuthorization(LocationAuthorization::whenInUse);
    first->requestAuthorization(Permission::whenInUse);
    first->requestAuthorization(Permission::always);
    services.setAuthorization(LocationAuthorization::notDetermined);
    first->requestAuthorization(Permission::whenInUse);
    services.setAuthorization(LocationAuthorization::restricted);
    first->requestAuthorization(Permission::always);

    EXPECT_THAT(services.asked, ElementsAre(Permission::always, Permission::whenInUse));
}

} // namespace
} // namespace quorvane::platform
