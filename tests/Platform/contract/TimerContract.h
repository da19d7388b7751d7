#pragma once

#include <memory>
#include <vector>

#include "Platform/Clock.h"
#include "Platform/MainQueue.h"
#include "Platform/Timer.h"
#include "Platform/contract/Rig.h"

namespace quorvane::platform::contract {

class TimerContract : public Contract {
protected:
    std::unique_ptr<Timer> timer(std::chrono::milliseconds interval, std::function<void()> callback) {
        return std::make_unique<Timer>(platform().clock(), platform().mainQueue(), interval, std::move(callback));
    }
};

TEST_P(TimerContract, TheNthCallComesNoEarlierThanNIntervalsAfterConstruction) {
    const std::chrono::nanoseconds started = platform().clock().monotonic();
    std::vector<std::chrono::nanoseconds> calls;
    const auto repeating =
        timer(std::chrono::milliseconds(5), [&] { calls.push_back(platform().clock().monotonic() - started); });

    EXPECT_TRUE(rig->runUntil([&] { return calls.size() >= 3; }));

    ASSERT_GE(calls.size(), 3U);
    for (std::size_t n = 0; n < calls.size(); ++n) {
        EXPECT_GE(calls[n], std::chrono::milliseconds(5) * (n + 1));
    }
    EXPECT_TRUE(repeating->isValid());
}

TEST_P(TimerContract, NothingIsCalledInsideTheConstructor) {
    int calls = 0;

    const auto repeating = timer(std::chrono::milliseconds(0), [&] { ++calls; });

    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(rig->runUntil([&] { return calls > 1; }));
}

TEST_P(TimerContract, AnInvalidatedTimerCallsNoMore) {
    int calls = 0;
    const auto repeating = timer(std::chrono::milliseconds(1), [&] { ++calls; });
    EXPECT_TRUE(rig->runUntil([&] { return calls > 0; }));

    repeating->invalidate();
    const int callsThen = calls;
    rig->pass(std::chrono::milliseconds(10));

    EXPECT_EQ(calls, callsThen);
    EXPECT_FALSE(repeating->isValid());
    repeating->invalidate();
}

TEST_P(TimerContract, TheCallbackMayInvalidateTheTimer) {
    int calls = 0;
    std::unique_ptr<Timer> repeating;
    repeating = timer(std::chrono::milliseconds(1), [&] {
        ++calls;
        repeating->invalidate();
    });

    rig->pass(std::chrono::milliseconds(10));

    EXPECT_EQ(calls, 1);
}

TEST_P(TimerContract, TheCallbackMayDestroyTheTimer) {
    int calls = 0;
    std::unique_ptr<Timer> repeating;
    repeating = timer(std::chrono::milliseconds(1), [&] {
        repeating.reset();
        ++calls;
    });

    rig->pass(std::chrono::milliseconds(10));

    EXPECT_EQ(calls, 1);
}

TEST_P(TimerContract, ADestroyedTimerCallsNoMore) {
    int calls = 0;
    auto repeating = timer(std::chrono::milliseconds(1), [&] { ++calls; });

    repeating.reset();
    rig->pass(std::chrono::milliseconds(10));

    EXPECT_EQ(calls, 0);
}

} // namespace quorvane::platform::contract
