#include "Platform/Qt/GeoClueMock.h"
#include "Platform/Qt/KeptServices.h"
#include "Platform/Qt/QtLocationTest.h"
#include "Platform/Qt/QtLocations.h"
#include "support/SimulatedTest.h"
#include "tools/PortTest.h"

namespace quorvane::platform::qt {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// The services on the virtual clock, with Qt's events in between.
class QtLocationsTest : public SimulatedTest {
protected:
    ~QtLocationsTest() override { manager.reset(); }

    void launch(const PositionSource& source) {
        (void)privateBus();
        manager.reset();
        locations = std::make_unique<QtLocations>(
            QtLocations::Surroundings{phone->clock(), phone->mainQueue(), phone->preferences(), phone->application()},
            source);
        manager = locations->make();
        manager->setDelegate(&listener);
        settle();
    }

    void settle() {
        constexpr int longestConversation = 16;
        for (int i = 0; i < longestConversation; ++i) {
            phone->runUntilIdle();
            if (service) {
                (void)service->calls();
            }
            QCoreApplication::processEvents();
        }
    }

    std::optional<GeoClueMock> service;
    Listener listener;
    std::unique_ptr<QtLocations> locations;
    std::unique_ptr<LocationManager> manager;
};

TEST_F(QtLocationsTest, ARequestThatNothingAnswersFailsAfterHalfAMinute) {
    const tool::HeldPort server(tool::HeldPort::Use::listening);
    launch(NMEASocket{"127.0.0.1", server.number()});
    manager->requestLocation();
    phone->advance(29s);
    EXPECT_THAT(listener.told, IsEmpty());

    phone->advance(1s);

    EXPECT_THAT(listener.failures, ElementsAre("No position was found in time."));
    phone->advance(60s);
    EXPECT_EQ(listener.failures.size(), 1U);
}

TEST_F(QtLocationsTest, AnAnsweredRequestDoesNotFailLater) {
    launch(NMEAFile{"none"});
    manager->requestLocation();
    locations->receive({{46, 14.5}, 5, -1, phone->clock().now()});
    manager->setDesiredAccuracy(DesiredAccuracy::best);

    phone->advance(60s);

    EXPECT_THAT(listener.failures, IsEmpty());
}

TEST_F(QtLocationsTest, AUserWhoDoesNotAnswerWithinAMinuteHasRefused) {
    service.emplace();
    service->answer("wait");
    launch(GeoClue{});
    manager->requestAuthorization(LocationManager::Permission::always);
    settle();
    phone->advance(59s);
    EXPECT_EQ(manager->authorization(), LocationAuthorization::notDetermined);

    phone->advance(1s);

    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
    EXPECT_THAT(phone->application().outputLines(), Contains(HasSubstr("did not answer in time")));
}

TEST_F(QtLocationsTest, AServiceThatIsGoneIsStartedAgainFiveSecondsLater) {
    service.emplace();
    launch(GeoClue{});
    manager->requestAuthorization(LocationManager::Permission::always);
    manager->startUpdatingLocation();
    settle();
    const long before = service->starts();

    service->leave();
    settle();
    service->comeBack();
    phone->advance(4s);
    settle();
    EXPECT_EQ(service->starts(), before);
    phone->advance(1s);
    settle();

    EXPECT_EQ(service->starts(), before + 1);
}

TEST_F(QtLocationsTest, ALocationThatWasPermittedAndIsSwitchedOffAtTheLaunchIsDeniedAfterAMinuteAndComesBack) {
    service.emplace();
    service->answer("off");
    phone->preferences().setDictionary(KeptServices::key, {{"permitted", true}, {"regions", AnyCodable::List()}});
    launch(GeoClue{});
    manager->startUpdatingLocation();
    settle();
    phone->advance(59s);
    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
    phone->advance(1s);
    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
    EXPECT_EQ(phone->preferences().dictionary(KeptServices::key)->at("permitted"), AnyCodable(true));

    service->answer("permit");
    settle();

    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
}

TEST_F(QtLocationsTest, AStayInTheSilenceOfTheServiceIsAVisit) {
    service.emplace();
    phone->setWallTime(Date(std::chrono::system_clock::now().time_since_epoch()));
    launch(GeoClue{});
    manager->requestAuthorization(LocationManager::Permission::always);
    manager->startMonitoringVisits();
    service->moveTo({46, 14.5});
    settle();
    phone->advance(299s);
    EXPECT_THAT(listener.told, IsEmpty());

    phone->advance(1s);

    EXPECT_THAT(listener.told, ElementsAre("visit"));
}

TEST_F(QtLocationsTest, AServiceThatWasPermittedAndDoesNotAnswerFailsWhoWaitsAndIsTriedAgain) {
    service.emplace();
    phone->preferences().setDictionary(KeptServices::key, {{"permitted", true}, {"regions", AnyCodable::List()}});
    service->setSilent(true);
    launch(GeoClue{});
    manager->startUpdatingLocation();
    settle();
    EXPECT_THAT(listener.failures, IsEmpty());

    while (listener.failures.empty()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        phone->runUntilIdle();
    }
    EXPECT_THAT(listener.failures, ElementsAre("The location service has gone away."));
    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
    EXPECT_THAT(phone->application().outputLines(), Contains(HasSubstr("does not answer")));
    EXPECT_EQ(service->starts(), 0);

    service->setSilent(false);
    phone->advance(5s);
    settle();
    EXPECT_EQ(service->starts(), 1);
}

TEST_F(QtLocationsTest, EntriesThatTellNoRegionAreLeftOut) {
    const AnyCodable::Dictionary home{{"identifier", "home"}, {"latitude", 46.0}, {"longitude", 14.5}, {"radius", 100}};
    AnyCodable::Dictionary whole = home;
    whole["radius"] = 100.0;
    AnyCodable::Dictionary nameless = whole;
    nameless.erase("identifier");
    AnyCodable::Dictionary nowhere = whole;
    nowhere["latitude"] = 91.0;
    phone->preferences().setDictionary(
        KeptServices::key,
        {{"permitted", true}, {"regions", AnyCodable::List{home, "no region", nameless, nowhere, whole}}});

    launch(NMEAFile{"none"});

    EXPECT_THAT(manager->monitoredRegions(), ElementsAre(CircularRegion{"home", {46.0, 14.5}, 100}));
}

TEST_F(QtLocationsTest, AReceiverThatNeedsNoPermissionLeavesTheOneThatWasGivenAsItIs) {
    launch(NMEAFile{"none"});
    manager->startMonitoring({"home", {46, 14.5}, 100});
    settle();

    const auto stored = phone->preferences().dictionary(KeptServices::key);
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->at("permitted"), AnyCodable(false));
}

TEST_F(QtLocationsTest, NothingIsStoredWhileThereIsNothingToKeep) {
    launch(NMEAFile{"none"});
    manager->startUpdatingLocation();
    settle();

    EXPECT_EQ(phone->preferences().dictionary(KeptServices::key), std::nullopt);
}

} // namespace
} // namespace quorvane::platform::qt
