#pragma once

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
    /// Lets the camera deliver a frame if it runs; what comes on another thread has come when it returns.
    std::function<void()> see;
};

/// On the main queue of the platform in use.
using CameraMaker = CameraRig (*)(testing::SimulatedPlatform& world);

class CameraContract : public ::testing::TestWithParam<CameraMaker> {
protected:
    void start() {
        rig.camera->start([this](const VideoFrame&) { ++frames; }, [this] { ++failures; });
    }

    testing::InstalledPlatform world;
    CameraRig rig = GetParam()(*world);
    int frames = 0;
    int failures = 0;
};

TEST_P(CameraContract, DeliversFramesFromTheStartToTheStop) {
    ASSERT_TRUE(rig.camera->open());
    rig.see();
    EXPECT_EQ(frames, 0);
    EXPECT_FALSE(rig.camera->isRunning());
    start();
    EXPECT_TRUE(rig.camera->isRunning());
    rig.see();
    EXPECT_GT(frames, 0);
    rig.camera->stop();
    EXPECT_FALSE(rig.camera->isRunning());
    const int before = frames;
    rig.see();
    EXPECT_EQ(frames, before);
    EXPECT_EQ(failures, 0);
}

TEST_P(CameraContract, StartsAgainAfterAStop) {
    ASSERT_TRUE(rig.camera->open());
    start();
    rig.camera->stop();
    rig.camera->stop();
    start();
    rig.see();
    EXPECT_GT(frames, 0);
}

TEST_P(CameraContract, AnswersAPhotoOnceAndNeverInsideTheCall) {
    ASSERT_TRUE(rig.camera->open());
    start();
    rig.see();
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
    rig.see();
    world->advance(std::chrono::seconds(1));
    EXPECT_EQ(frames, 0);
    EXPECT_EQ(failures, 0);
}

} // namespace quorvane::platform::contract
