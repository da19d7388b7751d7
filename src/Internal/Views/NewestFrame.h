#pragma once

#include <mutex>
#include <optional>
#include <utility>

#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// Passes frames from one thread to another that may be slower: of those that wait, only the newest is left. Safe from
/// any thread.
class NewestFrame {
public:
    /// Answers whether the other side has to be asked to take it: it is not asked twice for one `take`.
    [[nodiscard]] bool put(const platform::VideoFrame& frame) {
        const std::lock_guard lock(mutex);
        newest = frame;
        return !std::exchange(isAwaited, true);
    }

    /// None when it was cleared meanwhile.
    [[nodiscard]] std::optional<platform::VideoFrame> take() {
        const std::lock_guard lock(mutex);
        isAwaited = false;
        return std::exchange(newest, std::nullopt);
    }

    void clear() {
        const std::lock_guard lock(mutex);
        newest.reset();
    }

private:
    std::mutex mutex;
    std::optional<platform::VideoFrame> newest;
    bool isAwaited = false;
};

} // namespace quorvane::capture
