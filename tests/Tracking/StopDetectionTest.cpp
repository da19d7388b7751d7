#include <chrono>
#include <limits>

#include <gtest/gtest.h>

#include "Tracking/ExactDistance.h"
#include "Tracking/StopDetection.h"
#include "testing/SimulatedClock.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;
using Source = QVLocationSource;

constexpr platform::Date noon = quorvane::testing::SimulatedClock::start;
constexpr double metresOfOneDegree = 111'195.08;

platform::Location fixAt(double metresNorth, platform::Date time) {
    return {{46.0 + metresNorth / metresOfOneDegree, 14.5}, 10, 5, time};
}

class StopDetectionTest : public ::testing::Test {
protected:
    StopDetectionTest() {
        options.stopDistance = 70;
        options.stopDuration = 140;
    }

    [[nodiscard]] StopDecision detect(const platform::Location& fix, Source source = Source::BACKGROUND_LOCATION,
                                      platform::Date now = noon + 1h) const {
        return detectStop(options, fix, source, last, quorvane::testing::SimulatedClock(now));
    }

    QuorvaneTrackingOptions options;
    LastMove last{fixAt(0, noon), noon};
};

TEST_F(StopDetectionTest, FiftyMetresAwayAfterAHundredAndFiftySecondsIsStopped) {
    const StopDecision decision = detect(fixAt(50, noon + 150s));

    EXPECT_TRUE(decision.isDetecting);
    EXPECT_TRUE(decision.stopped);
    EXPECT_FALSE(decision.moved);
    EXPECT_NEAR(decision.distance, 50, 0.01);
    EXPECT_EQ(decision.duration, 150);
    EXPECT_EQ(decision.lastMovedAt, noon);
    EXPECT_FALSE(decision.setsLastMovedLocation);
    EXPECT_FALSE(decision.setsLastMovedAt);
}

TEST_F(StopDetectionTest, EightyMetresAwayIsMovedAndMovesPlaceAndTime) {
    const StopDecision decision = detect(fixAt(80, noon + 150s));

    EXPECT_FALSE(decision.stopped);
    EXPECT_TRUE(decision.moved);
    EXPECT_TRUE(decision.setsLastMovedLocation);
    EXPECT_TRUE(decision.setsLastMovedAt);
}

TEST_F(StopDetectionTest, ExactlyTheStopDistanceIsNotMoved) {
    last.location = platform::Location{nearTheEquator, 10, 5, noon};
    platform::Location fix{pointExactly(70, nearTheEquator), 10, 5, noon + 150s};
    ASSERT_EQ(last.location->distance(fix), 70);

    EXPECT_TRUE(detect(fix).stopped);
    EXPECT_FALSE(detect(fix).moved);

    fix.coordinate.latitude += 1e-9;
    EXPECT_FALSE(detect(fix).stopped);
    EXPECT_TRUE(detect(fix).moved);
}

TEST_F(StopDetectionTest, TheStopDurationItselfIsLongEnough) {
    EXPECT_TRUE(detect(fixAt(0, noon + 140s)).stopped);
    EXPECT_FALSE(detect(fixAt(0, noon + 140s - 1ns)).stopped);
}

TEST_F(StopDetectionTest, NearbyButNotForLongEnoughIsNeitherStoppedNorMoved) {
    const StopDecision decision = detect(fixAt(10, noon + 30s));

    EXPECT_FALSE(decision.stopped);
    EXPECT_FALSE(decision.moved);
    EXPECT_FALSE(decision.setsLastMovedLocation);
    EXPECT_FALSE(decision.setsLastMovedAt);
}

TEST_F(StopDetectionTest, AVisitsArrivalIsStoppedWhateverTheDuration) {
    EXPECT_TRUE(detect(fixAt(10, noon + 1s), Source::VISIT_ARRIVAL).stopped);
}

TEST_F(StopDetectionTest, AVisitsArrivalThatMovedStaysStoppedAndMovesThePlaceButNotTheTime) {
    const StopDecision decision = detect(fixAt(500, noon + 150s), Source::VISIT_ARRIVAL);

    EXPECT_TRUE(decision.stopped);
    EXPECT_TRUE(decision.moved);
    EXPECT_TRUE(decision.setsLastMovedLocation);
    EXPECT_FALSE(decision.setsLastMovedAt);
}

TEST_F(StopDetectionTest, AFixOfBeforeTheLastMoveIsOld) {
    const StopDecision decision = detect(fixAt(500, noon - 1ns));

    EXPECT_TRUE(decision.isOld);
    EXPECT_EQ(decision.lastMovedAt, noon);
    EXPECT_FALSE(decision.setsLastMovedLocation);
    EXPECT_FALSE(detect(fixAt(500, noon)).isOld);
}

