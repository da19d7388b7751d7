#include <atomic>
#include <ctime>

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "Platform/Native/NativePlatform.h"
#include "support/ScratchDirectory.h"

namespace {

/// For how long the device has slept, in seconds, as the system's clocks tell it.
std::atomic<std::time_t> slept{0};

} // namespace

/// Stands in the place of the system's for every library of this program.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the names there are reserved ones.
extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept {
    const long result = syscall(SYS_clock_gettime, clock, time);
    if (clock == CLOCK_BOOTTIME || clock == CLOCK_REALTIME) {
        time->tv_sec += slept;
    }
    return static_cast<int>(result);
}

namespace quorvane::platform {
namespace {

using namespace std::chrono_literals;

TEST(SleepTest, MonotonicTimeGoesOnWhileTheDeviceSleepsAndDelaysDoNot) {
    const testing::ScratchDirectory home;
    const auto platform = NativePlatform::make({.home = home.path()});
    const Date wallBefore = platform->clock().now();
    const std::chrono::nanoseconds before = platform->clock().monotonic();
    bool hasRun = false;
    platform->mainQueue().postAfter(1h, [&hasRun] { hasRun = true; });

    slept = 7200;

    EXPECT_GE(platform->clock().monotonic() - before, 2h);
    EXPECT_GE(platform->clock().now() - wallBefore, 2h);
    platform->mainQueue().poll();
    EXPECT_FALSE(hasRun);
    slept = 0;
}

} // namespace
} // namespace quorvane::platform
