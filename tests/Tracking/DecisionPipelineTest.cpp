#include <limits>

#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Outcome = observed::Fix::Outcome;

/// The chain of decisions, with `CONTINUOUS` (70 m, 140 s) unless a test says otherwise.
class DecisionPipelineTest : public TrackingTest {
protected:
    DecisionPipelineTest() { QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS()); }

    [[nodiscard]] std::vector<Call> clientUpdates() { return delegate->calls(Kind::clientLocationUpdated); }
    [[nodiscard]] Outcome lastOutcome() { return fixes().back().outcome; }
};

TEST_F(DecisionPipelineTest, WithoutALocationNothingHappens) {
    manager().handleLocation(std::nullopt, Source::BACKGROUND_LOCATION);
    settle();

    EXPECT_THAT(delegate->calls(), IsEmpty());
    EXPECT_THAT(observer.all, IsEmpty());
}

TEST_F(DecisionPipelineTest, AnInvalidLocationFailsTheWaitingCallersAndChangesNothing) {
    const LocationCalls calls;
    manager().getLocation(Accuracy::HIGH, calls.record());

    handle({{0, 14.5}, 5, 5, noon});

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_LOCATION);
    EXPECT_EQ(calls.first<1>(), std::nullopt);
    EXPECT_EQ(lastOutcome(), Outcome::invalid);
    EXPECT_EQ(QVState::getLastMovedLocation(), std::nullopt);
    EXPECT_THAT(clientUpdates(), IsEmpty());
    EXPECT_EQ(syncs(), 0U);
}

TEST_F(DecisionPipelineTest, FiftyMetresAfterAHundredAndFiftySecondsIsAStop) {
    handle(fixAt(0));
    handle(fixAt(50, 150));

    EXPECT_TRUE(stopped());
    EXPECT_EQ(QVState::getLastMovedAt(), noon);
    EXPECT_EQ(QVState::getLastMovedLocation(), fixAt(0));
}

TEST_F(DecisionPipelineTest, EightyMetresKeepsTheUserMovingAndMovesPlaceAndTime) {
    handle(fixAt(0));
    handle(fixAt(80, 150));

    EXPECT_FALSE(stopped());
    EXPECT_EQ(QVState::getLastMovedAt(), noon + 150s);
    EXPECT_EQ(QVState::getLastMovedLocation(), fixAt(80, 150));
}

TEST_F(DecisionPipelineTest, AVisitsArrivalThatMovedStaysStoppedWithTheTimeItHad) {
    handle(fixAt(0));
    handle(fixAt(500, 150), Source::VISIT_ARRIVAL);

    EXPECT_TRUE(stopped());
    EXPECT_EQ(QVState::getLastMovedAt(), noon);
    EXPECT_EQ(QVState::getLastMovedLocation(), fixAt(500, 150));
}

TEST_F(DecisionPipelineTest, AnInaccurateFixOfAStoppedUserIsDroppedAndTrackingIsBroughtUpToDate) {
    setStopped(true);
    SignedInFlag::shared().set(true);

    handle(fixAt(0, 0, 1500));

    EXPECT_EQ(lastOutcome(), Outcome::inaccurate);
    EXPECT_THAT(clientUpdates(), IsEmpty());
    EXPECT_EQ(QVState::getLastMovedLocation(), std::nullopt);
    EXPECT_TRUE(lowPower().updates);
}

TEST_F(DecisionPipelineTest, AThousandMetresAreInaccurateAlready) {
    setStopped(true);

    handle(fixAt(0, 0, 1000));
    EXPECT_EQ(lastOutcome(), Outcome::inaccurate);

    handle(fixAt(0, 0, 999.9));
    EXPECT_EQ(lastOutcome(), Outcome::processed);
}

TEST_F(DecisionPipelineTest, AnInaccurateFixCountsWhileTheUserMoves) {
    handle(fixAt(0, 0, 1500));

    EXPECT_EQ(lastOutcome(), Outcome::processed);
}

TEST_F(DecisionPipelineTest, AnInaccurateFixCountsWhereLowAccuracyIsWanted) {
    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
    options.desiredAccuracy = Accuracy::LOW;
    QVSettings::setTrackingOptions(options);
    setStopped(true);

    handle(fixAt(0, 0, 1500));

    EXPECT_EQ(lastOutcome(), Outcome::processed);
}

TEST_F(DecisionPipelineTest, AnAbsentAccuracyIsNotLow) {
    preferences().setString("quorvane_tracking_options", "{}");
    setStopped(true);

    handle(fixAt(0, 0, 1500));

    EXPECT_EQ(lastOutcome(), Outcome::inaccurate);
}

TEST_F(DecisionPipelineTest, AnInaccurateFixThatWasAskedForCounts) {
    for (const Source source : {Source::MANUAL_LOCATION, Source::FOREGROUND_LOCATION}) {
        setStopped(true);
        handle(fixAt(0, 0, 1500), source);
        EXPECT_EQ(lastOutcome(), Outcome::processed);
    }
}

TEST_F(DecisionPipelineTest, TheWaitingCallersAreNotAnsweredByAnInaccurateFixAndTheirTimeoutRunsOn) {
    setStopped(true);
    const LocationCalls calls;
    manager().getLocation(Accuracy::HIGH, calls.record());

    handle(fixAt(0, 0, 1500));
    advance(19s);
    EXPECT_EQ(calls.count(), 0U);
    advance(1s);

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::ERROR_LOCATION);
}

