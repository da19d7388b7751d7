#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using SendChange = observed::Send::Change;
using Force = SyncDecision::Force;
using Rule = SyncDecision::Rule;

/// What becomes of a fix that was decided on: sent at once, sent shortly, or skipped.
class SyncTest : public TrackingTest {
protected:
    SyncTest() { QVSettings::setTrackingOptions(options); }

    /// Stop detection of 70 m and 140 s, and everything is sent.
    [[nodiscard]] static QuorvaneTrackingOptions everything() {
        QuorvaneTrackingOptions result;
        result.stopDistance = 70;
        result.stopDuration = 140;
        result.sync = Sync::ALL;
        return result;
    }

    void store(const QuorvaneTrackingOptions& changed) { QVSettings::setTrackingOptions(changed); }

    [[nodiscard]] observed::Send lastSend() { return observer.of<observed::Send>().back(); }
    [[nodiscard]] SyncDecision lastSync() { return fixes().back().sync.value(); }

    QuorvaneTrackingOptions options = everything();
};

TEST_F(SyncTest, TheFirstFixEverIsSentTwoSecondsLater) {
    handle(fixAt(0));
    EXPECT_EQ(lastSync().force, Force::neverSent);
    EXPECT_EQ(lastSync().lastSyncInterval, 0);
    EXPECT_EQ(QVState::getLastSentAt(), noon);
    EXPECT_EQ(lastSend().change, SendChange::scheduled);
    advance(2s - 1ns);
    EXPECT_EQ(syncs(), 0U);

    advance(1ns);

    EXPECT_EQ(syncs(), 1U);
    EXPECT_EQ(transport().requests().at(0).request.url,
              "http://localhost:3000/locations/find?lat=46.0&lng=14.5&rad=5000");
}

TEST_F(SyncTest, TheFirstFixEverIsSentWhateverTheSyncMode) {
    options.sync = Sync::NONE;
    store(options);

    handle(fixAt(0));
    advance(2s);

    EXPECT_EQ(syncs(), 1U);
}

TEST_F(SyncTest, AFixOneSecondAfterTheLastOneIsSentAtOnce) {
    setSent(1s);

    handle(fixAt(0));

    EXPECT_EQ(syncs(), 1U);
    EXPECT_EQ(QVState::getLastSentAt(), noon);
}

TEST_F(SyncTest, TheTimeThatTheCallersTookCountsInTheDecision) {
    setSent(500ms);
    manager().getLocation(Accuracy::LOW, [this](QVStatus, const auto&, bool) { phone->clock().moveForward(5s); });

    handle(fixAt(0));

    EXPECT_EQ(lastSync().lastSyncInterval, 5.5);
    EXPECT_EQ(lastSync().rule, Rule::send);
    EXPECT_EQ(QVState::getLastSentAt(), noon + 5s);
}

TEST_F(SyncTest, AForegroundFixIsNeverSentButCountsAsSent) {
    setSent(60s);

    handle(fixAt(0), Source::FOREGROUND_LOCATION);
    advance(10s);

    EXPECT_EQ(lastSync().rule, Rule::send);
    EXPECT_EQ(QVState::getLastSentAt(), noon);
    EXPECT_EQ(syncs(), 0U);
    EXPECT_THAT(observer.of<observed::Send>(), IsEmpty());
}

TEST_F(SyncTest, OfTwoFixesHalfASecondApartTheSecondIsSkippedByTheRateLimit) {
    setLogLevel(QVLogLevel::INFO);
    setSent(60s);
    handle(fixAt(0));
    phone->application().clearOutput();

    handle(fixAt(10, 0.5));

    EXPECT_EQ(lastSync().rule, Rule::rateLimit);
    EXPECT_THAT(messages(), ElementsAre("Skipping sync: rate limit | justStopped = false; lastSyncInterval = 0.5"));
    EXPECT_EQ(syncs(), 1U);
    EXPECT_EQ(QVState::getLastSentAt(), noon);
}

TEST_F(SyncTest, AUserWhoJustStoppedIsSentInSpiteOfTheRateLimit) {
    handle(fixAt(0));
    advance(150s);
    setSent(500ms);
    const std::size_t before = syncs();

    handle(fixAt(10, 150));
    advance(2s);

    EXPECT_EQ(lastSync().force, Force::justStopped);
    EXPECT_EQ(syncs(), before + 1);
    EXPECT_TRUE(lastSend().stopped);
}

