#pragma once

#include <mutex>
#include <utility>

#include "Platform/Camera.h"

namespace quorvane::capture {

/// Lets a camera's frames through from `open` to `close`, one at a time. Any thread.
class FrameGate {
public:
    void open(platform::Camera::FrameHandler theHandler) {
        const std::lock_guard lock(mutex);
        handler = std::move(theHandler);
    }

    /// Once it returns no frame is on its way.
    void close() {
        const std::lock_guard lock(mutex);
        handler = nullptr;
    }

    void pass(const platform::VideoFrame& frame) {
        const std::lock_guard lock(mutex);
        if (handler) {
            handler(frame);
        }
    }

private:
    std::recursive_mutex mutex;
    platform::Camera::FrameHandler handler;
};

} // namespace quorvane::capture
