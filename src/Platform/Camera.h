#pragma once

#include <functional>
#include <memory>

#include "Platform/Image.h"
#include "Platform/VideoFrame.h"

namespace quorvane::platform {

/// One camera of the device, or a picture or video file that stands for one. Main thread only.
class Camera {
public:
    /// Called on any thread, one call at a time, never after `stop` returned.
    using FrameHandler = std::function<void(const VideoFrame&)>;
    /// Called on the main queue, at most once after each `start`.
    using FailureHandler = std::function<void()>;
    /// Called on the main queue, once; null when no photo could be taken.
    using PhotoHandler = std::function<void(std::shared_ptr<const Image>)>;

    Camera() = default;
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;
    /// Stops. A photo that is still awaited is answered with null or not at all.
    virtual ~Camera() = default;

    /// Takes hold of the camera; false when it is missing, in use by another program or not permitted.
    [[nodiscard]] virtual bool open() = 0;

    /// Delivers frames until `stop`. @p failed: the camera was taken away or broke.
    virtual void start(FrameHandler frame, FailureHandler failed) = 0;
    virtual void stop() = 0;
    [[nodiscard]] virtual bool isRunning() const = 0;

    [[nodiscard]] virtual bool hasFlash() const = 0;
    /// Takes one picture, with the flash where there is one and @p flash asks for it.
    virtual void takePhoto(bool flash, PhotoHandler completion) = 0;
};

/// The device's cameras. Main thread only.
class Cameras {
public:
    Cameras() = default;
    Cameras(const Cameras&) = delete;
    Cameras& operator=(const Cameras&) = delete;
    virtual ~Cameras() = default;

    /// The camera that photographs the world; null when the device has none.
    [[nodiscard]] virtual std::shared_ptr<Camera> defaultCamera() = 0;
};

} // namespace quorvane::platform