TEST_F(SyncTest, WhereTheClockWasSetBackAUserWhoJustStoppedIsSentTwoSecondsLater) {
    handle(fixAt(0));
    advance(150s);
    setSent(-1h);
    const std::size_t before = syncs();

    handle(fixAt(10, 150));
    EXPECT_EQ(lastSync().lastSyncInterval, -3600);
    EXPECT_EQ(lastSend().change, SendChange::scheduled);
    EXPECT_EQ(QVState::getLastSentAt(), noon + 150s);
    EXPECT_EQ(syncs(), before);
    advance(2s);

    EXPECT_EQ(syncs(), before + 1);
}

TEST_F(SyncTest, AManualFixHalfASecondAfterTheLastOneIsSentTwoSecondsLater) {
    setSent(500ms);

    handle(fixAt(0), Source::MANUAL_LOCATION);
    EXPECT_EQ(syncs(), 0U);
    advance(2s);

    EXPECT_EQ(syncs(), 1U);
    EXPECT_EQ(lastSend().source, Source::MANUAL_LOCATION);
}

TEST_F(SyncTest, AUserWhoStaysStoppedIsNotSentAgain) {
    setLogLevel(QVLogLevel::INFO);
    handle(fixAt(0));
    handle(fixAt(10, 150));
    const std::size_t before = syncs();

    handle(fixAt(10, 300));

    EXPECT_EQ(lastSync().rule, Rule::alreadyStopped);
    EXPECT_EQ(syncs(), before);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(SyncTest, WithoutSyncNothingMoreIsSent) {
    setLogLevel(QVLogLevel::INFO);
    options.sync = Sync::NONE;
    store(options);
    setSent(60s);

    handle(fixAt(0));

    EXPECT_EQ(lastSync().rule, Rule::syncMode);
    EXPECT_THAT(messages(), ElementsAre("Skipping sync: sync mode | sync = none"));
    EXPECT_EQ(syncs(), 0U);
}

TEST_F(SyncTest, WithStopsAndExitsAMovingFixIsNeverSentWhileTheServiceAllowsNoExits) {
    setLogLevel(QVLogLevel::INFO);
    options.sync = Sync::STOPS_AND_EXITS;
    store(options);
    setSent(60s);

    handle(fixAt(0));

    EXPECT_EQ(lastSync().rule, Rule::cantExit);
    EXPECT_THAT(messages(), ElementsAre("skipping sync: can't exit |\n\tsync = stopsAndExits;\n\tcanExit = false"));
    EXPECT_EQ(syncs(), 0U);
}

TEST_F(SyncTest, WithStopsAndExitsAMovingFixIsSentWhereTheServiceAllowsExits) {
    options.sync = Sync::STOPS_AND_EXITS;
    store(options);
    preferences().setBoolean("quorvane_can_exit", true);
    setSent(60s);

    handle(fixAt(0));

    EXPECT_EQ(syncs(), 1U);
}

TEST_F(SyncTest, AnAbsentSyncModeSendsEverything) {
    preferences().setString("quorvane_tracking_options", "{}");
    setSent(60s);

    handle(fixAt(0));

    EXPECT_EQ(syncs(), 1U);
}

TEST_F(SyncTest, ACallerAddedByAnAnsweredOneSendsTheFix) {
    options.sync = Sync::NONE;
    store(options);
    setSent(60s);
    const LocationCalls second;
    manager().getLocation(Accuracy::LOW,
                          [&](QVStatus, const auto&, bool) { manager().getLocation(Accuracy::LOW, second.record()); });

    handle(fixAt(0), Source::MANUAL_LOCATION);

    EXPECT_EQ(lastSync().force, Force::waitingHandlers);
    EXPECT_EQ(syncs(), 1U);
    EXPECT_EQ(second.count(), 0U);
    advance(20s);
    EXPECT_EQ(second.count(), 1U);
}

TEST_F(SyncTest, CallersWhoWereAnsweredDoNotSendTheFix) {
    options.sync = Sync::NONE;
    store(options);
    setSent(60s);
    const LocationCalls calls;
    manager().getLocation(Accuracy::LOW, calls.record());

    handle(fixAt(0), Source::MANUAL_LOCATION);

    EXPECT_EQ(calls.count(), 1U);
    EXPECT_EQ(lastSync().rule, Rule::syncMode);
}

} // namespace
} // namespace quorvane