TEST_F(DecisionPipelineTest, AnOldFixComesAfterTheTimeoutsWereCancelledSoTheCallersWaitOn) {
    handle(fixAt(0, 100));
    const LocationCalls calls;
    manager().getLocation(Accuracy::HIGH, calls.record());

    manager().handleLocation(fixAt(500, 50), Source::BACKGROUND_LOCATION);
    settle();
    EXPECT_EQ(lastOutcome(), Outcome::old);
    advance(1h);
    EXPECT_EQ(calls.count(), 0U);
    EXPECT_EQ(clientUpdates().size(), 1U);

    handle(fixAt(0, 5000));
    EXPECT_EQ(calls.count(), 1U);
}

TEST_F(DecisionPipelineTest, AnOldFixBringsNothingUpToDateAndSendsNothing) {
    handle(fixAt(0, 100));
    SignedInFlag::shared().set(true);
    setStopped(true);
    setSent(60s);
    const std::size_t before = syncs();

    handle(fixAt(500, 50));

    ASSERT_EQ(lastOutcome(), Outcome::old);
    EXPECT_FALSE(lowPower().updates);
    EXPECT_TRUE(stopped());
    EXPECT_EQ(QVState::getLastSentAt(), noon + 40s);
    EXPECT_EQ(syncs(), before);
}

TEST_F(DecisionPipelineTest, TheFirstFixStoresThatTheUserMoves) {
    handle(fixAt(0));

    EXPECT_EQ(preferences().boolean("quorvane_stopped"), false);
}

TEST_F(DecisionPipelineTest, TheDelegateIsToldOfTheFixBeforeTheCallersAre) {
    std::vector<std::size_t> clientUpdatesThen;
    manager().getLocation(Accuracy::HIGH,
                          [&](QVStatus, const auto&, bool) { clientUpdatesThen.push_back(clientUpdates().size()); });

    handle(fixAt(0), Source::FOREGROUND_LOCATION);

    EXPECT_THAT(clientUpdatesThen, ElementsAre(1U));
    EXPECT_EQ(clientUpdates()[0].location, fixAt(0));
    EXPECT_FALSE(clientUpdates()[0].stopped);
    EXPECT_EQ(clientUpdates()[0].source, Source::FOREGROUND_LOCATION);
}

TEST_F(DecisionPipelineTest, TheDelegateIsToldWhatTheFixMadeOfTheUser) {
    handle(fixAt(0));
    handle(fixAt(50, 150));
    handle(fixAt(500, 300));

    std::vector<bool> told;
    for (const Call& update : clientUpdates()) {
        told.push_back(update.stopped);
    }
    EXPECT_THAT(told, ElementsAre(false, true, false));
}

TEST_F(DecisionPipelineTest, TheCallersGetTheLocationAndTheStateThatItLeft) {
    handle(fixAt(0));
    advance(150s);
    const LocationCalls calls;
    manager().getLocation(Accuracy::HIGH, calls.record());

    handle(fixAt(50, 150), Source::FOREGROUND_LOCATION);

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(calls.first<1>(), fixAt(50, 150));
    EXPECT_TRUE(calls.first<2>());
}

TEST_F(DecisionPipelineTest, AManualLocationDoesNotBringTrackingUpToDateButEveryOtherFixDoes) {
    SignedInFlag::shared().set(true);
    setSent(5s);

    handle(fixAt(0), Source::MANUAL_LOCATION);
    EXPECT_EQ(lastOutcome(), Outcome::processed);
    EXPECT_FALSE(lowPower().updates);

    handle(fixAt(0), Source::GEOFENCE_EXIT);
    EXPECT_TRUE(lowPower().updates);
}

TEST_F(DecisionPipelineTest, WithStopDetectionOffAFixThatWasAskedForIsStopped) {
    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::EFFICIENT());

    handle(fixAt(0), Source::FOREGROUND_LOCATION);
    EXPECT_TRUE(stopped());

    handle(fixAt(0), Source::BACKGROUND_LOCATION);
    EXPECT_FALSE(stopped());
    EXPECT_EQ(QVState::getLastMovedLocation(), std::nullopt);
    EXPECT_EQ(QVState::getLastMovedAt(), std::nullopt);
}

TEST_F(DecisionPipelineTest, TheOptionsAreReadAnewForEveryFix) {
    handle(fixAt(0));
    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
    options.stopDistance = 1000;
    QVSettings::setTrackingOptions(options);

    handle(fixAt(800, 150));

    EXPECT_TRUE(stopped());
}

TEST_F(DecisionPipelineTest, AHostThatChangesTheOptionsThatItWasHandedChangesNothingStored) {
    QVSettings::getTrackingOptions()->stopDistance = 1000;
    handle(fixAt(0));
    Quorvane::getTrackingOptions()->stopDistance = 1000;

    handle(fixAt(800, 150));

    EXPECT_FALSE(stopped());
    EXPECT_EQ(QVSettings::getTrackingOptions()->stopDistance, 70);
}

TEST_F(DecisionPipelineTest, AfterAFixOfAnInfiniteLongitudeTheNextOneHasMoved) {
    platform::Location odd = fixAt(0);
    odd.coordinate.longitude = std::numeric_limits<double>::infinity();
    handle(odd);
    ASSERT_EQ(lastOutcome(), Outcome::processed);

    handle(fixAt(0, 150));

    EXPECT_TRUE(fixes().back().stop->moved);
    EXPECT_EQ(QVState::getLastMovedLocation(), fixAt(0, 150));
}

TEST_F(DecisionPipelineTest, TheStateOutlastsALaunch) {
    handle(fixAt(0));
    phone.relaunch();
    api().setEndpoints(QVEndpoints(Environment::LOCAL));

    manager().handleLocation(fixAt(50, 150), Source::BACKGROUND_LOCATION);

    EXPECT_TRUE(stopped());
    EXPECT_EQ(QVState::getLastMovedAt(), noon);
}

} // namespace
} // namespace quorvane
