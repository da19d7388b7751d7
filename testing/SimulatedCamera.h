#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "Platform/Camera.h"
#include "Platform/Lifetime.h"
#include "Platform/MainQueue.h"

namespace quorvane::testing {

/// A camera that sees what the test shows it.
class SimulatedCamera : public platform::Camera {
public:
    /// @p theMainQueue outlives the camera.
    explicit SimulatedCamera(platform::MainQueue& theMainQueue) : mainQueue(theMainQueue) {}

    /// Used by another program: it cannot be opened.
    bool isInUse = false;
    bool flash = false;
    /// What photos show; none: no photo can be taken.
    std::shared_ptr<const platform::Image> photo;
    /// While set, photos are awaited for ever.
    bool isSilent = false;

    /// Delivers a frame where the camera runs. Any thread; returns once the frame was taken.
    void show(const platform::VideoFrame& frame);
    /// Takes the camera away: it breaks where it runs, and cannot be opened any more.
    void unplug();

    [[nodiscard]] int openCount() const { return opened; }
    /// Whether each photo was asked for with the flash.
    [[nodiscard]] const std::vector<bool>& photosWithFlash() const { return flashes; }

    [[nodiscard]] bool open() override;
    void start(FrameHandler frame, FailureHandler failed) override;
    void stop() override;
    [[nodiscard]] bool isRunning() const override { return running; }
    [[nodiscard]] bool hasFlash() const override { return flash; }
    void takePhoto(bool withFlash, PhotoHandler completion) override;

private:
    platform::MainQueue& mainQueue;
    std::recursive_mutex mutex;
    FrameHandler frameHandler;
    FailureHandler failureHandler;
    bool running = false;
    bool unplugged = false;
    int opened = 0;
    std::vector<bool> flashes;
    platform::Lifetime lifetime;
};

/// A device with one camera, or none.
class SimulatedCameras : public platform::Cameras {
public:
    explicit SimulatedCameras(platform::MainQueue& mainQueue) : camera(std::make_shared<SimulatedCamera>(mainQueue)) {}

    const std::shared_ptr<SimulatedCamera> camera;
    bool hasCamera = true;

    [[nodiscard]] std::shared_ptr<platform::Camera> defaultCamera() override { return hasCamera ? camera : nullptr; }
};

/// A frame all in one brightness.
[[nodiscard]] platform::VideoFrame plainFrame(int width, int height, std::uint8_t brightness);

} // namespace quorvane::testing
