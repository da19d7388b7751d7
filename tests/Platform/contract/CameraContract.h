#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include <gtest/gtest.h>

#include "Platform/Camera.h"
#include "testing/InstalledPlatform.h"

namespace quorvane::platform::contract {

/// One implementation's camera, and what makes it see something.
struct CameraRig {
    std::shared_ptr<Camera> camera;
    /// Lets the camera deliver a frame if it runs. Where frames come by themselves it lets them come for a moment.
    std::function<void()> see;
};

/// On the main queue of the platform in use.
using CameraMaker = CameraRig (*)(testing::SimulatedPlatform& world);

class CameraContract : public ::testing::TestWithParam<CameraMaker> {
protected:
    void start() {
        rig.camera->start([this](const VideoFrame&) { ++frames; }, [this] { ++failures; });
    }

    /// Until a frame came, if the camera runs: at most twenty seconds of real time.
    void see() {
        const int before = frames;
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        do {
            rig.see();
        } while (rig.camera && rig.camera->isRunning() && frames == before && std::chrono::steady_clock::now() < end);
    }

    testing::InstalledPlatform world;
    CameraRig rig = GetParam()(*world);
    std::atomic<int> frames = 0;
    int failures = 0;
};

TEST_P(CameraContract, DeliversFramesFromTheStartToTheStop) {
    ASSERT_TRUE(rig.camera->open());
    see();
    EXPECT_EQ(frames, 0);
    EXPECT_FALSE(rig.camera->isRunning());
    start();
    EXPECT_TRUE(rig.camera->isRunning());
    see();
    EXPECT_GT(frames, 0);
    rig.camera->stop();
    EXPECT_FALSE(rig.camera->isRunning());
    const int before = frames;
    see();
    EXPECT_EQ(frames, before);
    EXPECT_EQ(failures, 0);
}

TEST_P(CameraContract, StartsAgainAfterAStop) {
    ASSERT_TRUE(rig.camera->open());
    start();
    rig.camera->stop();
    rig.camera->stop();
    start();
    see();
    EXPECT_GT(frames, 0);
}

TEST_P(CameraContract, AnswersAPhotoOnceAndNeverInsideTheCall) {
    ASSERT_TRUE(rig.camera->open());
    start();
    see();
    int answers = 0;
    rig.camera->takePhoto(false, [&](const std::shared_ptr<const Image>&) { ++answers; });
    EXPECT_EQ(answers, 0);
    EXPECT_TRUE(world->runUntil([&] { return answers > 0; }));
    world->advance(std::chrono::seconds(20));
    EXPECT_EQ(answers, 1);
}

TEST_P(CameraContract, StopsWhenItGoes) {
    ASSERT_TRUE(rig.camera->open());
    start();
    rig.camera.reset();
    const int before = frames;
    see();
    world->advance(std::chrono::seconds(1));
    EXPECT_EQ(frames, before);
    EXPECT_EQ(failures, 0);
}

} // namespace quorvane::platform::contract
