#include <cstdlib>
#include <filesystem>

#include "Platform/Clock.h"
#include "Platform/Qt/GeoClueMock.h"
#include "Platform/Qt/QtLocationTest.h"

namespace quorvane::platform::qt {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr Coordinate here{46.0, 14.5};
constexpr Coordinate there{46.01, 14.5};

/// The service is there before the platform, and after it.
struct Service {
    GeoClueMock service;
};

class GeoClueTest : public Service, public QtLocationTest {
protected:
    GeoClueTest() {
        launch(GeoClue{"rider"});
        settle();
    }

    void settle() { service.settle(platform->mainQueue()); }
    void askForPermission() {
        manager->requestAuthorization(LocationManager::Permission::always);
        settle();
    }
};

TEST_F(GeoClueTest, NothingIsStartedAndNothingIsKnownBeforeTheHostAsksForPermission) {
    manager->startUpdatingLocation();
    settle();

    EXPECT_EQ(manager->authorization(), LocationAuthorization::notDetermined);
    EXPECT_EQ(service.starts(), 0);
}

TEST_F(GeoClueTest, TheClientIsStartedUnderTheDesktopIdAndStoppedWhenNobodyWantsAFix) {
    askForPermission();

    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
    EXPECT_THAT(service.calls(), ElementsAre("DesktopId rider", "RequestedAccuracyLevel 8", "Start", "Stop"));
    EXPECT_EQ(listener.statuses.back(), LocationAuthorization::always);
}

TEST_F(GeoClueTest, ARefusalIsDenied) {
    service.answer("refuse");

    askForPermission();

    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
    EXPECT_THAT(output, ElementsAre(HasSubstr("does not let the application have the location")));
}

TEST_F(GeoClueTest, WhileNobodyAnswersThePermissionIsNotDeterminedAndItComesLater) {
    service.answer("wait");
    askForPermission();
    EXPECT_EQ(manager->authorization(), LocationAuthorization::notDetermined);

    service.answer("permit");
    settle();

    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
}

TEST_F(GeoClueTest, LocationThatIsSwitchedOffIsDeniedAndGoesOnWhenItIsSwitchedOnAgain) {
    askForPermission();
    manager->startUpdatingLocation();
    service.moveTo(here);
    settle();
    ASSERT_EQ(listener.fixes.size(), 1U);

    service.answer("off");
    settle();
    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
    EXPECT_THAT(listener.told, Contains("fail denied"));

    service.moveTo(there);
    service.answer("permit");
    settle();
    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
    EXPECT_NEAR(listener.fixes.back().coordinate.latitude, there.latitude, 1e-9);
}

TEST_F(GeoClueTest, AStaleFirstFixIsNone) {
    askForPermission();
    service.moveTo(here, 5, 3600);
    manager->requestLocation();
    settle();
    EXPECT_THAT(listener.fixes, IsEmpty());
    EXPECT_EQ(manager->location(), std::nullopt);

    service.moveTo(there);
    settle();

    ASSERT_EQ(listener.fixes.size(), 1U);
    EXPECT_NEAR(listener.fixes[0].coordinate.latitude, there.latitude, 1e-9);
}

TEST_F(GeoClueTest, OfAStaleFirstFixOneLineIsSaidHoweverOftenItComes) {
    askForPermission();
    service.moveTo(here, 5, 3600);
    for (int i = 0; i < 3; ++i) {
        manager->startUpdatingLocation();
        settle();
        manager->stopUpdatingLocation();
        settle();
    }

    EXPECT_THAT(listener.fixes, IsEmpty());
    EXPECT_THAT(output,
                ElementsAre("QuorvaneSDK: the first position of the location service (GeoClue 2) is too old, and "
                            "is left out"));
}

/// Seconds by which the service's clock is behind this system's one.
class GeoClueClockTest : public GeoClueTest, public ::testing::WithParamInterface<double> {};

TEST_P(GeoClueClockTest, FixesOfAServiceWithAnotherIdeaOfTheTimeGetTheTimeOfTheClockAndOneLineSaysSo) {
    askForPermission();
    manager->startUpdatingLocation();
    service.moveTo(here);
    settle();
    ASSERT_EQ(listener.fixes.size(), 1U);
    EXPECT_THAT(output, IsEmpty());

    const Date before = platform->clock().now();
    for (const double latitude : {46.01, 46.02}) {
        service.moveTo({latitude, 14.5}, 5, GetParam());
        settle();
    }

    ASSERT_EQ(listener.fixes.size(), 3U);
    EXPECT_GE(listener.fixes[1].timestamp, before);
    EXPECT_LE(listener.fixes[2].timestamp, platform->clock().now());
    EXPECT_THAT(output, ElementsAre("QuorvaneSDK: the location service (GeoClue 2) and this system disagree about the "
                                    "time; its positions get the system's"));
}

INSTANTIATE_TEST_SUITE_P(Clocks, GeoClueClockTest, ::testing::Values(3600, -3600));

TEST_F(GeoClueTest, AnUnknownAccuracyStaysNegative) {
    askForPermission();
    manager->startUpdatingLocation();
    settle();

    service.moveTo(here, -1);
    settle();

    ASSERT_EQ(listener.fixes.size(), 1U);
    EXPECT_EQ(listener.fixes[0].horizontalAccuracy, -1);
    EXPECT_EQ(listener.fixes[0].verticalAccuracy, -1);
}

TEST_F(GeoClueTest, ARequestOfADeviceAtRestIsAnsweredWithItsLastFix) {
    askForPermission();
    manager->startUpdatingLocation();
    service.moveTo(here);
    settle();
    ASSERT_EQ(listener.fixes.size(), 1U);

    manager->requestLocation();
    settle();

    ASSERT_EQ(listener.fixes.size(), 2U);
    EXPECT_EQ(listener.fixes[0], listener.fixes[1]);
}

TEST_F(GeoClueTest, ARequestWithAnOldLastFixBeginsTheClientAnew) {
    askForPermission();
    manager->startUpdatingLocation();
    settle();
    const long before = service.starts();

    manager->requestLocation();
    settle();
    EXPECT_EQ(service.starts(), before + 1);

    service.moveTo(here);
    settle();
    EXPECT_EQ(listener.fixes.size(), 1U);
}

TEST_F(GeoClueTest, AServiceThatGoesAwayFailsWhoWaitsAndIsStartedAgainForTheNextRequest) {
    askForPermission();
    manager->startUpdatingLocation();
    settle();

    service.leave();
    settle();
    EXPECT_THAT(listener.failures, ElementsAre("The location service has gone away."));
    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);

