#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class UpdateTrackingTest : public TrackingTest {
protected:
    void update(const std::optional<platform::Location>& location = std::nullopt) {
        manager().updateTracking(location);
        settle();
    }

    /// Stores the options without starting to track.
    void set(const QuorvaneTrackingOptions& changed) { QVSettings::setTrackingOptions(changed); }

    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
};

TEST_F(UpdateTrackingTest, HappensLaterOnTheMainQueue) {
    SignedInFlag::shared().set(true);
    set(options);

    manager().updateTracking(std::nullopt);

    EXPECT_FALSE(lowPower().updates);
    settle();
    EXPECT_TRUE(lowPower().updates);
}

TEST_F(UpdateTrackingTest, ConfiguresBothManagers) {
    track(options);

    EXPECT_FALSE(precise().pausesAutomatically);
    EXPECT_FALSE(lowPower().pausesAutomatically);
    EXPECT_EQ(precise().desiredAccuracy, platform::DesiredAccuracy::best);
    EXPECT_EQ(lowPower().desiredAccuracy, platform::DesiredAccuracy::threeKilometers);
}

TEST_F(UpdateTrackingTest, ThePreciseManagersAccuracyFollowsTheOptions) {
    const std::vector<std::pair<std::optional<Accuracy>, double>> expected{{Accuracy::NONE, 100},
                                                                           {Accuracy::LOW, 1000},
                                                                           {Accuracy::MEDIUM, 100},
                                                                           {Accuracy::HIGH, -1},
                                                                           {std::nullopt, 100}};
    SignedInFlag::shared().set(true);
    for (const auto& [accuracy, metres] : expected) {
        options.desiredAccuracy = accuracy;
        set(options);
        update();
        EXPECT_EQ(precise().desiredAccuracy, metres);
    }
}

TEST_F(UpdateTrackingTest, OptionsOfAnEmptyObjectTrackAHundredMetresAccuratelyWithoutTimerAndGeofence) {
    options.useMovingGeofence = true;
    options.movingGeofenceRadius = 120;
    track(options);
    update(fixAt(0));

    preferences().setString("quorvane_tracking_options", "{}");
    update(fixAt(0));

    EXPECT_TRUE(isTracking());
    EXPECT_EQ(precise().desiredAccuracy, 100);
    EXPECT_FALSE(lowPower().showsBackgroundIndicator);
    EXPECT_EQ(observer.of<observed::UpdateTimer>().back().change, observed::UpdateTimer::Change::stopped);
    EXPECT_THAT(regions(), IsEmpty());
}

TEST_F(UpdateTrackingTest, OptionsAndFlagAreThoseOfTheMomentWhenItHappens) {
    set(options);
    manager().updateTracking(std::nullopt);
    options.desiredMovingUpdateInterval = 77;
    set(options);
    SignedInFlag::shared().set(true);

    settle();

    EXPECT_EQ(observer.of<observed::UpdateTimer>().back().interval, 77);
}

TEST_F(UpdateTrackingTest, EfficientMonitorsVisitsAndNothingElse) {
    track(*QuorvaneTrackingOptions::EFFICIENT());
    update(fixAt(0));

    EXPECT_TRUE(precise().visits);
    EXPECT_FALSE(precise().significantChanges);
    EXPECT_FALSE(lowPower().updates);
    EXPECT_THAT(regions(), IsEmpty());
}

TEST_F(UpdateTrackingTest, AMovingUserGetsTheTimerAndTheGeofenceForMoving) {
    options.desiredMovingUpdateInterval = 40;
    options.desiredStoppedUpdateInterval = 0;
    options.useMovingGeofence = true;
    options.movingGeofenceRadius = 120;
    track(options);
    EXPECT_THAT(regions(), IsEmpty());

    update(fixAt(0));

    ASSERT_THAT(services().regions(), SizeIs(1));
    EXPECT_EQ(services().regions()[0].center, fixAt(0).coordinate);
    EXPECT_EQ(services().regions()[0].radius, 120.0);
    EXPECT_EQ(observer.of<observed::UpdateTimer>().back().interval, 40);
}

