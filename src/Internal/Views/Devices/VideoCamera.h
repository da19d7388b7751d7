#pragma once

#include <QColor>
#include <QMediaPlayer>
#include <QVideoSink>
#include <memory>
#include <mutex>
#include <string>

#include "Internal/Views/Devices/FileCameras.h"
#include "Internal/Views/Devices/FrameGate.h"
#include "Internal/Views/Devices/StillFrames.h"
#include "Platform/Camera.h"
#include "Platform/Lifetime.h"

namespace quorvane::capture {

/// A video that stands for a camera.
class VideoCamera final : public platform::Camera {
public:
    /// Why nothing is seen at all is left in @p theProblem.
    VideoCamera(std::string thePath, const FileCameras::Options& theOptions, std::shared_ptr<std::string> theProblem);
    ~VideoCamera() override;

    [[nodiscard]] bool open() override { return true; }
    void start(FrameHandler frame, FailureHandler failed) override;
    void stop() override;
    [[nodiscard]] bool isRunning() const override { return running; }
    [[nodiscard]] bool hasFlash() const override { return false; }
    void takePhoto(bool flash, PhotoHandler completion) override;

private:
    /// Any thread.
    void arrived(const QVideoFrame& frame);
    /// Empty when none came.
    [[nodiscard]] platform::VideoFrame lastFrame();
    void ended();
    void fail();

    platform::MainQueue& mainQueue;
    const std::string path;
    const std::shared_ptr<std::string> problem;
    const FileCameras::Options options;
    FrameGate gate;
    /// What a video that is held up lies on, by its first frame; for the thread that frames come on.
    QColor paper;
    std::mutex lastMutex;
    platform::VideoFrame last;
    QVideoSink sink;
    QMediaPlayer player;
    StillFrames afterTheEnd;
    FailureHandler failureHandler;
    bool running = false;
    platform::Lifetime lifetime;
};

} // namespace quorvane::capture
