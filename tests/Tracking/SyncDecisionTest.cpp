#include <chrono>

#include <gtest/gtest.h>

#include "Tracking/SyncDecision.h"
#include "testing/SimulatedClock.h"

namespace quorvane {
namespace {

using namespace std::chrono_literals;
using Force = SyncDecision::Force;
using Rule = SyncDecision::Rule;
using Source = QVLocationSource;
using Sync = QuorvaneTrackingOptions::Sync;

/// Options and a fix of a user who moves, with nothing that speaks against sending it.
class SyncDecisionTest : public ::testing::Test {
protected:
    SyncDecisionTest() {
        options.stopDistance = 70;
        options.stopDuration = 140;
        options.sync = Sync::ALL;
        input.source = Source::BACKGROUND_LOCATION;
        input.distance = 100;
        input.lastSentAt = noon - 60s;
    }

    [[nodiscard]] SyncDecision decide() const { return decideSync(options, input, noon); }
    [[nodiscard]] Rule rule() const { return decide().rule; }

    /// A user who was stopped and still is.
    void stayStopped() {
        input.stopped = true;
        input.wasStopped = true;
        input.distance = 10;
    }

    static constexpr platform::Date noon = quorvane::testing::SimulatedClock::start;

    QuorvaneTrackingOptions options;
    SyncInput input;
};

TEST_F(SyncDecisionTest, AFixThatNoRuleForbidsIsSent) {
    EXPECT_EQ(rule(), Rule::send);
    EXPECT_EQ(decide().force, Force::none);
    EXPECT_EQ(decide().lastSyncInterval, 60);
}

TEST_F(SyncDecisionTest, WhereNothingWasEverSentTheIntervalIsZeroAndTheFixIsForced) {
    input.lastSentAt.reset();
    options.sync = Sync::NONE;

    EXPECT_EQ(rule(), Rule::send);
    EXPECT_EQ(decide().force, Force::neverSent);
    EXPECT_EQ(decide().lastSyncInterval, 0);
}

TEST_F(SyncDecisionTest, AUserWhoJustStoppedIsSentWhateverTheRules) {
    input.justStopped = true;
    options.sync = Sync::NONE;

    EXPECT_EQ(rule(), Rule::send);
    EXPECT_EQ(decide().force, Force::justStopped);
}

TEST_F(SyncDecisionTest, WaitingHandlersSendWhateverTheRules) {
    input.hasHandlers = true;
    options.sync = Sync::NONE;

    EXPECT_EQ(rule(), Rule::send);
    EXPECT_EQ(decide().force, Force::waitingHandlers);
}

TEST_F(SyncDecisionTest, AReplayIsSentWhateverTheRules) {
    input.replayed = true;
    options.sync = Sync::NONE;

    EXPECT_EQ(rule(), Rule::send);
    EXPECT_EQ(decide().force, Force::replay);
}

TEST_F(SyncDecisionTest, AUserWhoStaysStoppedIsNotSentAgain) {
    stayStopped();

    EXPECT_EQ(rule(), Rule::alreadyStopped);
}

TEST_F(SyncDecisionTest, AStopIsSentAgainWhenTheFixWasAskedFor) {
    stayStopped();
    for (const Source source : {Source::FOREGROUND_LOCATION, Source::MANUAL_LOCATION}) {
        input.source = source;
        EXPECT_EQ(rule(), Rule::send);
    }
}

TEST_F(SyncDecisionTest, AUserWhoMovesNowOrMovedBeforeIsNotAlreadyStopped) {
    stayStopped();
    input.stopped = false;
    EXPECT_EQ(rule(), Rule::send);

    stayStopped();
    input.wasStopped = false;
    EXPECT_EQ(rule(), Rule::send);
}

TEST_F(SyncDecisionTest, AStoppedUserFartherThanTheStopDistanceIsNotAlreadyStopped) {
    stayStopped();
    input.distance = 70;
    EXPECT_EQ(rule(), Rule::alreadyStopped);

    input.distance = 70.001;
    EXPECT_EQ(rule(), Rule::send);

    input.distance = platform::maximumDistance;
    EXPECT_EQ(rule(), Rule::send);
}

TEST_F(SyncDecisionTest, AStopIsSentAgainWhileThereIsATimerForTheStoppedAndEverythingIsSent) {
    stayStopped();
    options.desiredStoppedUpdateInterval = 30;
    EXPECT_EQ(rule(), Rule::send);

    options.sync = Sync::STOPS_AND_EXITS;
    EXPECT_EQ(rule(), Rule::alreadyStopped);

    options.sync.reset();
    EXPECT_EQ(rule(), Rule::alreadyStopped);
}

TEST_F(SyncDecisionTest, AFixEarlierThanTheDesiredIntervalIsNotSent) {
    options.desiredSyncInterval = 61;
    EXPECT_EQ(rule(), Rule::desiredSyncInterval);

    options.desiredSyncInterval = 60;
    EXPECT_EQ(rule(), Rule::send);
}

TEST_F(SyncDecisionTest, ABackwardsClockMakesTheIntervalNegativeAndNothingIsSent) {
    input.lastSentAt = noon + 1h;

    EXPECT_EQ(rule(), Rule::desiredSyncInterval);
    EXPECT_EQ(decide().lastSyncInterval, -3600);
}

TEST_F(SyncDecisionTest, TwoFixesWithinASecondAreNotBothSent) {
    input.lastSentAt = noon - 999ms;
    EXPECT_EQ(rule(), Rule::rateLimit);

    input.lastSentAt = noon - 1s;
    EXPECT_EQ(rule(), Rule::send);
}

TEST_F(SyncDecisionTest, TheRateIsNotLimitedForAFixThatWasAskedFor) {
    input.lastSentAt = noon - 500ms;
    for (const Source source : {Source::FOREGROUND_LOCATION, Source::MANUAL_LOCATION}) {
        input.source = source;
        EXPECT_EQ(rule(), Rule::send);
    }
}

TEST_F(SyncDecisionTest, WithoutSyncNothingIsSent) {
    options.sync = Sync::NONE;

    EXPECT_EQ(rule(), Rule::syncMode);
}

TEST_F(SyncDecisionTest, ExitsAreSentOnlyWhereTheServiceAllowsThem) {
    options.sync = Sync::STOPS_AND_EXITS;
    EXPECT_EQ(rule(), Rule::cantExit);

    input.canExit = true;
    EXPECT_EQ(rule(), Rule::send);
}

TEST_F(SyncDecisionTest, AnAbsentSyncPassesTheRulesOfBothOtherModes) {
    options.sync.reset();

    EXPECT_EQ(rule(), Rule::send);
}

TEST_F(SyncDecisionTest, TheRulesAreAskedInTheirOrder) {
    stayStopped();
    options.sync = Sync::NONE;
    options.desiredSyncInterval = 100;
    input.lastSentAt = noon - 500ms;
    EXPECT_EQ(rule(), Rule::alreadyStopped);

    input.wasStopped = false;
    EXPECT_EQ(rule(), Rule::desiredSyncInterval);

    options.desiredSyncInterval = 0;
    EXPECT_EQ(rule(), Rule::rateLimit);

    input.lastSentAt = noon - 5s;
    EXPECT_EQ(rule(), Rule::syncMode);
}

} // namespace
} // namespace quorvane
