#pragma once

#include <QCamera>
#include <QCameraDevice>
#include <QImageCapture>
#include <QMediaCaptureSession>
#include <QMediaDevices>
#include <QVideoSink>
#include <chrono>
#include <memory>
#include <optional>

#include "Internal/Views/Devices/FrameGate.h"
#include "Platform/Camera.h"
#include "Platform/Lifetime.h"
#include "Platform/MainQueue.h"

namespace quorvane::capture {

/// A camera that the toolkit knows. A camera that is missing or in use is told by asking for its state: the toolkit's
/// signal of an error does not come for one.
class QtCamera final : public platform::Camera {
public:
    /// After which a photo that nobody heard of is given up.
    static constexpr std::chrono::seconds photoPatience{5};

    explicit QtCamera(const QCameraDevice& theDevice);
    ~QtCamera() override;

    [[nodiscard]] bool open() override;
    void start(FrameHandler frame, FailureHandler failed) override;
    void stop() override;
    [[nodiscard]] bool isRunning() const override { return running; }
    [[nodiscard]] bool hasFlash() const override { return camera.isFlashModeSupported(QCamera::FlashOn); }
    void takePhoto(bool flash, PhotoHandler completion) override;

private:
    [[nodiscard]] bool isThere() const;
    void checkThatItIsThere();
    void fail();
    void captureOnceReady();
    void answerPhoto(std::optional<int> id, const QImage& picture);

    platform::MainQueue& mainQueue;
    const QCameraDevice device;
    FrameGate gate;
    QCamera camera;
    QVideoSink sink;
    QImageCapture photos;
    QMediaDevices devices;
    QMediaCaptureSession session;
    FailureHandler failureHandler;
    PhotoHandler photoHandler;
    /// Of the capture that the handler waits for, once it has begun.
    std::optional<int> photoId;
    platform::MainQueue::Ticket photoGivenUp = 0;
    bool running = false;
    platform::Lifetime lifetime;
};

} // namespace quorvane::capture
