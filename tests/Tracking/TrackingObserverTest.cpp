#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Outcome = observed::Fix::Outcome;

/// The names of the alternatives, in their order.
std::string nameOf(const observed::Observation& observation) {
    static constexpr std::array<const char*, std::variant_size_v<observed::Observation>> names{
        "fix",      "tracking", "timer", "request",     "service", "geofence", "grant",
        "shutdown", "answer",   "send",  "failed stop", "sync",    "failure"};
    return names[observation.index()];
}

class TrackingObserverTest : public TrackingTest {
protected:
    [[nodiscard]] std::vector<std::string> names() {
        std::vector<std::string> result;
        for (const observed::Observation& observation : observer.all) {
            result.push_back(nameOf(observation));
        }
        observer.all.clear();
        return result;
    }
};

TEST_F(TrackingObserverTest, HearsWhatTrackingDoesInItsOrder) {
    track(*QuorvaneTrackingOptions::CONTINUOUS());
    EXPECT_THAT(names(), ElementsAre("tracking", "timer", "service"));

    advance(30s);
    EXPECT_THAT(names(), ElementsAre("timer", "grant", "request"));

    services().receive(fixAt(0, 30));
    settle();
    EXPECT_THAT(names(), ElementsAre("fix", "send"));

    advance(2s);
    EXPECT_THAT(names(), ElementsAre("send", "sync", "send"));

    manager().stopTracking();
    settle();
    EXPECT_THAT(names(), ElementsAre("tracking", "timer", "shutdown", "shutdown", "grant", "service"));
}

TEST_F(TrackingObserverTest, HearsTheNumbersThatAFixWasDecidedOn) {
    QVSettings::setTrackingOptions(*QuorvaneTrackingOptions::CONTINUOUS());
    handle(fixAt(0));
    handle(fixAt(50, 150), Source::GEOFENCE_ENTER);

    const observed::Fix fix = fixes().back();
    EXPECT_EQ(fix.location, fixAt(50, 150));
    EXPECT_EQ(fix.source, Source::GEOFENCE_ENTER);
    EXPECT_EQ(fix.outcome, Outcome::processed);
    EXPECT_FALSE(fix.stoppedBefore);
    EXPECT_TRUE(fix.stoppedAfter);
    ASSERT_TRUE(fix.stop && fix.sync);
    EXPECT_NEAR(fix.stop->distance, 50, 0.01);
    EXPECT_EQ(fix.stop->duration, 150);
    EXPECT_EQ(fix.sync->lastSyncInterval, 150);
    EXPECT_EQ(fix.sync->force, SyncDecision::Force::justStopped);
}

TEST_F(TrackingObserverTest, AFixThatIsDroppedHasNoNumbersBeyondTheReason) {
    setStopped(true);
    handle({{0, 14.5}, 10, 5, noon});
    handle(fixAt(0, 0, 1500));

    ASSERT_EQ(fixes().size(), 2U);
    for (const observed::Fix& fix : fixes()) {
        EXPECT_TRUE(fix.stoppedBefore && fix.stoppedAfter);
        EXPECT_FALSE(fix.stop || fix.sync);
    }
    EXPECT_EQ(fixes()[0].outcome, Outcome::invalid);
    EXPECT_EQ(fixes()[1].outcome, Outcome::inaccurate);
}

TEST_F(TrackingObserverTest, OneThatWasTakenOffHearsNothing) {
    TrackingObservation::shared().setObserver(nullptr);

    track(*QuorvaneTrackingOptions::CONTINUOUS());
    handle(fixAt(0));

    EXPECT_THAT(observer.all, IsEmpty());
}

TEST_F(TrackingObserverTest, NothingIsMadeForNobody) {
    TrackingObservation::shared().setObserver(nullptr);
    int made = 0;
    const auto make = [&] {
        ++made;
        return observed::Failure{};
    };

    TrackingObservation::shared().tell(make);
    EXPECT_EQ(made, 0);

    TrackingObservation::shared().setObserver(&observer);
    TrackingObservation::shared().tell(make);
    EXPECT_EQ(made, 1);
}

TEST_F(TrackingObserverTest, AnotherPlatformBeginsWithoutAnObserver) {
    phone.relaunch();

    manager().startTracking(*QuorvaneTrackingOptions::CONTINUOUS());

    EXPECT_THAT(observer.all, IsEmpty());
}

TEST_F(TrackingObserverTest, AServiceIsToldWhenItBeginsAndEndsAndNotInBetween) {
    track(*QuorvaneTrackingOptions::RESPONSIVE());
    manager().updateTracking(std::nullopt);
    settle();
    manager().stopTracking();
    settle();
    manager().stopTracking();
    settle();

    using What = observed::Service::Kind;
    std::vector<std::pair<What, bool>> told;
    for (const observed::Service& service : observer.of<observed::Service>()) {
        told.emplace_back(service.kind, service.isRunning);
    }
    EXPECT_THAT(told, ElementsAre(std::pair(What::coarseUpdates, true), std::pair(What::visits, true),
                                  std::pair(What::significantChanges, true), std::pair(What::visits, false),
                                  std::pair(What::significantChanges, false), std::pair(What::coarseUpdates, false)));
}

} // namespace
} // namespace quorvane
