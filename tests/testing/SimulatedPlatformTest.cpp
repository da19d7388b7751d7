#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Timer.h"
#include "testing/SimulatedPlatform.h"

namespace quorvane::testing {
namespace {

using namespace std::chrono_literals;
using platform::Date;

class SimulatedPlatformTest : public ::testing::Test {
protected:
    std::function<void()> note(const std::string& name) {
        return [this, name] { ran.push_back(name + '@' + std::to_string(simulated->clock().monotonic() / 1s)); };
    }

    /// Posts itself again each time it runs.
    void postForEver() {
        ++endless;
        simulated->mainQueue().post([this] { postForEver(); });
    }

    std::shared_ptr<SimulatedPlatform> simulated = SimulatedPlatform::make();
    std::vector<std::string> ran;
    int endless = 0;
};

TEST_F(SimulatedPlatformTest, TimeStartsAtNoonOfTheFirstOfMarch2026) {
    using namespace std::chrono;

    EXPECT_EQ(simulated->clock().now(), Date(sys_days(2026y / March / 1) + 12h));
    EXPECT_EQ(simulated->clock().monotonic(), 0s);
    EXPECT_EQ(simulated->clock().offsetFromUTC(simulated->clock().now()), 0s);
}

TEST_F(SimulatedPlatformTest, TimeStandsStillWhileWorkRuns) {
    simulated->mainQueue().post(note("posted"));
    simulated->mainQueue().postAfter(1s, note("late"));

    EXPECT_TRUE(simulated->runUntilIdle());

    EXPECT_EQ(ran, std::vector<std::string>{"posted@0"});
    EXPECT_EQ(simulated->clock().monotonic(), 0s);
}

TEST_F(SimulatedPlatformTest, AdvancingRunsEachPieceAtItsDueTime) {
    simulated->mainQueue().postAfter(3s, note("third"));
    simulated->mainQueue().postAfter(1s, note("first"));
    simulated->mainQueue().postAfter(2s, note("second"));
    simulated->mainQueue().postAfter(5s, note("too late"));

    EXPECT_TRUE(simulated->advance(4s));

    EXPECT_EQ(ran, (std::vector<std::string>{"first@1", "second@2", "third@3"}));
    EXPECT_EQ(simulated->clock().monotonic(), 4s);
    EXPECT_EQ(simulated->clock().now(), SimulatedClock::start + 4s);
}

TEST_F(SimulatedPlatformTest, WorkDueExactlyAtTheEndRuns) {
    simulated->mainQueue().postAfter(4s, note("end"));

    simulated->advance(4s);

    EXPECT_EQ(ran, std::vector<std::string>{"end@4"});
}

TEST_F(SimulatedPlatformTest, PostedWorkRunsBeforeDelayedWorkOfTheSameMoment) {
    simulated->mainQueue().postAfter(1s, [this] {
        note("delayed")();
        simulated->mainQueue().post(note("posted"));
    });
    simulated->mainQueue().postAfter(1s, note("delayed too"));

    simulated->advance(1s);

    EXPECT_EQ(ran, (std::vector<std::string>{"delayed@1", "posted@1", "delayed too@1"}));
}

TEST_F(SimulatedPlatformTest, WorkThatDelayedWorkSchedulesRunsInTheSameAdvance) {
    int ticks = 0;
    const platform::Timer timer(simulated->clock(), simulated->mainQueue(), 20s, [&] { ++ticks; });

    simulated->advance(24h);

    EXPECT_EQ(ticks, 24 * 60 * 3);
}

TEST_F(SimulatedPlatformTest, AdvancingByNothingRunsWhatIsDueNow) {
    simulated->mainQueue().postAfter(0s, note("now"));

    simulated->advance(0s);

    EXPECT_EQ(ran, std::vector<std::string>{"now@0"});
}

TEST_F(SimulatedPlatformTest, RunningUntilIdleEndsAfterTheStepsGiven) {
    postForEver();

    EXPECT_FALSE(simulated->runUntilIdle(50));

    EXPECT_EQ(endless, 51);
}

TEST_F(SimulatedPlatformTest, WorkWithoutAnEndDoesNotStopTimeNorDelayedWork) {
    simulated->mainQueue().postAfter(1s, note("delayed"));
    postForEver();

    EXPECT_FALSE(simulated->advance(2s));

    EXPECT_EQ(ran, std::vector<std::string>{"delayed@1"});
    EXPECT_EQ(simulated->clock().monotonic(), 2s);
}

TEST_F(SimulatedPlatformTest, DelayedWorkWithoutDelayAndWithoutAnEndDoesNotStopTime) {
    std::function<void()> again = [&] {
        ++endless;
        simulated->mainQueue().postAfter(0s, again);
    };
    again();

    EXPECT_FALSE(simulated->advance(2s));

    EXPECT_EQ(simulated->clock().monotonic(), 2s);
}

TEST_F(SimulatedPlatformTest, SettingTheWallClockMovesNoDueTime) {
    simulated->mainQueue().postAfter(10s, note("ten"));

    simulated->setWallTime(SimulatedClock::start - 24h);
    simulated->advance(10s);

    EXPECT_EQ(ran, std::vector<std::string>{"ten@10"});
    EXPECT_EQ(simulated->clock().now(), SimulatedClock::start - 24h + 10s);
}

TEST_F(SimulatedPlatformTest, RunningUntilAConditionWaitsForAnotherThreadAndNotForTime) {
    bool arrived = false;
    std::thread other([&] { simulated->mainQueue().post([&] { arrived = true; }); });

    EXPECT_TRUE(simulated->runUntil([&] { return arrived; }));

    other.join();
    EXPECT_EQ(simulated->clock().monotonic(), 0s);
}

TEST_F(SimulatedPlatformTest, RunningUntilAConditionThatNeverHoldsGivesUp) {
    EXPECT_FALSE(simulated->runUntil([] { return false; }, 1ms));
}

TEST_F(SimulatedPlatformTest, TheNextLaunchKeepsPreferencesFilesAndWallTime) {
    simulated->preferences().setString("k", "stays");
    static_cast<void>(simulated->files().createDirectory("/simulated/caches"));
    simulated->advance(1h);
    simulated->clock().setOffsetFromUTC(3600s);

    const auto next = SimulatedPlatform::make(simulated->nextLaunch());

    EXPECT_EQ(next->preferences().string("k"), "stays");
    EXPECT_TRUE(next->files().exists("/simulated/caches"));
    EXPECT_EQ(next->clock().now(), SimulatedClock::start + 1h);
    EXPECT_EQ(next->clock().offsetFromUTC(next->clock().now()), 3600s);
    EXPECT_NE(next->random().uuid(), SimulatedPlatform::make()->random().uuid());
}

TEST_F(SimulatedPlatformTest, TwoPlatformsOfOneSeedDrawTheSameBytes) {
    SimulatedOptions other;
    other.seed = 2;

    EXPECT_EQ(simulated->random().bytes(40), SimulatedPlatform::make()->random().bytes(40));
    EXPECT_NE(simulated->random().bytes(40), SimulatedPlatform::make(other)->random().bytes(40));
}

using SimulatedPlatformDeathTest = SimulatedPlatformTest;

TEST_F(SimulatedPlatformDeathTest, WorkThatAdvancesTimeStopsTheProcess) {
    simulated->mainQueue().post([this] { simulated->advance(1s); });

    EXPECT_DEATH(simulated->runUntilIdle(), "must not move virtual time");
}

TEST_F(SimulatedPlatformDeathTest, AdvancingBackwardsStopsTheProcess) {
    EXPECT_DEATH(simulated->advance(-1s), "not negative");
}

} // namespace
} // namespace quorvane::testing