    service.comeBack();
    service.moveTo(there);
    manager->requestLocation();
    settle();
    EXPECT_EQ(listener.fixes.size(), 1U);
}

TEST_F(GeoClueTest, AServiceThatGoesAwayBeforeItsAnswerPermitsNothing) {
    service.answer("wait");
    askForPermission();
    ASSERT_EQ(manager->authorization(), LocationAuthorization::notDetermined);
    output.clear();

    service.leave();
    settle();

    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
    EXPECT_THAT(output, ElementsAre("QuorvaneSDK: the location service (GeoClue 2) has gone away without an answer"));
}

TEST_F(GeoClueTest, AServiceThatGoesAwayWhileLocationIsOffIsStartedAgainByItself) {
    askForPermission();
    manager->startUpdatingLocation();
    settle();
    service.answer("off");
    settle();
    ASSERT_EQ(manager->authorization(), LocationAuthorization::denied);

    service.leave();
    settle();
    service.comeBack();
    service.answer("permit");
    service.moveTo(there);

    EXPECT_TRUE(runUntil([this] { return manager->authorization() == LocationAuthorization::always; }));
    EXPECT_TRUE(runUntil([this] { return !listener.fixes.empty(); }));
}

TEST_F(GeoClueTest, ThePermissionIsRememberedForTheNextLaunchWhichAsksNobody) {
    askForPermission();
    launch(GeoClue{"rider"});
    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);

    manager->startUpdatingLocation();
    service.moveTo(here);
    settle();

    EXPECT_EQ(listener.fixes.size(), 1U);
}

TEST_F(GeoClueTest, APermissionThatIsTakenBackBetweenTwoLaunchesIsDeniedOnceAFixIsWanted) {
    askForPermission();
    service.answer("refuse");
    launch(GeoClue{"rider"});

    manager->startUpdatingLocation();
    settle();
    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);

    launch(GeoClue{"rider"});
    EXPECT_EQ(manager->authorization(), LocationAuthorization::notDetermined);
}

TEST_F(GeoClueTest, ALaunchWithoutTheServiceForgetsNoPermission) {
    askForPermission();
    service.leave();
    launch(GeoClue{"rider"});
    manager->startMonitoring({"home", here, 100});
    manager->startUpdatingLocation();
    settle();
    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);

    service.comeBack();
    launch(GeoClue{"rider"});

    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
}

TEST_F(GeoClueTest, ALaunchWhileLocationIsSwitchedOffForgetsNoPermission) {
    askForPermission();
    manager->startUpdatingLocation();
    settle();
    service.answer("off");
    settle();
    ASSERT_EQ(manager->authorization(), LocationAuthorization::denied);

    launch(GeoClue{"rider"});

    EXPECT_EQ(manager->authorization(), LocationAuthorization::always);
}

TEST_F(GeoClueTest, AServiceThatNeverAnswersHoldsNothingUpAndIsDeniedWithOneLine) {
    service.setSilent(true);
    launch(GeoClue{"rider"});
    manager->requestAuthorization(LocationManager::Permission::always);
    manager->startUpdatingLocation();
    EXPECT_EQ(manager->authorization(), LocationAuthorization::notDetermined) << "it was waited for";

    EXPECT_TRUE(runUntil([this] { return manager->authorization() == LocationAuthorization::denied; }));

    EXPECT_THAT(output, ElementsAre("QuorvaneSDK: the location service (GeoClue 2) does not answer"));
    EXPECT_THAT(listener.told, ElementsAre("fail denied"));
}

TEST_F(GeoClueTest, TheLastPositionIsNotLeftInAFile) {
    askForPermission();
    manager->startUpdatingLocation();
    service.moveTo(here);
    settle();
    ASSERT_EQ(listener.fixes.size(), 1U);

    manager.reset();
    platform.reset();

    EXPECT_TRUE(std::filesystem::is_empty(std::getenv("XDG_DATA_HOME")));
}

TEST_F(GeoClueTest, WithoutTheServicePermissionIsDeniedAtOnceAndOneLineSaysSo) {
    service.leave();
    output.clear();

    launch(GeoClue{"rider"});

    EXPECT_EQ(manager->authorization(), LocationAuthorization::denied);
    EXPECT_THAT(output, ElementsAre("QuorvaneSDK: this system has no location service (GeoClue 2); the location counts "
                                    "as not permitted"));
}

} // namespace
} // namespace quorvane::platform::qt
