#include "Device/QVUtils.h"
#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using Rule = SyncDecision::Rule;

/// A delegate that does something in the middle of a decision.
class ActingDelegate : public quorvane::testing::RecordingDelegate {
public:
    void onClientLocationUpdated(const platform::Location& location, bool isStopped, QVLocationSource source) override {
        RecordingDelegate::onClientLocationUpdated(location, isStopped, source);
        if (const auto act = std::exchange(onClientLocation, nullptr)) {
            act();
        }
    }

    /// Once.
    std::function<void()> onClientLocation;
};

/// Delegate and callers that call the location manager while it decides on a fix. Stop detection of 70 m and 140 s,
/// and everything is sent.
class ReentrancyTest : public TrackingTest {
protected:
    ReentrancyTest() {
        options.stopDistance = 70;
        options.stopDuration = 140;
        options.sync = Sync::ALL;
        QVSettings::setTrackingOptions(options);
        Quorvane::setDelegate(acting);
        setSent(60s);
    }

    [[nodiscard]] std::vector<Source> sources() const {
        std::vector<Source> result;
        for (const observed::Fix& fix : fixes()) {
            result.push_back(fix.source);
        }
        return result;
    }

    QuorvaneTrackingOptions options;
    const std::shared_ptr<ActingDelegate> acting = std::make_shared<ActingDelegate>();
};

TEST_F(ReentrancyTest, ADelegateThatAsksForALocationIsAnsweredByTheFixThatItIsToldOf) {
    const LocationCalls calls;
    acting->onClientLocation = [&] { manager().getLocation(Accuracy::LOW, calls.record()); };

    handle(fixAt(0));

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<0>(), QVStatus::SUCCESS);
    EXPECT_EQ(calls.first<1>(), fixAt(0));
    EXPECT_EQ(fixes().at(0).sync->force, SyncDecision::Force::none);
    advance(1h);
    EXPECT_EQ(calls.count(), 1U);
}

TEST_F(ReentrancyTest, TheStateIsStoredBeforeTheDelegateIsTold) {
    handle(fixAt(0));
    bool stoppedThen = false;
    acting->onClientLocation = [&] { stoppedThen = stopped(); };

    handle(fixAt(0, 150));

    EXPECT_TRUE(stoppedThen);
}

TEST_F(ReentrancyTest, AFixThatACallerHandsInIsDecidedOnFirstAndItsSendCountsForTheOuterOne) {
    manager().getLocation(Accuracy::LOW, [&](QVStatus, const auto&, bool) {
        manager().handleLocation(fixAt(5), Source::MANUAL_LOCATION);
    });

    handle(fixAt(0));

    EXPECT_THAT(sources(), ElementsAre(Source::MANUAL_LOCATION, Source::BACKGROUND_LOCATION));
    EXPECT_EQ(fixes()[0].sync->rule, Rule::send);
    EXPECT_EQ(fixes()[1].sync->rule, Rule::rateLimit);
    EXPECT_EQ(fixes()[1].sync->lastSyncInterval, 0);
    EXPECT_EQ(syncs(), 1U);
}

TEST_F(ReentrancyTest, CallersWhoWaitWhenTheDelegateHandsInAFixGetThatOne) {
    const LocationCalls calls;
    manager().getLocation(Accuracy::LOW, calls.record());
    acting->onClientLocation = [&] { manager().handleLocation(fixAt(5), Source::MANUAL_LOCATION); };

    handle(fixAt(0));

    ASSERT_EQ(calls.count(), 1U);
    EXPECT_EQ(calls.first<1>(), fixAt(5));
}

TEST_F(ReentrancyTest, ADelegateThatEndsTrackingEndsTheTimerWithThatFix) {
    options.desiredMovingUpdateInterval = 30;
    track(options);
    acting->onClientLocation = [] { manager().stopTracking(); };

    handle(fixAt(0));

    EXPECT_EQ(flag(), false);
    EXPECT_FALSE(lowPower().updates);
    advance(1h);
    EXPECT_EQ(precise().requests, 0);
}

TEST_F(ReentrancyTest, AnOptionThatTheDelegateChangesCountsFromTheNextFixOn) {
    acting->onClientLocation = [&] {
        options.sync = Sync::NONE;
        QVSettings::setTrackingOptions(options);
    };

    handle(fixAt(0));
    handle(fixAt(0, 60));

    EXPECT_EQ(fixes()[0].sync->rule, Rule::send);
    EXPECT_EQ(fixes()[1].sync->rule, Rule::syncMode);
}

TEST_F(ReentrancyTest, AFailedStopIsTakenAfterTheCallersWereAnswered) {
    options.replay = QuorvaneTrackingOptions::Replay::STOPS;
    QVSettings::setTrackingOptions(options);
    preferences().setDictionary("quorvane_last_failed_stopped_location", QVUtils::fromLocation(fixAt(900)));
    std::optional<platform::Location> failedThen;
    manager().getLocation(Accuracy::LOW,
                          [&](QVStatus, const auto&, bool) { failedThen = QVState::getLastFailedStoppedLocation(); });

    handle(fixAt(0));

    EXPECT_EQ(failedThen, fixAt(900));
    EXPECT_EQ(QVState::getLastFailedStoppedLocation(), std::nullopt);
}

TEST_F(ReentrancyTest, TrackingIsBroughtUpToDateAfterTheWholeDecision) {
    SignedInFlag::shared().set(true);
    options.desiredMovingUpdateInterval = 30;
    QVSettings::setTrackingOptions(options);
    bool updatesThen = true;
    manager().getLocation(Accuracy::LOW, [&](QVStatus, const auto&, bool) { updatesThen = lowPower().updates; });

    handle(fixAt(0));

    EXPECT_FALSE(updatesThen);
    EXPECT_TRUE(lowPower().updates);
}

} // namespace
} // namespace quorvane
