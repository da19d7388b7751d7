#include "Internal/Views/Devices/StillFrames.h"

#include <utility>

namespace quorvane::capture {

void StillFrames::start(platform::VideoFrame theFrame, std::function<void(const platform::VideoFrame&)> theDeliver,
                        std::optional<std::chrono::nanoseconds> lasting, std::function<void()> ended) {
    stop();
    frame = std::move(theFrame);
    deliver = std::move(theDeliver);
    if (lasting) {
        end = mainQueue.postAfter(*lasting, lifetime.guard([this, ended = std::move(ended)] {
            stop();
            // Of its own, for it may end this object.
            const std::function<void()> tell = ended;
            tell();
        }));
    }
    deliverAfter(std::chrono::nanoseconds(0));
}

void StillFrames::stop() {
    mainQueue.cancel(std::exchange(next, 0));
    mainQueue.cancel(std::exchange(end, 0));
    deliver = nullptr;
    frame = {};
}

void StillFrames::deliverAfter(std::chrono::nanoseconds delay) {
    next = mainQueue.postAfter(delay, lifetime.guard([this] {
        deliverAfter(interval);
        deliver(frame);
    }));
}

} // namespace quorvane::capture
