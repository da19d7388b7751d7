#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Change = observed::Send::Change;

class SendingTest : public TrackingTest {
protected:
    SendingTest() {
        QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
        SignedInFlag::shared().set(true);
    }

    void send(bool isStopped = false, bool replayed = false) {
        manager().sendLocation(fixAt(0), isStopped, Source::BACKGROUND_LOCATION, replayed);
    }
};

TEST_F(SendingTest, LogsWhatIsSent) {
    setLogLevel(QVLogLevel::DEBUG);

    manager().sendLocation(fixAt(0), true, Source::GEOFENCE_DWELL, false);

    EXPECT_EQ(messages().at(0),
              "sending location |\n    \tsource = GEOFENCE_DWELL;\n    \tlocation = 46.0,14.5 +/- 10.0 m at "
              "2026-03-01 12:00:00 +0000;\n    \tstopped = true;\n    \treplayed = false");
}

TEST_F(SendingTest, WithoutAKeyNothingIsSentAndTrackingIsBroughtUpToDate) {
    preferences().remove("quorvane_access_key");

    send(true);
    settle();

    EXPECT_EQ(syncs(), 0U);
    EXPECT_EQ(observer.of<observed::Send>().at(0).change, Change::dropped);
    EXPECT_TRUE(lowPower().updates);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
    EXPECT_THAT(delegate->errors(), IsEmpty());
}

TEST_F(SendingTest, AnEmptyKeyIsAKey) {
    store("quorvane_access_key", "");

    send();
    settle();

    EXPECT_EQ(syncs(), 1U);
}

TEST_F(SendingTest, ASuccessStoresTheUserIdAsTheInternalOneAndThatExitsAreNotAllowed) {
    preferences().setBoolean("quorvane_can_exit", true);

    send();
    settle();

    EXPECT_EQ(stored("quorvane_internal_user_id"), "rider");
    EXPECT_EQ(preferences().boolean("quorvane_can_exit"), false);
}

TEST_F(SendingTest, WithoutAUserIdTheInternalOneIsRemoved) {
    store("quorvane_internal_user_id", "old");
    preferences().remove("quorvane_user_id");

    send();
    settle();

    EXPECT_EQ(syncs(), 1U);
    EXPECT_EQ(stored("quorvane_internal_user_id"), std::nullopt);
}

TEST_F(SendingTest, AFailureStoresNeither) {
    preferences().setBoolean("quorvane_can_exit", true);
    transport().answer("GET", "/locations/find", Answer::with(500));

    send();
    settle();

    EXPECT_EQ(stored("quorvane_internal_user_id"), std::nullopt);
    EXPECT_EQ(preferences().boolean("quorvane_can_exit"), true);
    const auto sends = observer.of<observed::Send>();
    ASSERT_EQ(sends.size(), 2U);
    EXPECT_EQ(sends[1].change, Change::ended);
    EXPECT_EQ(sends[1].status, QVStatus::ERROR_SERVER);
    EXPECT_TRUE(sends[1].canExit);
}

TEST_F(SendingTest, TheEndOfASendBringsTrackingUpToDate) {
    for (const int status : {200, 500}) {
        manager().stopTracking();
        settle();
        transport().answer("GET", "/locations/find", Answer::with(status, R"({"data":[]})"));
        send();
        SignedInFlag::shared().set(true);
        EXPECT_FALSE(lowPower().updates);

        settle();

        EXPECT_TRUE(lowPower().updates) << status;
    }
}

TEST_F(SendingTest, ASendInFlightHoldsTheShutdownBackUntilTheNextUpdate) {
    manager().updateTracking(std::nullopt);
    settle();
    EXPECT_TRUE(lowPower().updates);
    transport().holdAnswers(true);
    send();

    manager().stopTracking();
    advance(9s);
    EXPECT_TRUE(lowPower().updates);

    // The end of the send is such an update.
    transport().deliver();
    settle();
    EXPECT_FALSE(lowPower().updates);
}

TEST_F(SendingTest, AScheduledSendHoldsTheShutdownBack) {
    manager().updateTracking(std::nullopt);
    settle();
    handle(fixAt(0));

    manager().stopTracking();
    advance(1s);
    EXPECT_TRUE(lowPower().updates);

    advance(2s);
    EXPECT_FALSE(lowPower().updates);
    EXPECT_EQ(syncs(), 1U);
}

TEST_F(SendingTest, ARefreshOfTheTokensEndsNeitherTrackingNorTheGeofence) {
    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
    options.useMovingGeofence = true;
    options.movingGeofenceRadius = 100;
    track(options);
    manager().updateTracking(fixAt(0));
    settle();
    const auto placed = regions();
    ASSERT_EQ(placed.size(), 1U);
    storeTokens(-1);
    transport().holdAnswers(true);

    send();
    settle();
    EXPECT_THAT(requestLines(), ElementsAre("POST /token"));
    EXPECT_FALSE(Quorvane::Tracking::isTracking());
    manager().updateTracking(std::nullopt);
    settle();

    EXPECT_EQ(regions(), placed);
    EXPECT_TRUE(lowPower().updates);
}

} // namespace
} // namespace quorvane
