#include "testing/SimulatedCamera.h"

#include <cstddef>
#include <utility>

namespace quorvane::testing {

void SimulatedCamera::show(const platform::VideoFrame& frame) {
    const std::lock_guard lock(mutex);
    if (running) {
        frameHandler(frame);
    }
}

void SimulatedCamera::unplug() {
    unplugged = true;
    if (running) {
        mainQueue.post(lifetime.guard([this] {
            if (running) {
                const FailureHandler failed = std::exchange(failureHandler, nullptr);
                if (failed) {
                    failed();
                }
            }
        }));
    }
}

bool SimulatedCamera::open() {
    ++opened;
    return !isInUse && !unplugged;
}

void SimulatedCamera::start(FrameHandler frame, FailureHandler failed) {
    const std::lock_guard lock(mutex);
    frameHandler = std::move(frame);
    failureHandler = std::move(failed);
    running = true;
}

void SimulatedCamera::stop() {
    const std::lock_guard lock(mutex);
    running = false;
    frameHandler = nullptr;
    failureHandler = nullptr;
}

void SimulatedCamera::takePhoto(bool withFlash, PhotoHandler completion) {
    flashes.push_back(withFlash);
    if (!isSilent) {
        mainQueue.post(
            [taken = unplugged ? nullptr : photo, completion = std::move(completion)] { completion(taken); });
    }
}

platform::VideoFrame plainFrame(int width, int height, std::uint8_t brightness) {
    const auto pixels = std::make_shared<const std::vector<std::uint8_t>>(
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height), brightness);
    platform::VideoFrame frame;
    frame.width = width;
    frame.height = height;
    frame.planes[0] = {pixels->data(), static_cast<std::size_t>(width)};
    frame.owner = pixels;
    return frame;
}

} // namespace quorvane::testing
