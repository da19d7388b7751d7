#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Accelerometer.h"
#include "Platform/Clock.h"
#include "Platform/MainQueue.h"
#include "Platform/Platform.h"

namespace quorvane::platform::contract {

/// A device with an accelerometer, in the suite's hands.
class AccelerometerRig {
public:
    AccelerometerRig() = default;
    AccelerometerRig(const AccelerometerRig&) = delete;
    AccelerometerRig& operator=(const AccelerometerRig&) = delete;
    virtual ~AccelerometerRig() = default;

    [[nodiscard]] virtual Platform& platform() = 0;
    [[nodiscard]] virtual Accelerometer& accelerometer() = 0;
    /// The device has none from now on.
    virtual void remove() = 0;
    /// What is measured from now on; none: nothing can be read.
    virtual void measure(std::optional<Acceleration> acceleration) = 0;
    /// Runs the main queue until @p done holds, time passing as it must; whether it holds then.
    virtual bool runUntil(const std::function<bool()>& done) = 0;
    /// Lets @p time pass, running what falls due.
    virtual void pass(std::chrono::nanoseconds time) = 0;
};

using AccelerometerRigMaker = std::unique_ptr<AccelerometerRig> (*)();

class AccelerometerContract : public ::testing::TestWithParam<AccelerometerRigMaker> {
protected:
    static constexpr std::chrono::milliseconds interval{5};

    const std::unique_ptr<AccelerometerRig> rig = GetParam()();
    std::unique_ptr<MotionManager> manager = rig->accelerometer().makeManager();
    std::vector<std::optional<Acceleration>> samples;

    void start() {
        manager->startAccelerometerUpdates(interval, [this](const auto& sample) { samples.push_back(sample); });
    }
};

TEST_P(AccelerometerContract, ADeviceUprightAndAtRestIsPulledAlongItsLowerEdge) {
    rig->measure(Acceleration{0, -1, 0});
    ASSERT_TRUE(manager->isAccelerometerAvailable());
    start();

    ASSERT_TRUE(rig->runUntil([&] { return !samples.empty(); }));

    ASSERT_TRUE(samples[0].has_value());
    EXPECT_NEAR(samples[0]->x, 0, 0.001);
    EXPECT_NEAR(samples[0]->y, -1, 0.001);
    EXPECT_NEAR(samples[0]->z, 0, 0.001);
}

TEST_P(AccelerometerContract, ASampleSaysWhatIsMeasuredThen) {
    rig->measure(Acceleration{0.5, -0.25, 0.75});
    start();
    ASSERT_TRUE(rig->runUntil([&] { return !samples.empty(); }));

    rig->measure(Acceleration{-0.5, 0.25, -2});
    ASSERT_TRUE(rig->runUntil([&] { return samples.back() && samples.back()->x < 0; }));

    EXPECT_NEAR(samples[0]->x, 0.5, 0.001);
    EXPECT_NEAR(samples[0]->y, -0.25, 0.001);
    EXPECT_NEAR(samples[0]->z, 0.75, 0.001);
    EXPECT_NEAR(samples.back()->x, -0.5, 0.001);
    EXPECT_NEAR(samples.back()->y, 0.25, 0.001);
    EXPECT_NEAR(samples.back()->z, -2, 0.001);
}

TEST_P(AccelerometerContract, TheNthSampleComesNoEarlierThanNIntervalsAfterTheStart) {
    const std::chrono::nanoseconds started = rig->platform().clock().monotonic();
    std::vector<std::chrono::nanoseconds> times;
    bool isOnMainThread = true;
    manager->startAccelerometerUpdates(interval, [&](const auto&) {
        times.push_back(rig->platform().clock().monotonic() - started);
        isOnMainThread = isOnMainThread && rig->platform().mainQueue().isMainThread();
    });
    EXPECT_TRUE(times.empty());

    ASSERT_TRUE(rig->runUntil([&] { return times.size() >= 3; }));

    for (std::size_t n = 0; n < times.size(); ++n) {
        EXPECT_GE(times[n], interval * (n + 1));
    }
    EXPECT_TRUE(isOnMainThread);
}

TEST_P(AccelerometerContract, ASampleThatCannotBeReadIsToldAsNone) {
    rig->measure(std::nullopt);
    start();
    ASSERT_TRUE(rig->runUntil([&] { return !samples.empty(); }));
    EXPECT_FALSE(samples[0].has_value());

    rig->measure(Acceleration{0, -1, 0});

    EXPECT_TRUE(rig->runUntil([&] { return samples.back().has_value(); }));
}

TEST_P(AccelerometerContract, AManagerThatIsGoneCallsNoMore) {
    start();
    ASSERT_TRUE(rig->runUntil([&] { return !samples.empty(); }));

    manager.reset();
    const std::size_t before = samples.size();
    rig->pass(4 * interval);

    EXPECT_EQ(samples.size(), before);
}

TEST_P(AccelerometerContract, TheHandlerMayDestroyTheManager) {
    int calls = 0;
    manager->startAccelerometerUpdates(interval, [&](const auto&) {
        ++calls;
        manager.reset();
    });

    ASSERT_TRUE(rig->runUntil([&] { return calls > 0; }));
    rig->pass(4 * interval);

    EXPECT_EQ(calls, 1);
}

TEST_P(AccelerometerContract, AnotherHandlerTakesThePlaceOfTheOneBefore) {
    start();
    int calls = 0;
    manager->startAccelerometerUpdates(interval, [&](const auto&) { ++calls; });

    ASSERT_TRUE(rig->runUntil([&] { return calls >= 2; }));

    EXPECT_TRUE(samples.empty());
}

TEST_P(AccelerometerContract, EachManagerHasSamplesOfItsOwn) {
    const auto second = rig->accelerometer().makeManager();
    int calls = 0;
    start();
    second->startAccelerometerUpdates(interval, [&](const auto&) { ++calls; });

    EXPECT_TRUE(rig->runUntil([&] { return calls >= 2 && samples.size() >= 2; }));
}

TEST_P(AccelerometerContract, WithoutAnAccelerometerNoneIsAvailableAndStartingDoesNothing) {
    rig->remove();
    manager = rig->accelerometer().makeManager();
    EXPECT_FALSE(manager->isAccelerometerAvailable());

    start();
    rig->pass(4 * interval);

    EXPECT_TRUE(samples.empty());
}

} // namespace quorvane::platform::contract