TEST_F(StopDetectionTest, AFixThatWasAskedForIsNeverOld) {
    for (const Source source : {Source::FOREGROUND_LOCATION, Source::MANUAL_LOCATION}) {
        const StopDecision decision = detect(fixAt(500, noon - 5s), source);

        EXPECT_FALSE(decision.isOld);
        EXPECT_EQ(decision.duration, -5);
        EXPECT_TRUE(decision.moved);
        EXPECT_TRUE(decision.setsLastMovedAt);
    }
}

TEST_F(StopDetectionTest, AnOldFixWithoutAKnownPlaceStillBecomesThePlace) {
    last.location.reset();

    const StopDecision decision = detect(fixAt(0, noon - 1s));

    EXPECT_TRUE(decision.isOld);
    EXPECT_TRUE(decision.setsLastMovedLocation);
    EXPECT_FALSE(decision.setsLastMovedAt);
}

TEST_F(StopDetectionTest, TheFirstFixIsItsOwnLastMove) {
    last = {};

    const StopDecision decision = detect(fixAt(0, noon), Source::BACKGROUND_LOCATION, noon + 3s);

    EXPECT_EQ(decision.distance, 0);
    EXPECT_EQ(decision.lastMovedAt, noon);
    EXPECT_TRUE(decision.setsLastMovedLocation);
    EXPECT_TRUE(decision.setsLastMovedAt);
    EXPECT_FALSE(decision.stopped);
}

TEST_F(StopDetectionTest, ADurationOfExactlyZeroIsReplacedByTheAgeOfTheFix) {
    EXPECT_EQ(detect(fixAt(0, noon), Source::BACKGROUND_LOCATION, noon + 139s).duration, 139);
    EXPECT_FALSE(detect(fixAt(0, noon), Source::BACKGROUND_LOCATION, noon + 139s).stopped);
    EXPECT_TRUE(detect(fixAt(0, noon), Source::BACKGROUND_LOCATION, noon + 140s).stopped);

    EXPECT_EQ(detect(fixAt(0, noon + 1ns), Source::BACKGROUND_LOCATION, noon + 139s).duration, 1e-9);
}

TEST_F(StopDetectionTest, WithAStopDistanceOrDurationBelowOneOnlyTheSourceCounts) {
    for (const auto& [distance, duration] :
         {std::pair{0, 140}, std::pair{70, 0}, std::pair{-1, 140}, std::pair{0, 0}}) {
        options.stopDistance = distance;
        options.stopDuration = duration;
        for (const Source source : {Source::VISIT_ARRIVAL, Source::FOREGROUND_LOCATION, Source::MANUAL_LOCATION}) {
            EXPECT_TRUE(detect(fixAt(500, noon - 1s), source).stopped);
        }
        for (const Source source : {Source::BACKGROUND_LOCATION, Source::GEOFENCE_DWELL, Source::GEOFENCE_ENTER,
                                    Source::GEOFENCE_EXIT, Source::VISIT_DEPARTURE, Source::UNKNOWN}) {
            const StopDecision decision = detect(fixAt(0, noon - 1s), source);
            EXPECT_FALSE(decision.stopped);
            EXPECT_FALSE(decision.isOld);
            EXPECT_FALSE(decision.isDetecting);
            EXPECT_EQ(decision.distance, platform::maximumDistance);
            EXPECT_FALSE(decision.setsLastMovedLocation);
            EXPECT_FALSE(decision.setsLastMovedAt);
        }
    }
}

TEST_F(StopDetectionTest, OneMetreAndOneSecondSwitchTheDetectionOn) {
    options.stopDistance = 1;
    options.stopDuration = 1;

    EXPECT_TRUE(detect(fixAt(0.5, noon + 1s)).isDetecting);
    EXPECT_TRUE(detect(fixAt(0.5, noon + 1s)).stopped);
}

TEST_F(StopDetectionTest, APlaceThatNoDistanceCanBeMeasuredToIsNeitherStoppedNorMoved) {
    platform::Location fix = fixAt(0, noon + 150s);
    fix.coordinate.longitude = std::numeric_limits<double>::infinity();

    const StopDecision decision = detect(fix);

    EXPECT_FALSE(decision.stopped);
    EXPECT_FALSE(decision.moved);
}

TEST_F(StopDetectionTest, TheEndsOfTimeHaveADuration) {
    last.at = (platform::Date::min)();

    EXPECT_TRUE(detect(fixAt(0, (platform::Date::max)())).stopped);
    EXPECT_NEAR(detect(fixAt(0, (platform::Date::max)())).duration, 1.8446744e10, 1e4);
}

} // namespace
} // namespace quorvane
