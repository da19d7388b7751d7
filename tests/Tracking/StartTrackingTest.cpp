#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using platform::LocationAuthorization;
using ::testing::ElementsAre;

class StartTrackingTest : public TrackingTest {};

TEST_F(StartTrackingTest, TheManagersBeginWithTheirAccuraciesAndFilters) {
    EXPECT_EQ(precise().desiredAccuracy, platform::DesiredAccuracy::hundredMeters);
    EXPECT_EQ(precise().distanceFilter, platform::noDistanceFilter);
    EXPECT_EQ(lowPower().desiredAccuracy, platform::DesiredAccuracy::threeKilometers);
    EXPECT_EQ(lowPower().distanceFilter, 3000);
    EXPECT_FALSE(manager().verbose);
    EXPECT_NE(manager().permissionsHelper, nullptr);
}

/// The location manager is made on first use, after the phone was set up.
class FirstUseTest : public SimulatedTest {
protected:
    [[nodiscard]] std::vector<bool> backgroundUpdates(const AnyCodable::Dictionary& information,
                                                      LocationAuthorization authorization) {
        phone.relaunch();
        phone->application().setInformationDictionary(information);
        phone->locationManagers().setAuthorization(authorization);
        static_cast<void>(QVLocationManager::shared());
        const auto managers = phone->locationManagers().managers();
        return {managers.at(0).allowsBackgroundUpdates, managers.at(1).allowsBackgroundUpdates};
    }

    /// Whether the indicator follows the options on a phone of that version.
    [[nodiscard]] bool hasIndicator(const std::string& version) {
        phone.relaunch();
        phone->device().setSystemVersion(version);
        SignedInFlag::shared().set(true);
        return hasIndicatorWith(*QuorvaneTrackingOptions::CONTINUOUS());
    }

    [[nodiscard]] bool hasIndicatorWith(const QuorvaneTrackingOptions& options) {
        QVSettings::setTrackingOptions(options);
        QVLocationManager::shared().updateTracking(std::nullopt);
        phone->runUntilIdle();
        const auto managers = phone->locationManagers().managers();
        EXPECT_FALSE(managers.at(0).showsBackgroundIndicator);
        return managers.at(1).showsBackgroundIndicator;
    }
};

TEST_F(FirstUseTest, BackgroundUpdatesAreAllowedWhereTheyAreDeclaredAndPermittedAtAllTimes) {
    const AnyCodable::Dictionary declared{{"UIBackgroundModes", AnyCodable::List{"audio", "location"}}};

    EXPECT_THAT(backgroundUpdates(declared, LocationAuthorization::always), ElementsAre(true, true));
    EXPECT_THAT(backgroundUpdates(declared, LocationAuthorization::whenInUse), ElementsAre(false, false));
    EXPECT_THAT(backgroundUpdates({}, LocationAuthorization::always), ElementsAre(false, false));
}

TEST_F(FirstUseTest, TheIndicatorFollowsTheOptionsFromVersionElevenOn) {
    EXPECT_FALSE(hasIndicator("10.3.1"));
    EXPECT_TRUE(hasIndicator("11.0"));
    EXPECT_TRUE(hasIndicator("17.4.1"));
    EXPECT_FALSE(hasIndicator("9"));
    EXPECT_FALSE(hasIndicator(""));
}

TEST_F(FirstUseTest, TheIndicatorGoesWithTheOption) {
    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
    ASSERT_TRUE(hasIndicator("17.4.1"));

    options.showBlueBar = false;
    EXPECT_FALSE(hasIndicatorWith(options));

    options.showBlueBar = true;
    EXPECT_TRUE(hasIndicatorWith(options));
}

TEST_F(StartTrackingTest, StoresTheOptionsAndThatTrackingIsOnAndAppliesThem) {
    manager().startTracking(*QuorvaneTrackingOptions::CONTINUOUS());

    EXPECT_EQ(flag(), true);
    EXPECT_EQ(*QVSettings::getTrackingOptions(), *QuorvaneTrackingOptions::CONTINUOUS());
    EXPECT_FALSE(lowPower().updates);
    settle();
    EXPECT_TRUE(lowPower().updates);
    ASSERT_EQ(observer.of<observed::Tracking>().size(), 1U);
    EXPECT_TRUE(observer.of<observed::Tracking>()[0].isOn);
}

TEST_F(StartTrackingTest, PermissionWhileInUseIsEnough) {
    services().setAuthorization(LocationAuthorization::whenInUse);

    track(*QuorvaneTrackingOptions::CONTINUOUS());

    EXPECT_EQ(flag(), true);
}

TEST_F(StartTrackingTest, WithoutPermissionTheDelegateIsToldAndNothingElseHappens) {
    for (const auto status :
         {LocationAuthorization::denied, LocationAuthorization::restricted, LocationAuthorization::notDetermined}) {
        services().setAuthorization(status);
        delegate->forget();

        track(*QuorvaneTrackingOptions::CONTINUOUS());

        EXPECT_THAT(delegate->errors(), ElementsAre(QVStatus::ERROR_PERMISSIONS));
        EXPECT_EQ(flag(), std::nullopt);
        EXPECT_EQ(stored("quorvane_tracking_options"), std::nullopt);
        EXPECT_FALSE(lowPower().updates);
        EXPECT_EQ(manager().permissionsHelper->lastAnswer(), status);
    }
    EXPECT_EQ(services().contents()->authorization, LocationAuthorization::notDetermined);
}

TEST_F(StartTrackingTest, LogsTheOptionsWhileVerbose) {
    setLogLevel(QVLogLevel::DEBUG);
    manager().verbose = true;

    manager().startTracking(*QuorvaneTrackingOptions::RESPONSIVE());

    EXPECT_EQ(messages().at(0),
              "starting tracking | options = " + QuorvaneTrackingOptions::RESPONSIVE()->description());
}

TEST_F(StartTrackingTest, LogsTheOptionsWithoutPermissionToo) {
    services().setAuthorization(LocationAuthorization::denied);
    setLogLevel(QVLogLevel::DEBUG);
    manager().verbose = true;

    manager().startTracking(*QuorvaneTrackingOptions::EFFICIENT());

    EXPECT_EQ(messages().at(0), "starting tracking | options = " + QuorvaneTrackingOptions::EFFICIENT()->description());
}

using StartTrackingDeathTest = StartTrackingTest;

TEST_F(StartTrackingDeathTest, WithoutThePermissionsHelperTrackingAndLocationsStopTheProcess) {
    manager().permissionsHelper.reset();

    EXPECT_DEATH(manager().startTracking(QuorvaneTrackingOptions()), "permissions helper");
    EXPECT_DEATH(manager().getLocation(Accuracy::HIGH, [](QVStatus, const auto&, bool) {}), "permissions helper");
}

} // namespace
} // namespace quorvane
