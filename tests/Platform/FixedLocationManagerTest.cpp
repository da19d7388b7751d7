#include <string>

#include <gmock/gmock.h>

#include "Platform/LocationManager.h"
#include "support/SimulatedTest.h"

namespace quorvane::platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Keeps what it was told, as words.
class WordListener : public LocationManagerDelegate {
public:
    void didUpdateLocations(const std::vector<Location>&) override { told.emplace_back("locations"); }
    void didFail(const LocationError& error) override { told.push_back("failure: " + error.message); }
    void didChangeAuthorization(LocationAuthorization status) override {
        told.emplace_back(status == LocationAuthorization::denied ? "denied" : "another status");
    }
    void monitoringDidFail(const CircularRegion& region, const LocationError&) override {
        told.push_back("no monitoring of " + region.identifier);
    }

    std::vector<std::string> told;
};

class FixedLocationManagerTest : public SimulatedTest {
protected:
    FixedLocationManagerTest() { manager->setDelegate(&listener); }

    [[nodiscard]] const std::vector<std::string>& told() {
        phone->runUntilIdle();
        return listener.told;
    }

    FixedLocationManagerFactory factory{phone->mainQueue()};
    WordListener listener;
    std::unique_ptr<LocationManager> manager = factory.make();
};

TEST_F(FixedLocationManagerTest, AnswersThatPermissionIsDenied) {
    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
    EXPECT_THAT(listener.told, IsEmpty());
    EXPECT_THAT(told(), ElementsAre("denied"));

    manager->requestAuthorization(LocationManager::Permission::always);

    EXPECT_THAT(told(), ElementsAre("denied"));
    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
}

TEST_F(FixedLocationManagerTest, EveryManagerKnowsTheLocationThatWasSet) {
    const auto other = factory.make();
    EXPECT_EQ(manager->location(), std::nullopt);

    const Location here{{46.0, 14.5}, 5};
    factory.setLastLocation(here);

    EXPECT_EQ(manager->location(), here);
    EXPECT_EQ(other->location(), here);
    EXPECT_EQ(factory.make()->location(), here);
    factory.setLastLocation(std::nullopt);
    EXPECT_EQ(other->location(), std::nullopt);
}

TEST_F(FixedLocationManagerTest, RequestsUpdatesAndRegionsFailOnTheMainQueue) {
    factory.setLastLocation(Location{{46.0, 14.5}, 5});
    EXPECT_THAT(told(), ElementsAre("denied"));
    listener.told.clear();

    manager->requestLocation();
    manager->startUpdatingLocation();
    manager->startMonitoring({"r1", {46.0, 14.5}, 100});

    EXPECT_THAT(listener.told, IsEmpty());
    EXPECT_THAT(told(), ElementsAre("failure: This platform has no location service.",
                                    "failure: This platform has no location service.", "no monitoring of r1"));
    EXPECT_THAT(manager->monitoredRegions(), IsEmpty());
}

TEST_F(FixedLocationManagerTest, VisitsAndSignificantChangesStaySilent) {
    manager->startMonitoringVisits();
    manager->startMonitoringSignificantLocationChanges();

    EXPECT_THAT(told(), ElementsAre("denied"));
}

TEST_F(FixedLocationManagerTest, ADelegateThatWasTakenOffIsNotCalled) {
    manager->requestLocation();
    manager->setDelegate(nullptr);

    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(FixedLocationManagerTest, NobodyIsCalledAfterTheManagersEnd) {
    manager->requestLocation();
    manager.reset();

    EXPECT_THAT(told(), IsEmpty());
}

} // namespace
} // namespace quorvane::platform
