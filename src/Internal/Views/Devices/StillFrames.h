#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "Platform/Lifetime.h"
#include "Platform/MainQueue.h"
#include "Platform/VideoFrame.h"

namespace quorvane::capture {

/// Delivers one frame again and again, thirty times a second. Main thread only.
class StillFrames {
public:
    static constexpr std::chrono::nanoseconds interval{std::chrono::nanoseconds(std::chrono::seconds(1)) / 30};

    /// @p theMainQueue outlives it.
    explicit StillFrames(platform::MainQueue& theMainQueue) : mainQueue(theMainQueue) {}
    StillFrames(const StillFrames&) = delete;
    StillFrames& operator=(const StillFrames&) = delete;
    ~StillFrames() { stop(); }

    /// The first one soon. @p ended is called when @p lasting is over; never without it.
    void start(platform::VideoFrame theFrame, std::function<void(const platform::VideoFrame&)> theDeliver,
               std::optional<std::chrono::nanoseconds> lasting, std::function<void()> ended);
    void stop();

private:
    void deliverAfter(std::chrono::nanoseconds delay);

    platform::MainQueue& mainQueue;
    platform::VideoFrame frame;
    std::function<void(const platform::VideoFrame&)> deliver;
    platform::MainQueue::Ticket next = 0;
    platform::MainQueue::Ticket end = 0;
    platform::Lifetime lifetime;
};

} // namespace quorvane::capture
