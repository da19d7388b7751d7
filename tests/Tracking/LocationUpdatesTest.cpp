#include "Tracking/QVBackgroundTaskManager.h"
#include "Tracking/TrackingTest.h"

namespace quorvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

/// The update timer, the coarse updates beside it, and their delayed end.
class LocationUpdatesTest : public TrackingTest {
protected:
    LocationUpdatesTest() {
        options.desiredMovingUpdateInterval = 30;
        options.desiredStoppedUpdateInterval = 0;
    }

    void update() {
        manager().updateTracking(std::nullopt);
        settle();
    }

    /// The verbose lines of @p work.
    template <class Work>
    [[nodiscard]] std::vector<std::string> linesOf(Work work) {
        setLogLevel(QVLogLevel::DEBUG);
        settle();
        phone->application().clearOutput();
        manager().verbose = true;
        work();
        auto lines = messages();
        std::erase_if(lines, [](const std::string& line) { return line.starts_with("    updating tracking"); });
        return lines;
    }

    QuorvaneTrackingOptions options = *QuorvaneTrackingOptions::CONTINUOUS();
};

TEST_F(LocationUpdatesTest, EveryTickHoldsBackgroundTimeAndAsksForOneLocation) {
    track(options);
    advance(29s);
    EXPECT_EQ(precise().requests, 0);

    advance(1s);
    EXPECT_EQ(precise().requests, 1);
    EXPECT_EQ(phone->application().openBackgroundTaskCount(), 1);
    advance(30s);

    EXPECT_EQ(precise().requests, 2);
    EXPECT_EQ(phone->application().openBackgroundTaskCount(), 2);
    EXPECT_TRUE(lowPower().updates);
}

TEST_F(LocationUpdatesTest, ATickTellsWhatItDoes) {
    track(options);

    const auto lines = linesOf([&] { advance(30s); });

    EXPECT_THAT(lines, ElementsAre("Timer fired", "Started background task | tid = 1", "Requesting location"));
}

TEST_F(LocationUpdatesTest, AnUpdateWithTheSameIntervalLeavesTheTimerAlone) {
    track(options);
    advance(20s);

    EXPECT_THAT(linesOf([&] { update(); }), ElementsAre("Already started timer"));

    advance(10s);
    EXPECT_EQ(precise().requests, 1);
}

TEST_F(LocationUpdatesTest, AnotherIntervalStartsTheTimerAnew) {
    track(options);
    advance(20s);
    options.desiredMovingUpdateInterval = 60;

    const auto lines = linesOf([&] { track(options); });

    EXPECT_THAT(lines, Contains("Starting timer; interval = 60"));
    advance(59s);
    EXPECT_EQ(precise().requests, 0);
    advance(1s);
    EXPECT_EQ(precise().requests, 1);
}

TEST_F(LocationUpdatesTest, AStopEndsTheTicksAtOnceAndTheCoarseUpdatesTenSecondsLater) {
    track(options);
    setStopped(true);

    EXPECT_THAT(linesOf([&] { update(); }), ElementsAre("Stopping timer", "Scheduling shutdown"));

    advance(10s - 1ns);
    EXPECT_TRUE(lowPower().updates);
    EXPECT_THAT(linesOf([&] { advance(1ns); }), ElementsAre("Shutting down", "Ending background tasks | count = 0"));
    EXPECT_FALSE(lowPower().updates);
    advance(1h);
    EXPECT_EQ(precise().requests, 0);
}

TEST_F(LocationUpdatesTest, AtTheEndOfTrackingTheCoarseUpdatesEndWithoutADelay) {
    track(options);

    manager().stopTracking();
    settle();

    EXPECT_FALSE(lowPower().updates);
    EXPECT_EQ(observer.of<observed::Shutdown>().at(0).delay, 0);
}

TEST_F(LocationUpdatesTest, AShutdownEndsAllBackgroundTasks) {
    track(options);
    advance(60s);
    EXPECT_EQ(phone->application().openBackgroundTaskCount(), 2);

    manager().stopTracking();
    settle();

    EXPECT_EQ(phone->application().openBackgroundTaskCount(), 0);
    EXPECT_TRUE(QVBackgroundTaskManager::shared().backgroundTaskIds().empty());
}

