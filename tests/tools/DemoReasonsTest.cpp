#include <gtest/gtest.h>

#include "tools/demo/TrackingReasons.h"
#include "tools/demo/TrackingTable.h"

namespace quorvane::tool {
namespace {

using namespace std::chrono_literals;
using Force = SyncDecision::Force;
using Options = QuorvaneTrackingOptions;
using Rule = SyncDecision::Rule;
using Strings = std::vector<std::string>;
using Type = QVEventType;

class DemoReasonsTest : public ::testing::Test {
protected:
    DemoReasonsTest() {
        more.name = "more";
        more.options = std::make_shared<Options>();
        more.options->desiredMovingUpdateInterval = 30;
        more.options->desiredStoppedUpdateInterval = 30;
        more.summary.usage.receiverTime = 25s;
        for (int i = 0; i < 5; ++i) {
            decide(more, Rule::send);
            more.ride.observed({}, observed::Sync{});
        }
        less.name = "less";
        less.options = std::make_shared<Options>();
        less.options->useVisits = true;
    }

    static void decide(TrackedPreset& preset, Rule rule, Force force = Force::none) {
        observed::Fix fix;
        fix.sync = SyncDecision{rule, force};
        preset.ride.observed({}, fix);
    }

    TrackedPreset more;
    TrackedPreset less;
};

TEST_F(DemoReasonsTest, WhatDidAsMuchHasNothingToExplain) {
    EXPECT_EQ(reasonsFor(more, more), Strings());
}

TEST_F(DemoReasonsTest, OptionsWithoutATimerSleepUntilTheyAreWoken) {
    less.summary.usage.wakeUps = 1;
    decide(less, Rule::send, Force::neverSent);

    EXPECT_EQ(
        reasonsFor(less, more),
        (Strings{"It has no timer, so the phone suspends the application: only visits can wake it, which happened "
                 "1 time.",
                 "So it decided on 1 fix and not on 5, with the receiver on for 0 s and not for 25 s.",
                 "It sent the first location of all.",
                 "Events are found when a location is sent: it found 0 and not 0."}));
}

TEST_F(DemoReasonsTest, ATimerAsksLessOften) {
    less.options->desiredMovingUpdateInterval = 60;
    less.options->desiredStoppedUpdateInterval = 60;

    const Strings reasons = reasonsFor(less, more);

    EXPECT_EQ(reasons[0], "Its timer asks every 60 s and not every 30 s.");
    EXPECT_EQ(reasons[1], "So it decided on 0 fixes and not on 5, with the receiver on for 0 s and not for 25 s.");
    EXPECT_EQ(reasons[2], "It sent nothing.");
}

TEST_F(DemoReasonsTest, ATimerThatStandsAtAStopLetsTheApplicationBeSuspended) {
    less.options->desiredMovingUpdateInterval = 60;
    less.summary.usage.wakeUps = 3;

    const Strings reasons = reasonsFor(less, more);

    EXPECT_EQ(reasons[0], "Its timer asks every 60 s and not every 30 s.");
    EXPECT_EQ(reasons[1],
              "At a stop it does not ask at all: the phone suspends the application, which was woken 3 times.");
}

TEST_F(DemoReasonsTest, EachRuleThatAppliedIsSaidInWords) {
    less.options->desiredSyncInterval = 140;
    decide(less, Rule::alreadyStopped);
    decide(less, Rule::desiredSyncInterval);
    decide(less, Rule::desiredSyncInterval);
    decide(less, Rule::rateLimit);
    decide(less, Rule::syncMode);
    decide(less, Rule::cantExit);

    const Strings reasons = reasonsFor(less, more);

    ASSERT_EQ(reasons.size(), 9U);
    EXPECT_EQ(reasons[3],
              "1 location was not sent: the user had stopped before, and a stop is sent once (alreadyStopped).");
    EXPECT_EQ(reasons[4],
              "2 locations were not sent: fewer than 140 s had passed since the last one (desiredSyncInterval).");
    EXPECT_EQ(reasons[5], "1 location was not sent: less than a second had passed since the last one (rateLimit).");
    EXPECT_EQ(reasons[6], "1 location was not sent: the options send none (syncMode).");
    EXPECT_EQ(reasons[7],
              "1 location was not sent: the user was on the way, and the service never allowed exits (cantExit).");
}

TEST_F(DemoReasonsTest, WhatWasSentIsToldByWhatLetItThrough) {
    decide(less, Rule::send, Force::neverSent);
    decide(less, Rule::send, Force::justStopped);
    decide(less, Rule::send, Force::justStopped);
    decide(less, Rule::send, Force::replay);
    decide(less, Rule::send);

    less.ride.observed({}, observed::Sync{});
    EXPECT_EQ(reasonsFor(less, more)[2],
              "It sent the first location of all, 2 new stops, 1 stop that had failed before and 1 location that no "
              "rule spoke against.");
}

TEST_F(DemoReasonsTest, TheRulesOfThePresetsAreToldInWords) {
    Options continuous;
    continuous.desiredMovingUpdateInterval = continuous.desiredStoppedUpdateInterval = 30;
    continuous.desiredSyncInterval = 20;
    continuous.sync = Options::Sync::ALL;
    EXPECT_EQ(rulesOf(continuous),
              (Strings{"a fix every 30 s, on the way and at a stop", "every location is sent, at most one in 20 s"}));

    Options responsive;
    responsive.desiredMovingUpdateInterval = 150;
    responsive.sync = Options::Sync::STOPS_AND_EXITS;
    responsive.useVisits = responsive.useSignificantLocationChanges = responsive.useStoppedGeofence = true;
    responsive.stoppedGeofenceRadius = 200;
    EXPECT_EQ(rulesOf(responsive),
              (Strings{"fixes: one every 150 s on the way, none at a stop",
                       "woken by visits, significant changes and a fence of 200 m around a stop",
                       "the first location and stops are sent, others where the service allows exits"}));

    Options fenced;
    fenced.useMovingGeofence = true;
    fenced.movingGeofenceRadius = 100;
    EXPECT_EQ(rulesOf(fenced), (Strings{"no timer asks for fixes", "woken by a fence of 100 m on the way",
                                        "nothing is sent but the first location and stops"}));
}

TEST(DemoWordsTest, ATitleIsInCapitals) {
    TrackedPreset preset;
    preset.name = "efficient";

    EXPECT_EQ(titleOf(preset), "EFFICIENT");
}

TEST(DemoWordsTest, WhatIsLeftIsToldBeforeWhatIsEntered) {
    EXPECT_EQ(wordsFor({}), "");
    EXPECT_EQ(wordsFor({{Type::USER_STOPPED_TRAVELING, ""}}), "stopped");
    EXPECT_EQ(
        wordsFor(
            {{Type::USER_STARTED_TRAVELING, ""}, {Type::USER_ENTERED_PLACE, "Inn"}, {Type::USER_EXITED_PLACE, "Mill"}}),
        "went on; left Mill; entered Inn");
}

TEST(DemoWordsTest, APlaceAndItsOwnFenceAreOne) {
    EXPECT_EQ(wordsFor({{Type::USER_ENTERED_PLACE, "Inn"}, {Type::USER_ENTERED_GEOFENCE, "Inn"}}),
              "entered Inn and its fence");
    EXPECT_EQ(wordsFor({{Type::USER_EXITED_PLACE, "Inn"}, {Type::USER_EXITED_GEOFENCE, "Mill"}}),
              "left Inn; left the fence of Mill");
    EXPECT_EQ(wordsFor({{Type::USER_EXITED_GEOFENCE, "Mill"}, {Type::USER_ENTERED_GEOFENCE, "Inn"}}),
              "left the fence of Mill; entered the fence of Inn");
}

} // namespace
} // namespace quorvane::tool
