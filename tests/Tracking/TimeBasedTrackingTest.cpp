#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

/// Tracking that begins or ends at a date of its options.
class TimeBasedTrackingTest : public TrackingTest {
protected:
    void update() {
        manager().updateTracking(std::nullopt);
        settle();
    }

    /// Stores the options without starting to track.
    void set(const QuorvaneTrackingOptions& changed) { QVSettings::setTrackingOptions(changed); }

    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
};

TEST_F(TimeBasedTrackingTest, TrackingEndsOnceItsEndIsPast) {
    setLogLevel(QVLogLevel::DEBUG);
    options.stopTrackingAfter = noon + 60s;
    track(options);
    advance(60s);
    update();
    EXPECT_TRUE(isTracking());

    manager().verbose = true;
    advance(1ns);
    update();

    EXPECT_FALSE(isTracking());
    EXPECT_THAT(messages(), Contains("Stopping time-based tracking; stopTrackingAfter = 2026-03-01 12:01:00 +0000"));
    EXPECT_FALSE(lowPower().updates);
    EXPECT_THAT(causes(), ElementsAre(Cause::host, Cause::stopDate));
}

TEST_F(TimeBasedTrackingTest, TrackingBeginsOnceItsBeginningIsPast) {
    setLogLevel(QVLogLevel::INFO);
    options.startTrackingAfter = noon + 60s;
    set(options);
    advance(60s);
    update();
    EXPECT_FALSE(isTracking());
    EXPECT_FALSE(lowPower().updates);

    advance(1ns);
    update();

    EXPECT_TRUE(isTracking());
    EXPECT_THAT(messages(),
                ElementsAre("Starting time-based tracking; startTrackingAfter = 2026-03-01 12:01:00 +0000"));
    EXPECT_TRUE(lowPower().updates);
}

TEST_F(TimeBasedTrackingTest, WithABeginningThatIsPastAStopIsUndoneByTheNextUpdate) {
    options.startTrackingAfter = noon - 60s;
    track(options);

    manager().stopTracking();
    settle();

    EXPECT_TRUE(isTracking());
    EXPECT_TRUE(lowPower().updates);
}

TEST_F(TimeBasedTrackingTest, WithBothDatesPastTrackingAlternates) {
    options.startTrackingAfter = noon - 120s;
    options.stopTrackingAfter = noon - 60s;
    set(options);
    std::vector<bool> states;
    for (int i = 0; i < 4; ++i) {
        update();
        states.push_back(isTracking());
    }

    EXPECT_THAT(states, ElementsAre(true, false, true, false));
}

TEST_F(TimeBasedTrackingTest, WithBothDatesPastEachFixTurnsTrackingOnOrOffAgain) {
    setLogLevel(QVLogLevel::DEBUG);
    manager().verbose = true;
    options.startTrackingAfter = noon - 120s;
    options.stopTrackingAfter = noon - 60s;
    options.sync = Sync::NONE;
    setSent(1s);
    set(options);

    for (int i = 0; i < 3; ++i) {
        handle(fixAt(0, i));
    }

    EXPECT_THAT(causes(), ElementsAre(Cause::startDate, Cause::stopDate, Cause::startDate));
    auto lines = messages();
    std::erase_if(lines, [](const std::string& line) { return line.find("time-based") == std::string::npos; });
    EXPECT_THAT(lines, ElementsAre("Starting time-based tracking; startTrackingAfter = 2026-03-01 11:58:00 +0000",
                                   "Stopping time-based tracking; stopTrackingAfter = 2026-03-01 11:59:00 +0000",
                                   "Starting time-based tracking; startTrackingAfter = 2026-03-01 11:58:00 +0000"));
}

TEST_F(TimeBasedTrackingTest, AManualLocationDoesNotLookAtTheDates) {
    options.startTrackingAfter = noon - 60s;
    options.sync = Sync::NONE;
    setSent(1s);
    set(options);

    handle(fixAt(0), Source::MANUAL_LOCATION);

    EXPECT_FALSE(isTracking());
}

} // namespace
} // namespace quorvane
