#pragma once

#include <memory>

#include "Internal/Views/Devices/FileCameras.h"
#include "Internal/Views/Devices/StillFrames.h"
#include "Platform/Camera.h"

namespace quorvane::capture {

/// A picture that stands for a camera.
class PictureCamera final : public platform::Camera {
public:
    /// @p thePicture comes from `platform::QtImages`.
    PictureCamera(std::shared_ptr<const platform::Image> thePicture, const FileCameras::Options& theOptions);
    ~PictureCamera() override { frames.stop(); }

    [[nodiscard]] bool open() override { return true; }
    void start(FrameHandler frame, FailureHandler failed) override;
    void stop() override;
    [[nodiscard]] bool isRunning() const override { return running; }
    [[nodiscard]] bool hasFlash() const override { return false; }
    void takePhoto(bool flash, PhotoHandler completion) override;

private:
    platform::MainQueue& mainQueue;
    const std::shared_ptr<const platform::Image> picture;
    const FileCameras::Options options;
    StillFrames frames;
    bool running = false;
};

} // namespace quorvane::capture
