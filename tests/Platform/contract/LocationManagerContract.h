#pragma once

#include <gmock/gmock.h>

#include "Platform/contract/LocationRig.h"

namespace quorvane::platform::contract {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A manager with a listener, on a device that may be moved.
class LocationManagerContract : public ::testing::TestWithParam<LocationRigMaker> {
protected:
    LocationManagerContract() {
        manager->setDelegate(&listener);
        other->setDelegate(&otherListener);
        rig->settle();
    }

    void moveTo(Coordinate coordinate) {
        rig->moveTo(coordinate);
        rig->settle();
    }

    /// What the manager's listener was told since the last question.
    [[nodiscard]] std::vector<std::string> told() { return taken(listener); }
    [[nodiscard]] std::vector<std::string> toldOther() { return taken(otherListener); }

    [[nodiscard]] std::vector<std::string> monitored() {
        std::vector<std::string> identifiers;
        for (const CircularRegion& region : manager->monitoredRegions()) {
            identifiers.push_back(region.identifier);
        }
        return identifiers;
    }

    static constexpr Coordinate here{46.0, 14.5};
    /// Some 1,100 metres from there.
    static constexpr Coordinate there{46.01, 14.5};
    const CircularRegion home{"home", here, 200};

    std::unique_ptr<LocationRig> rig = GetParam()();
    LocationListener listener;
    LocationListener otherListener;
    std::unique_ptr<LocationManager> manager = rig->locations().make();
    std::unique_ptr<LocationManager> other = rig->locations().make();

private:
    std::vector<std::string> taken(LocationListener& from) {
        rig->settle();
        return std::exchange(from.told, {});
    }
};

TEST_P(LocationManagerContract, NothingIsKnownBeforeTheFirstFix) {
    EXPECT_EQ(manager->location(), std::nullopt);
    EXPECT_THAT(manager->monitoredRegions(), IsEmpty());
    EXPECT_THAT(told(), IsEmpty());
}

TEST_P(LocationManagerContract, ANewDelegateIsToldTheAuthorizationOnce) {
    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
    EXPECT_THAT(listener.statuses, ElementsAre(LocationAuthorization::always));
}

TEST_P(LocationManagerContract, ARequestIsAnsweredOnceWithOneFix) {
    manager->requestLocation();
    EXPECT_THAT(listener.told, IsEmpty());
    moveTo(here);
    moveTo(there);

    EXPECT_THAT(told(), ElementsAre("fix"));
    EXPECT_NEAR(listener.fixes.at(0).coordinate.latitude, here.latitude, 1e-6);
    EXPECT_NEAR(listener.fixes.at(0).coordinate.longitude, here.longitude, 1e-6);
    EXPECT_THAT(toldOther(), IsEmpty());
}

TEST_P(LocationManagerContract, AskingAgainWhileARequestIsOpenDoesNotMakeItTwo) {
    manager->requestLocation();
    manager->requestLocation();
    moveTo(here);
    moveTo(there);

    EXPECT_THAT(told(), ElementsAre("fix"));
}

TEST_P(LocationManagerContract, EveryManagerKnowsTheLastFix) {
    manager->requestLocation();
    moveTo(here);

    ASSERT_TRUE(other->location());
    EXPECT_EQ(other->location(), listener.fixes.at(0));
    EXPECT_EQ(rig->locations().make()->location(), other->location());
}

TEST_P(LocationManagerContract, ContinuousUpdatesGoToTheManagerThatStartedThemUntilItStopsThem) {
    manager->startUpdatingLocation();
    manager->startUpdatingLocation();
    moveTo(here);
    moveTo(there);
    EXPECT_THAT(told(), ElementsAre("fix", "fix"));

    manager->stopUpdatingLocation();
    moveTo(here);

    EXPECT_THAT(told(), IsEmpty());
    EXPECT_THAT(toldOther(), IsEmpty());
}

TEST_P(LocationManagerContract, ADistanceFilterHoldsFixesBackThatAreTooNear) {
    manager->setDistanceFilter(500);
    manager->startUpdatingLocation();

    moveTo(here);
    moveTo({here.latitude + 0.001, here.longitude});
    moveTo(there);

    EXPECT_THAT(told(), ElementsAre("fix", "fix"));
    EXPECT_NEAR(listener.fixes.at(1).coordinate.latitude, there.latitude, 1e-6);
}

TEST_P(LocationManagerContract, ALostSignalFailsARequestOnce) {
    manager->requestLocation();
    rig->loseSignal();
    rig->settle();
    rig->loseSignal();

    EXPECT_THAT(told(), ElementsAre("fail"));
    EXPECT_THAT(toldOther(), IsEmpty());
}

TEST_P(LocationManagerContract, RegionsAreListedInTheOrderOfTheirStartForEveryManager) {
    manager->startMonitoring(home);
    other->startMonitoring({"a", there, 100});
    EXPECT_THAT(monitored(), ElementsAre("home", "a"));

    manager->startMonitoring({"home", there, 300});
    EXPECT_THAT(monitored(), ElementsAre("a", "home"));
    EXPECT_EQ(other->monitoredRegions().back(), (CircularRegion{"home", there, 300}));

    other.reset();
    EXPECT_THAT(monitored(), ElementsAre("a", "home"));

    manager->stopMonitoring({"a", {}, 0});
    EXPECT_THAT(monitored(), ElementsAre("home"));
}

TEST_P(LocationManagerContract, ARegionThatIsNoCircleIsNotMonitored) {
    manager->startMonitoring({"flat", here, 0});
    manager->startMonitoring({"inverse", here, -5});
    manager->startMonitoring({"nowhere", Coordinate::invalid, 100});
    manager->startMonitoring({"beyond", {91, 0}, 100});

    EXPECT_THAT(monitored(), IsEmpty());
    EXPECT_THAT(told(), ElementsAre("cannot monitor flat", "cannot monitor inverse", "cannot monitor nowhere",
                                    "cannot monitor beyond"));
}

TEST_P(LocationManagerContract, TheStateThatARegionBeginsInIsNoCrossing) {
    manager->startUpdatingLocation();
    moveTo(here);
    EXPECT_THAT(told(), ElementsAre("fix"));

    manager->startMonitoring(home);

    EXPECT_THAT(told(), ElementsAre("monitors home", "inside home"));
}

TEST_P(LocationManagerContract, ACrossingIsToldToAllManagersAfterTheFixAndByTurns) {
    manager->startUpdatingLocation();
    moveTo(here);
    manager->startMonitoring(home);
    EXPECT_EQ(told().size(), 3U);

    moveTo(there);
    EXPECT_THAT(told(), ElementsAre("fix", "exit home"));
    EXPECT_THAT(toldOther(), ElementsAre("exit home"));

    moveTo({there.latitude + 0.001, there.longitude});
    EXPECT_THAT(told(), ElementsAre("fix"));

    moveTo(here);
    EXPECT_THAT(told(), ElementsAre("fix", "enter home"));
    EXPECT_THAT(toldOther(), ElementsAre("enter home"));
}

TEST_P(LocationManagerContract, ARegionThatIsNotMonitoredAnyMoreIsNotCrossed) {
    manager->startUpdatingLocation();
    moveTo(here);
    manager->startMonitoring(home);
    EXPECT_EQ(told().size(), 3U);

    other->stopMonitoring(home);
    moveTo(there);

    EXPECT_THAT(told(), ElementsAre("fix"));
}

TEST_P(LocationManagerContract, ADelegateThatWasTakenOffIsNotCalledAnyMore) {
    manager->requestLocation();
    manager->setDelegate(nullptr);
    moveTo(here);

    EXPECT_THAT(told(), IsEmpty());
}

TEST_P(LocationManagerContract, NobodyIsCalledAfterTheManagersEnd) {
    manager->startUpdatingLocation();
    manager->startMonitoringVisits();
    manager.reset();
    moveTo(here);

    EXPECT_THAT(told(), IsEmpty());
}

/// For receivers that need a permission.
class LocationPermissionContract : public LocationManagerContract {};

TEST_P(LocationPermissionContract, WithoutPermissionThereIsNoLocationAndWhatIsAskedForFails) {
    manager->requestLocation();
    moveTo(here);
    EXPECT_THAT(told(), ElementsAre("fix"));
    rig->permit(false);
    rig->settle();

    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
    EXPECT_EQ(listener.statuses.back(), LocationAuthorization::denied);
    EXPECT_EQ(manager->location(), std::nullopt);

    manager->requestLocation();
    EXPECT_THAT(listener.told, IsEmpty());
    EXPECT_THAT(told(), ElementsAre("fail denied"));
    manager->startMonitoring(home);
    EXPECT_THAT(told(), ElementsAre("cannot monitor home"));
    manager->startMonitoringVisits();
    manager->startMonitoringSignificantLocationChanges();
    EXPECT_THAT(told(), IsEmpty());
    EXPECT_THAT(monitored(), IsEmpty());
}

TEST_P(LocationPermissionContract, RegionsOutliveThePermissionAndAreStoppedWithoutIt) {
    manager->startMonitoring(home);
    manager->startMonitoring({"a", there, 100});
    rig->permit(false);
    rig->settle();
    EXPECT_THAT(monitored(), ElementsAre("home", "a"));

    manager->stopMonitoring(home);
    EXPECT_THAT(monitored(), ElementsAre("a"));

    rig->permit(true);
    rig->settle();
    EXPECT_THAT(monitored(), ElementsAre("a"));
    EXPECT_EQ(other->monitoredRegions(), manager->monitoredRegions());
}

TEST_P(LocationPermissionContract, UpdatesThatWereStartedGoOnWhenPermissionComesBack) {
    manager->startUpdatingLocation();
    rig->permit(false);
    moveTo(here);
    EXPECT_THAT(listener.fixes, IsEmpty());

    rig->permit(true);
    rig->settle();
    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
    listener.told.clear();
    moveTo(there);

    EXPECT_THAT(told(), ElementsAre("fix"));
}

} // namespace quorvane::platform::contract
