#pragma once

#include <cstdlib>
#include <thread>

#include "Platform/Clock.h"
#include "Platform/contract/Rig.h"

namespace quorvane::platform::contract {

class ClockContract : public Contract {
protected:
    [[nodiscard]] Clock& clock() { return platform().clock(); }
};

TEST_P(ClockContract, MonotonicTimeNeverGoesBack) {
    std::chrono::nanoseconds before = clock().monotonic();

    for (int i = 0; i < 1000; ++i) {
        const std::chrono::nanoseconds after = clock().monotonic();
        ASSERT_GE(after, before);
        before = after;
    }
}

TEST_P(ClockContract, MonotonicTimeMovesOnByWhatPasses) {
    const std::chrono::nanoseconds before = clock().monotonic();

    rig->pass(std::chrono::milliseconds(20));

    EXPECT_GE(clock().monotonic() - before, std::chrono::milliseconds(20));
}

TEST_P(ClockContract, WallTimeMovesAtThePaceOfMonotonicTime) {
    const std::chrono::nanoseconds monotonicBefore = clock().monotonic();
    const Date wallBefore = clock().now();
    const std::chrono::nanoseconds monotonicBetween = clock().monotonic();

    rig->pass(std::chrono::milliseconds(50));

    // The two readings of the wall clock lie between those of the monotonic one; a wall clock that is being slewed
    // may differ by half a per mille.
    const std::chrono::nanoseconds atLeast = clock().monotonic() - monotonicBetween;
    const std::chrono::nanoseconds wall = clock().now() - wallBefore;
    const std::chrono::nanoseconds atMost = clock().monotonic() - monotonicBefore;
    EXPECT_GE(wall, atLeast - atLeast / 1000);
    EXPECT_LE(wall, atMost + atMost / 1000);
}

TEST_P(ClockContract, WallTimeIsOfThisCentury) {
    using namespace std::chrono;

    EXPECT_GT(clock().now(), Date(sys_days(2001y / 1 / 1)));
    EXPECT_LT(clock().now(), Date(sys_days(2101y / 1 / 1)));
}

TEST_P(ClockContract, TheOffsetFromUTCIsWithinADayAndInWholeMinutesToday) {
    const std::chrono::seconds offset = clock().offsetFromUTC(clock().now());

    EXPECT_GT(offset, std::chrono::hours(-24));
    EXPECT_LT(offset, std::chrono::hours(24));
    EXPECT_EQ(offset.count() % 60, 0);
}

TEST_P(ClockContract, AnyThreadMayAsk) {
    const std::chrono::nanoseconds before = clock().monotonic();
    std::chrono::nanoseconds elsewhere{};
    Date wall;
    std::chrono::seconds offset{};

    std::thread([&] {
        elsewhere = clock().monotonic();
        wall = clock().now();
        offset = clock().offsetFromUTC(wall);
    }).join();

    EXPECT_GE(elsewhere, before);
    EXPECT_LE(wall, clock().now());
    EXPECT_EQ(offset, clock().offsetFromUTC(wall));
}

} // namespace quorvane::platform::contract