TEST_F(LocationUpdatesTest, ATimerThatStartsAgainCancelsTheShutdown) {
    track(options);
    setStopped(true);
    update();
    advance(5s);
    setStopped(false);

    update();
    advance(20s);

    EXPECT_TRUE(lowPower().updates);
    using Change = observed::Shutdown::Change;
    std::vector<Change> changes;
    for (const observed::Shutdown& shutdown : observer.of<observed::Shutdown>()) {
        changes.push_back(shutdown.change);
    }
    EXPECT_THAT(changes, ElementsAre(Change::scheduled, Change::cancelled));
}

TEST_F(LocationUpdatesTest, WithoutATimerThereIsNothingToStop) {
    options.desiredMovingUpdateInterval = 0;

    EXPECT_THAT(linesOf([&] { track(options); }), Not(Contains("Stopping timer")));

    EXPECT_FALSE(lowPower().updates);
    EXPECT_EQ(observer.of<observed::Shutdown>().size(), 0U);
}

TEST_F(LocationUpdatesTest, ATimerThatWasStoppedIsStoppedAgainByEachUpdate) {
    track(options);
    setStopped(true);
    update();

    EXPECT_THAT(linesOf([&] { update(); }), ElementsAre("Stopping timer", "Scheduling shutdown"));

    EXPECT_EQ(observer.of<observed::UpdateTimer>().size(), 2U);
}

TEST_F(LocationUpdatesTest, OfSeveralPendingShutdownsEachOneComes) {
    track(options);
    setStopped(true);
    update();
    advance(5s);
    update();

    EXPECT_THAT(linesOf([&] { advance(5s); }), ElementsAre("Shutting down", "Ending background tasks | count = 0"));
    EXPECT_THAT(linesOf([&] { advance(5s); }), ElementsAre("Shutting down", "Ending background tasks | count = 0"));
    EXPECT_THAT(linesOf([&] { advance(1h); }), ElementsAre());
}

TEST_F(LocationUpdatesTest, ATimerThatStartsAgainCancelsAllPendingShutdowns) {
    track(options);
    setStopped(true);
    update();
    advance(5s);
    update();
    setStopped(false);

    update();
    advance(20s);

    EXPECT_TRUE(lowPower().updates);
    std::vector<observed::Shutdown::Change> changes;
    for (const observed::Shutdown& shutdown : observer.of<observed::Shutdown>()) {
        changes.push_back(shutdown.change);
    }
    using Change = observed::Shutdown::Change;
    EXPECT_THAT(changes, ElementsAre(Change::scheduled, Change::scheduled, Change::cancelled, Change::cancelled));
}

TEST_F(LocationUpdatesTest, AStopAndAStartInOneMomentLeaveTheTimerRunning) {
    track(options);
    manager().stopTracking();
    manager().startTracking(options);
    settle();
    EXPECT_TRUE(lowPower().updates);

    update();
    advance(60s);

    EXPECT_TRUE(lowPower().updates);
    EXPECT_EQ(precise().requests, 2);
}

TEST_F(LocationUpdatesTest, TimersOfAnyIntervalStart) {
    using Limits = std::numeric_limits<std::int64_t>;
    for (const std::int64_t interval : {Limits::max(), std::int64_t{1}, Limits::min()}) {
        options.desiredMovingUpdateInterval = interval;
        track(options);
        EXPECT_EQ(observer.of<observed::UpdateTimer>().back().interval, interval);
        if (interval > 0) {
            advance(3s);
            EXPECT_EQ(precise().requests, interval == 1 ? 3 : 0);
        }
    }
}

TEST_F(LocationUpdatesTest, AShutdownThatIsOverIsNotCancelled) {
    track(options);
    setStopped(true);
    update();
    advance(10s);
    setStopped(false);

    update();

    using Change = observed::Shutdown::Change;
    const auto told = observer.of<observed::Shutdown>();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0].change, Change::scheduled);
    EXPECT_EQ(told[1].change, Change::done);
}

TEST_F(LocationUpdatesTest, WithTooLittleBackgroundTimeALocationIsStillAskedFor) {
    track(options);
    phone->application().setBackgroundTimeRemaining(15);

    advance(30s);

    EXPECT_EQ(phone->application().backgroundTasks().size(), 0U);
    EXPECT_EQ(precise().requests, 1);
}

} // namespace
} // namespace quorvane
