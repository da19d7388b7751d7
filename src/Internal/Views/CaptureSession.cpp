#include "Internal/Views/CaptureSession.h"

#include <utility>

#include "Internal/Views/NewestFrame.h"
#include "Platform/MainQueue.h"
#include "Platform/Platform.h"

namespace quorvane::capture {

CaptureSession::~CaptureSession() {
    stopRunning();
}

bool CaptureSession::canAddInput(const platform::Camera& camera) const {
    return input == nullptr && !camera.isRunning();
}

void CaptureSession::addInput(std::shared_ptr<platform::Camera> camera) {
    input = std::move(camera);
}

bool CaptureSession::canAddOutput(const MetadataOutput& output) const {
    return metadata == nullptr && output.hasReader();
}

void CaptureSession::addOutput(std::shared_ptr<MetadataOutput> output) {
    metadata = std::move(output);
}

void CaptureSession::startRunning(std::function<void()> cameraFailed) {
    if (running) {
        return;
    }
    running = true;
    if (metadata) {
        metadata->setActive(true);
    }
    if (!input) {
        return;
    }
    const auto waiting = std::make_shared<NewestFrame>();
    platform::MainQueue& mainQueue = platform::current().mainQueue();
    // Made here, on the main thread; each frame gets a copy.
    const std::function<void()> draw = lifetime.guard([this, waiting] {
        const auto frame = waiting->take();
        if (frame && preview && running) {
            preview->show(*frame);
        }
    });
    input->start(
        [&mainQueue, waiting, draw, output = metadata](const platform::VideoFrame& frame) {
            if (output) {
                output->offer(frame);
            }
            if (waiting->put(frame)) {
                mainQueue.post(draw);
            }
        },
        lifetime.guard([this, failed = std::move(cameraFailed)] {
            if (running) {
                stopRunning();
                failed();
            }
        }));
}

void CaptureSession::stopRunning() {
    if (!running) {
        return;
    }
    running = false;
    if (input) {
        input->stop();
    }
    if (metadata) {
        metadata->setActive(false);
    }
}

} // namespace quorvane::capture
