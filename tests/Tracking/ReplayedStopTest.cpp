#include "Device/QVUtils.h"
#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using SendChange = observed::Send::Change;
using Force = SyncDecision::Force;

/// A stop that could not be sent, and is sent in the place of a later fix. Stop detection of 70 m and 140 s.
class ReplayedStopTest : public TrackingTest {
protected:
    ReplayedStopTest() {
        options.stopDistance = 70;
        options.stopDuration = 140;
        options.sync = Sync::ALL;
        options.replay = QuorvaneTrackingOptions::Replay::STOPS;
        QVSettings::setTrackingOptions(options);
    }

    void storeFailedStop(const platform::Location& location) {
        preferences().setDictionary("quorvane_last_failed_stopped_location", QVUtils::fromLocation(location));
    }

    [[nodiscard]] observed::Send lastSend() { return observer.of<observed::Send>().back(); }
    [[nodiscard]] SyncDecision lastSync() { return fixes().back().sync.value(); }

    QuorvaneTrackingOptions options;
};

TEST_F(ReplayedStopTest, AFailedStopIsReplayedInThePlaceOfTheFix) {
    storeFailedStop(fixAt(5000, -600));
    setSent(60s);

    handle(fixAt(0));

    EXPECT_EQ(lastSync().force, Force::replay);
    EXPECT_EQ(lastSend().location, fixAt(5000, -600));
    EXPECT_TRUE(lastSend().stopped);
    EXPECT_TRUE(lastSend().replayed);
    EXPECT_EQ(lastSend().source, Source::BACKGROUND_LOCATION);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
    EXPECT_FALSE(stopped());
}

TEST_F(ReplayedStopTest, AReplayWithinASecondOfTheLastSendIsSentTwoSecondsLater) {
    storeFailedStop(fixAt(5000, -600));
    setSent(500ms);

    handle(fixAt(0));
    EXPECT_EQ(lastSend().change, SendChange::scheduled);
    EXPECT_EQ(syncs(), 0U);
    advance(2s);

    EXPECT_EQ(syncs(), 1U);
    EXPECT_EQ(lastSend().location, fixAt(5000, -600));
    EXPECT_TRUE(lastSend().stopped);
    EXPECT_TRUE(lastSend().replayed);
}

TEST_F(ReplayedStopTest, AUserWhoStaysStoppedSendsAFailedStopAgain) {
    handle(fixAt(0));
    handle(fixAt(10, 150));
    storeFailedStop(fixAt(10, 150));
    const std::size_t before = syncs();

    handle(fixAt(10, 300));

    EXPECT_EQ(lastSync().force, Force::replay);
    EXPECT_EQ(syncs(), before + 1);
}

TEST_F(ReplayedStopTest, AFailedStopIsForgottenBeforeItIsDecidedWhetherItIsSent) {
    storeFailedStop(fixAt(5000, -600));
    setSent(60s);

    handle(fixAt(0), Source::FOREGROUND_LOCATION);

    EXPECT_EQ(syncs(), 0U);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
}

TEST_F(ReplayedStopTest, AReplayThatFailsIsNotStoredAgain) {
    storeFailedStop(fixAt(5000, -600));
    setSent(60s);
    transport().answer("GET", "/locations/find", Answer::with(500));

    handle(fixAt(0));

    EXPECT_EQ(syncs(), 1U);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
}

TEST_F(ReplayedStopTest, AFailedStopWaitsWhileTheUserHasJustStopped) {
    handle(fixAt(0));
    storeFailedStop(fixAt(5000, -600));

    handle(fixAt(10, 150));

    EXPECT_EQ(lastSend().location, fixAt(10, 150));
    EXPECT_FALSE(lastSend().replayed);
    EXPECT_TRUE(QVState::getLastFailedStoppedLocation());
}

TEST_F(ReplayedStopTest, NothingIsReplayedWhereReplayIsOffOrAbsent) {
    storeFailedStop(fixAt(5000, -600));
    options.replay = QuorvaneTrackingOptions::Replay::NONE;
    QVSettings::setTrackingOptions(options);
    setSent(60s);
    handle(fixAt(0));
    EXPECT_FALSE(lastSend().replayed);

    preferences().setString("quorvane_tracking_options", "{}");
    setSent(60s);
    handle(fixAt(0));

    EXPECT_FALSE(lastSend().replayed);
    EXPECT_TRUE(QVState::getLastFailedStoppedLocation());
}

} // namespace
} // namespace quorvane
