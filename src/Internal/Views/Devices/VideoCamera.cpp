#include "Internal/Views/Devices/VideoCamera.h"

#include <QUrl>
#include <utility>

#include "Internal/Views/Devices/HeldUp.h"
#include "Internal/Views/Devices/QtFrame.h"
#include "Internal/Views/FrameImage.h"
#include "Platform/Platform.h"

namespace quorvane::capture {

VideoCamera::VideoCamera(std::string thePath, const FileCameras::Options& theOptions,
                         std::shared_ptr<std::string> theProblem)
    : mainQueue(platform::current().mainQueue()),
      path(std::move(thePath)),
      problem(std::move(theProblem)),
      options(theOptions),
      afterTheEnd(mainQueue) {
    player.setVideoSink(&sink);
    // On the thread that the frame comes on.
    QObject::connect(
        &sink, &QVideoSink::videoFrameChanged, &sink, [this](const QVideoFrame& frame) { arrived(frame); },
        Qt::DirectConnection);
    // Later, for the player may not be stopped in its own signals.
    const auto soon = [this](void (VideoCamera::*what)()) {
        mainQueue.post(lifetime.guard([this, what] { (this->*what)(); }));
    };
    QObject::connect(&player, &QMediaPlayer::mediaStatusChanged, &player,
                     [this, soon](QMediaPlayer::MediaStatus status) {
                         if (status == QMediaPlayer::EndOfMedia) {
                             soon(&VideoCamera::ended);
                         } else if (status == QMediaPlayer::InvalidMedia ||
                                    (status == QMediaPlayer::LoadedMedia && !player.hasVideo())) {
                             soon(&VideoCamera::fail);
                         }
                     });
    QObject::connect(&player, &QMediaPlayer::errorOccurred, &player, [soon] { soon(&VideoCamera::fail); });
    player.setSource(QUrl::fromLocalFile(QString::fromStdString(path)));
}

VideoCamera::~VideoCamera() {
    VideoCamera::stop();
    sink.disconnect();
    player.disconnect();
}

void VideoCamera::start(FrameHandler frame, FailureHandler failed) {
    running = true;
    failureHandler = std::move(failed);
    gate.open(std::move(frame));
    player.setPosition(0);
    player.play();
    if (player.error() != QMediaPlayer::NoError) {
        mainQueue.post(lifetime.guard([this] { fail(); }));
    }
}

void VideoCamera::stop() {
    running = false;
    failureHandler = nullptr;
    gate.close();
    afterTheEnd.stop();
    player.stop();
}

void VideoCamera::arrived(const QVideoFrame& frame) {
    platform::VideoFrame arrived = videoFrameOf(frame);
    if (arrived.width == 0) {
        return;
    }
    if (options.isHeldUp) {
        const QImage seen = imageOf(arrived);
        if (!paper.isValid()) {
            paper = paperOf(seen);
        }
        arrived = frameOf(heldUp(seen, paper));
    }
    {
        const std::lock_guard lock(lastMutex);
        last = arrived;
    }
    gate.pass(arrived);
}

platform::VideoFrame VideoCamera::lastFrame() {
    const std::lock_guard lock(lastMutex);
    return last;
}

void VideoCamera::ended() {
    if (!running) {
        return;
    }
    const platform::VideoFrame shown = lastFrame();
    if (shown.width == 0) {
        fail();
        return;
    }
    afterTheEnd.start(
        shown, [this](const platform::VideoFrame& frame) { gate.pass(frame); }, options.lasting, [this] { fail(); });
}

void VideoCamera::fail() {
    afterTheEnd.stop();
    if (lastFrame().width == 0) {
        *problem = path + ": there is neither a picture nor a video in it that is known here";
    }
    if (const FailureHandler failed = std::exchange(failureHandler, nullptr)) {
        failed();
    }
}

void VideoCamera::takePhoto(bool /*flash*/, PhotoHandler completion) {
    mainQueue.post([photo = photoOf(imageOf(lastFrame())), completion = std::move(completion)] { completion(photo); });
}

} // namespace quorvane::capture