TEST_F(UpdateTrackingTest, AStoppedUserGetsTheTimerAndTheGeofenceForStopped) {
    options.desiredStoppedUpdateInterval = 600;
    options.useStoppedGeofence = true;
    options.stoppedGeofenceRadius = 200;
    setStopped(true);
    track(options);

    update(fixAt(0));

    ASSERT_THAT(services().regions(), SizeIs(1));
    EXPECT_EQ(services().regions()[0].radius, 200.0);
    EXPECT_EQ(observer.of<observed::UpdateTimer>().back().interval, 600);
}

TEST_F(UpdateTrackingTest, WithoutALocationTheGeofenceStays) {
    options.useMovingGeofence = true;
    options.movingGeofenceRadius = 120;
    track(options);
    update(fixAt(0));
    const auto placed = regions();

    update();

    EXPECT_EQ(regions(), placed);
}

TEST_F(UpdateTrackingTest, AGeofenceThatIsNotWantedAnyMoreIsRemoved) {
    options.useMovingGeofence = true;
    options.movingGeofenceRadius = 120;
    track(options);
    update(fixAt(0));
    setStopped(true);

    update();

    EXPECT_THAT(regions(), IsEmpty());
}

TEST_F(UpdateTrackingTest, AnIntervalOfZeroEndsTheTimer) {
    options.desiredStoppedUpdateInterval = 0;
    track(options);
    setStopped(true);

    update();
    advance(10s);

    EXPECT_FALSE(lowPower().updates);
}

TEST_F(UpdateTrackingTest, VisitsAndSignificantChangesAreStartedWhereTheyAreWanted) {
    track(options);
    EXPECT_FALSE(precise().visits);
    EXPECT_FALSE(precise().significantChanges);

    track(*QuorvaneTrackingOptions::RESPONSIVE());

    EXPECT_TRUE(precise().visits);
    EXPECT_TRUE(precise().significantChanges);
    EXPECT_FALSE(lowPower().visits);
    EXPECT_FALSE(lowPower().significantChanges);
}

TEST_F(UpdateTrackingTest, VisitsAndSignificantChangesDoNotEndWhenOnlyTheirOptionIsGone) {
    track(*QuorvaneTrackingOptions::RESPONSIVE());

    track(options);

    EXPECT_TRUE(precise().visits);
    EXPECT_TRUE(precise().significantChanges);
}

TEST_F(UpdateTrackingTest, TheEndOfTrackingEndsTimerGeofenceVisitsAndSignificantChanges) {
    track(*QuorvaneTrackingOptions::RESPONSIVE());
    setStopped(true);
    update(fixAt(0));
    ASSERT_THAT(regions(), SizeIs(1));

    manager().stopTracking();
    settle();

    EXPECT_EQ(flag(), false);
    EXPECT_THAT(regions(), IsEmpty());
    EXPECT_FALSE(precise().visits);
    EXPECT_FALSE(precise().significantChanges);
    EXPECT_FALSE(lowPower().updates);
    EXPECT_THAT(causes(), ElementsAre(Cause::host, Cause::host));
}

TEST_F(UpdateTrackingTest, LogsWhatItGoesByWhileVerbose) {
    setLogLevel(QVLogLevel::DEBUG);
    QVSettings::setTrackingOptions(options);
    manager().verbose = true;

    update();
    EXPECT_EQ(messages().at(0),
              "    updating tracking:\n        location = nil;\n        tracking = false;\n        "
              "options = " +
                  options.description() + ";");
    phone->application().clearOutput();
    SignedInFlag::shared().set(true);
    update(fixAt(0));
    EXPECT_EQ(messages().at(0),
              "    updating tracking:\n        location = 46.0,14.5 +/- 10.0 m at 2026-03-01 12:00:00 "
              "+0000;\n        tracking = true;\n        options = " +
                  options.description() + ";");
}

} // namespace
} // namespace quorvane
