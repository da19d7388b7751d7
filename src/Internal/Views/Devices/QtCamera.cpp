#include "Internal/Views/Devices/QtCamera.h"

#include <utility>

#include "Internal/Views/Devices/QtFrame.h"
#include "Platform/Platform.h"

namespace quorvane::capture {

QtCamera::QtCamera(const QCameraDevice& theDevice)
    : mainQueue(platform::current().mainQueue()), device(theDevice), camera(theDevice) {
    session.setCamera(&camera);
    session.setVideoSink(&sink);
    session.setImageCapture(&photos);
    // On the thread that the frame comes on.
    QObject::connect(
        &sink, &QVideoSink::videoFrameChanged, &sink,
        [this](const QVideoFrame& frame) { gate.pass(videoFrameOf(frame)); }, Qt::DirectConnection);
    QObject::connect(&camera, &QCamera::errorOccurred, &camera, [this] { checkThatItIsThere(); });
    QObject::connect(&camera, &QCamera::activeChanged, &camera, [this] { checkThatItIsThere(); });
    QObject::connect(&devices, &QMediaDevices::videoInputsChanged, &devices, [this] { checkThatItIsThere(); });
    QObject::connect(&photos, &QImageCapture::readyForCaptureChanged, &photos, [this] { captureOnceReady(); });
    QObject::connect(&photos, &QImageCapture::imageCaptured, &photos,
                     [this](int id, const QImage& picture) { answerPhoto(id, picture); });
    QObject::connect(&photos, &QImageCapture::errorOccurred, &photos, [this](int id) { answerPhoto(id, {}); });
}

QtCamera::~QtCamera() {
    QtCamera::stop();
    mainQueue.cancel(photoGivenUp);
    sink.disconnect();
}

bool QtCamera::isThere() const {
    return camera.isAvailable() && camera.error() == QCamera::NoError && QMediaDevices::videoInputs().contains(device);
}

bool QtCamera::open() {
    if (!isThere()) {
        return false;
    }
    // One that another program uses shows only now.
    camera.start();
    return isThere() && camera.isActive();
}

void QtCamera::start(FrameHandler frame, FailureHandler failed) {
    failureHandler = std::move(failed);
    running = true;
    gate.open(std::move(frame));
    camera.start();
    checkThatItIsThere();
}

void QtCamera::stop() {
    running = false;
    gate.close();
    failureHandler = nullptr;
    camera.stop();
}

void QtCamera::checkThatItIsThere() {
    if (running && failureHandler && !(isThere() && camera.isActive())) {
        mainQueue.post(lifetime.guard([this] { fail(); }));
    }
}

void QtCamera::fail() {
    if (const FailureHandler failed = std::exchange(failureHandler, nullptr)) {
        failed();
    }
}

void QtCamera::takePhoto(bool flash, PhotoHandler completion) {
    if (photoHandler || !running) {
        mainQueue.post([completion = std::move(completion)] { completion(nullptr); });
        return;
    }
    photoHandler = std::move(completion);
    photoId.reset();
    camera.setFlashMode(flash && hasFlash() ? QCamera::FlashOn : QCamera::FlashOff);
    photoGivenUp = mainQueue.postAfter(photoPatience, lifetime.guard([this] { answerPhoto(photoId, {}); }));
    captureOnceReady();
}

void QtCamera::captureOnceReady() {
    if (photoHandler && !photoId && photos.isReadyForCapture()) {
        photoId = photos.capture();
        if (*photoId < 0) {
            answerPhoto(photoId, {});
        }
    }
}

void QtCamera::answerPhoto(std::optional<int> id, const QImage& picture) {
    // A picture that comes after it was given up is no answer to the next request.
    if (!photoHandler || id != photoId) {
        return;
    }
    mainQueue.cancel(photoGivenUp);
    mainQueue.post([photo = photoOf(picture), handler = std::exchange(photoHandler, nullptr)] { handler(photo); });
}

} // namespace quorvane::capture
