#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/FakeTime.h"
#include "Platform/Timer.h"

namespace quorvane::platform {
namespace {

using namespace std::chrono_literals;

class TimerTest : public ::testing::Test {
protected:
    std::unique_ptr<Timer> timer(std::chrono::nanoseconds interval) {
        return std::make_unique<Timer>(time, time, interval, [this] { calls.push_back(time.monotonic() - started); });
    }

    FakeTime time;
    const std::chrono::nanoseconds started = time.monotonic();
    std::vector<std::chrono::nanoseconds> calls;
};

TEST_F(TimerTest, CallsAtEachInterval) {
    const auto repeating = timer(10s);

    time.advance(35s);

    EXPECT_EQ(calls, (std::vector<std::chrono::nanoseconds>{10s, 20s, 30s}));
}

TEST_F(TimerTest, ALateCallDoesNotDelayTheNext) {
    const auto repeating = timer(10s);
    time.pass(13s);
    time.runDue();

    time.advance(7s);

    EXPECT_EQ(calls, (std::vector<std::chrono::nanoseconds>{13s, 20s}));
}

TEST_F(TimerTest, IntervalsThatPassedOnABusyThreadAreNotMadeUpFor) {
    const auto repeating = timer(10s);
    time.pass(47s);
    time.runDue();
    EXPECT_EQ(calls, std::vector<std::chrono::nanoseconds>{47s});

    time.advance(13s);

    EXPECT_EQ(calls, (std::vector<std::chrono::nanoseconds>{47s, 50s, 60s}));
}

TEST_F(TimerTest, AThreadThatIsBusyForAWholeIntervalMakesOneCallOfTwo) {
    const auto repeating = timer(10s);
    time.pass(20s);
    time.runDue();
    EXPECT_EQ(calls, std::vector<std::chrono::nanoseconds>{20s});

    time.advance(10s);

    EXPECT_EQ(calls, (std::vector<std::chrono::nanoseconds>{20s, 30s}));
}

TEST_F(TimerTest, AnIntervalBelowAMillisecondCountsAsOne) {
    const auto none = timer(0ns);
    const auto negative = timer(-5s);

    time.advance(3ms);

    EXPECT_EQ(calls, (std::vector<std::chrono::nanoseconds>{1ms, 1ms, 2ms, 2ms, 3ms, 3ms}));
}

TEST_F(TimerTest, AnInvalidatedTimerLeavesNothingOnTheQueue) {
    const auto repeating = timer(10s);
    EXPECT_TRUE(repeating->isValid());
    EXPECT_EQ(time.waitingPieces(), 1U);

    repeating->invalidate();

    EXPECT_FALSE(repeating->isValid());
    EXPECT_EQ(time.waitingPieces(), 0U);
    time.advance(1h);
    EXPECT_TRUE(calls.empty());
}

TEST_F(TimerTest, ATimerMayBeInvalidatedOrDestroyedByItsOwnCallback) {
    std::unique_ptr<Timer> first;
    std::unique_ptr<Timer> second;
    int firstCalls = 0;
    int secondCalls = 0;
    first = std::make_unique<Timer>(time, time, 1s, [&] {
        ++firstCalls;
        first->invalidate();
    });
    second = std::make_unique<Timer>(time, time, 1s, [&] {
        second.reset();
        ++secondCalls;
    });

    time.advance(1h);

    EXPECT_EQ(firstCalls, 1);
    EXPECT_EQ(secondCalls, 1);
    EXPECT_EQ(time.waitingPieces(), 0U);
}

} // namespace
} // namespace quorvane::platform
