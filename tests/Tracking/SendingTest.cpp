#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using SendChange = observed::Send::Change;

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
    EXPECT_EQ(observer.of<observed::Send>().at(0).change, SendChange::dropped);
    EXPECT_TRUE(lowPower().updates);
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
    EXPECT_THAT(delegate->errors(), IsEmpty());
}

TEST_F(SendingTest, WhatIsDroppedWithoutAKeyHoldsNoShutdownBack) {
    manager().updateTracking(std::nullopt);
    settle();
    ASSERT_TRUE(lowPower().updates);
    preferences().remove("quorvane_access_key");
    send();
    settle();

    manager().stopTracking();
    settle();

    EXPECT_FALSE(lowPower().updates);
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

/// A host that adds to the user what the service may say of one.
class AddingDelegate : public quorvane::testing::RecordingDelegate {
public:
    explicit AddingDelegate(std::function<void(QVUser&)> theAdd) : add(std::move(theAdd)) {}
    void onLocationUpdated(const platform::Location&, const std::shared_ptr<QVUser>& user) override { add(*user); }

private:
    const std::function<void(QVUser&)> add;
};

TEST_F(SendingTest, ExitsAreAllowedForAUserWithInsightsGeofencesOrAPlace) {
    const std::vector<std::function<void(QVUser&)>> additions{
        [](QVUser& user) { user.insights = std::make_shared<QVUserInsights>(); },
        [](QVUser& user) { user.geofences.emplace(); },
        [](QVUser& user) { user.place = std::make_shared<QVPlace>(); },
    };
    for (const auto& add : additions) {
        preferences().setBoolean("quorvane_can_exit", false);
        const auto adding = std::make_shared<AddingDelegate>(add);
        Quorvane::setDelegate(adding);

        send();
        settle();

        EXPECT_EQ(preferences().boolean("quorvane_can_exit"), true);
        EXPECT_TRUE(observer.of<observed::Send>().back().canExit);
    }
}

TEST_F(SendingTest, OnceExitsAreAllowedAMovingFixIsSentUntilTheyAreNotAnyMore) {
    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
    options.sync = Sync::STOPS_AND_EXITS;
    QVSettings::setTrackingOptions(options);
    const auto adding = std::make_shared<AddingDelegate>([](QVUser& user) { user.geofences.emplace(); });
    Quorvane::setDelegate(adding);
    send();
    settle();
    Quorvane::setDelegate(delegate);
    setSent(60s);

    handle(fixAt(0));
    EXPECT_EQ(syncs(), 2U);

    handle(fixAt(500, 60));
    EXPECT_EQ(fixes().back().sync->rule, SyncDecision::Rule::cantExit);
    EXPECT_EQ(syncs(), 2U);
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
    EXPECT_EQ(sends[1].change, SendChange::ended);
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

TEST_F(SendingTest, AShutdownThatASendHeldBackComesTenSecondsAfterItsEndThoughTheTimerWasStoppedBefore) {
    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
    options.desiredStoppedUpdateInterval = 0;
    QVSettings::setTrackingOptions(options);
    manager().updateTracking(std::nullopt);
    settle();
    transport().holdAnswers(true);
    send();
    setStopped(true);
    manager().updateTracking(std::nullopt);
    settle();
    EXPECT_EQ(observer.of<observed::UpdateTimer>().back().change, observed::UpdateTimer::Change::stopped);
    EXPECT_THAT(observer.of<observed::Shutdown>(), IsEmpty());

    transport().deliver();
    advance(10s - 1ns);
    EXPECT_TRUE(lowPower().updates);
    advance(1ns);

    EXPECT_FALSE(lowPower().updates);
}

TEST_F(SendingTest, OfTwoSendsInFlightTheFirstThatEndsEndsTheHold) {
    manager().updateTracking(std::nullopt);
    settle();
    transport().holdAnswers(true);
    send();
    send();

    transport().deliverNext();
    manager().stopTracking();
    settle();

    EXPECT_EQ(transport().heldCount(), 1U);
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
